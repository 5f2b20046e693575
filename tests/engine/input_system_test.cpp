#include "engine/input_system.h"

#include <gtest/gtest.h>

#include <cstring>
#include <utility>

#include "level/frame_input.h"

namespace {

constexpr uint8_t kQ = 0x51;
constexpr uint8_t kLeftArrow = 0x25;
using State = std::pair<bool, bool>;  // down, released

class FakeInput final : public platform::InputSource {
public:
    void ReadKeyTable(uint8_t table[256]) override { std::memcpy(table, keys, sizeof keys); }
    void ReadCursor(int& x, int& y, platform::ScreenRect& windowRect) override {
        x = cursorX;
        y = cursorY;
        windowRect = rect;
    }
    bool ReadClientCursor(int& x, int& y, int& width, int& height) override {
        x = cursorX - clientLeft, y = cursorY - clientTop, width = clientWidth, height = clientHeight;
        return clientWidth > 0;
    }
    int TakeWheelSteps() override { return std::exchange(wheel, 0); }
    uint8_t keys[256] = {};
    int cursorX = 0, cursorY = 0;
    platform::ScreenRect rect;
    int clientLeft = 0, clientTop = 0, clientWidth = 0, clientHeight = 0;
    int wheel = 0;
};

class InputSystemTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(input.Init(&source));
        input.BindKey(ActionTurnLeft, kQ);
        input.BindKey(ActionTurnLeft, kLeftArrow);
    }
    // The action's state after one more sample.
    State Sample() {
        input.Update();
        return {input.IsActionDown(ActionTurnLeft), input.WasActionReleased(ActionTurnLeft)};
    }
    FakeInput source;
    InputSystem input;
};

TEST_F(InputSystemTest, AnActionIsDownWhileAnyKeyIsHeldAndReleasedOnceForEachKeyLetGo) {
    source.keys[kQ] = 0x80;
    EXPECT_EQ(Sample(), State(true, false));
    EXPECT_EQ(Sample(), State(true, false));
    source.keys[kLeftArrow] = 0x80;
    source.keys[kQ] = 0;
    EXPECT_EQ(Sample(), State(true, true)) << "one of two keys let go";
    EXPECT_EQ(Sample(), State(true, false));
    source.keys[kLeftArrow] = 0;
    EXPECT_EQ(Sample(), State(false, true));
    EXPECT_EQ(Sample(), State(false, false));
}

TEST_F(InputSystemTest, NothingIsReleasedAtTheFirstSampleAfterInitNorForAnUnboundAction) {
    source.keys[kQ] = 0x80;
    input.Update();
    input.Update();
    EXPECT_FALSE(input.IsActionDown(7));
    ASSERT_TRUE(input.Init(&source));
    source.keys[kQ] = 0;
    EXPECT_EQ(Sample(), State(false, false));
    EXPECT_FALSE(input.WasKeyReleased(kQ));
    EXPECT_FALSE(input.WasActionReleased(7));
    ASSERT_NE(input.BoundKeys(7), nullptr) << "asking made an empty binding";
    EXPECT_TRUE(input.BoundKeys(7)->empty());
}

TEST_F(InputSystemTest, CursorIsMeasuredAcrossTheOuterWindowRectangle) {
    struct Case {
        platform::ScreenRect rect;
        int x, y;
        float u, v;
    };
    for (const Case& c : {Case{{100, 50, 900, 650}, 100, 50, 0, 0}, Case{{100, 50, 900, 650}, 900, 650, 1, 1},
                          Case{{100, 50, 900, 650}, 50, 350, -0.0625f, 0.5f}, Case{{100, 50, 100, 50}, 7, 7, 0, 0}}) {
        source.rect = c.rect;
        source.cursorX = c.x, source.cursorY = c.y;
        float at[2] = {9, 9};
        input.GetCursor(at);
        EXPECT_FLOAT_EQ(at[0], c.u) << c.x;
        EXPECT_FLOAT_EQ(at[1], c.v) << c.y;
    }
}

TEST_F(InputSystemTest, PressesWheelAndTheCursorInsideTheFrameAreSampledPerUpdate) {
    source.keys[kQ] = 0x80;
    input.Update();
    EXPECT_TRUE(input.WasKeyPressed(kQ));
    input.Update();
    EXPECT_FALSE(input.WasKeyPressed(kQ)) << "held is not pressed again";

    source.wheel = -3;
    input.Update();
    EXPECT_EQ(input.WheelSteps(), -3);
    input.Update();
    EXPECT_EQ(input.WheelSteps(), 0) << "each step counts in one sample only";

    // A window at (100, 50) with a 20-pixel caption: the drawing area starts 20 lower.
    source.rect = {100, 50, 900, 670};
    source.cursorX = 500, source.cursorY = 370;
    float cursor[2];
    input.GetClientCursor(cursor);
    EXPECT_FLOAT_EQ(cursor[0], 0.5f) << "without a drawing area the outer units stand in";
    source.clientLeft = 100, source.clientTop = 70, source.clientWidth = 800, source.clientHeight = 600;
    input.GetClientCursor(cursor);
    EXPECT_FLOAT_EQ(cursor[0], 0.5f);
    EXPECT_FLOAT_EQ(cursor[1], 0.5f);
    input.GetCursor(cursor);
    EXPECT_FLOAT_EQ(cursor[1], 320.0f / 620.0f) << "the outer units count the caption";
}

}  // namespace
