#include "tools/tool/input_script.h"

#include <gtest/gtest.h>

#include "level/frame_input.h"

namespace {

constexpr uint32_t Bit(PlayerAction action) { return 1u << action; }

TEST(InputScript, OverlappingRangesHoldEveryActionTheyList) {
    InputScript script;
    std::string error;
    ASSERT_TRUE(script.Parse("# warm-up\n10-20 left\n15-30 zoom,left   # overlaps\n20 nudge\n\n40 next\n", error))
        << error;
    EXPECT_EQ(script.ActionsAt(0), 0u);
    EXPECT_EQ(script.ActionsAt(9), 0u);
    EXPECT_EQ(script.ActionsAt(10), Bit(ActionTurnLeft));
    EXPECT_EQ(script.ActionsAt(15), Bit(ActionTurnLeft) | Bit(ActionZoomOut));
    EXPECT_EQ(script.ActionsAt(20), Bit(ActionTurnLeft) | Bit(ActionZoomOut) | Bit(ActionNudge));
    EXPECT_EQ(script.ActionsAt(21), Bit(ActionTurnLeft) | Bit(ActionZoomOut)) << "left still held by 15-30";
    EXPECT_EQ(script.ActionsAt(30), Bit(ActionTurnLeft) | Bit(ActionZoomOut));
    EXPECT_EQ(script.ActionsAt(31), 0u);
    EXPECT_EQ(script.ActionsAt(40), Bit(ActionNextBall));
    EXPECT_EQ(script.ActionsAt(41), 0u);
}

// A script holds ranges, not frames: hundreds of the longest ranges cost nothing to keep.
TEST(InputScript, HugeRangesAreKeptAsRanges) {
    std::string text;
    for (int i = 0; i < 500; ++i) text += std::to_string(i) + "-999999999 " + (i % 2 ? "left\n" : "right\n");
    InputScript script;
    std::string error;
    ASSERT_TRUE(script.Parse(text, error)) << error;
    EXPECT_EQ(script.ActionsAt(0), Bit(ActionTurnRight));
    EXPECT_EQ(script.ActionsAt(999999999), Bit(ActionTurnLeft) | Bit(ActionTurnRight));
}

TEST(InputScript, ABadLineIsNamedAndLeavesNothingHeld) {
    const struct {
        const char* text;
        const char* error;
    } cases[] = {
        {"0-9 left\n12 jump\n", "line 2: unknown action 'jump'"},
        {"5-3 left\n", "line 1: the range 5-3 ends before it begins"},
        {"x left\n", "line 1: 'x' is not a frame number"},
        {"1-x left\n", "line 1: '1-x' is not a range of frames FIRST-LAST"},
        {"\n\n7\n", "line 3: expected FRAME ACTIONS"},
        {"7 left right\n", "line 1: unexpected 'right'"},
        {"9999999999 left\n", "line 1: '9999999999' is not a frame number"},
    };
    for (const auto& c : cases) {
        InputScript script;
        std::string error;
        EXPECT_FALSE(script.Parse(c.text, error)) << c.text;
        EXPECT_EQ(error.rfind(c.error, 0), 0u) << error;
        EXPECT_EQ(script.ActionsAt(0), 0u);
    }
}

}  // namespace
