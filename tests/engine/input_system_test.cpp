#include "engine/input_system.h"
#include "level/frame_input.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

constexpr uint8_t kQ = 0x51;
constexpr uint8_t kLeftArrow = 0x25;

class FakeInput final : public platform::InputSource {
public:
    void ReadKeyTable(uint8_t table[256]) override { std::memcpy(table, keys, sizeof keys); }
    void ReadCursor(int& x, int& y, platform::ScreenRect& windowRect) override {
        x = cursorX;
        y = cursorY;
        windowRect = rect;
    }
    void Press(uint8_t key) { keys[key] = 0x80; }
    void Release(uint8_t key) { keys[key] = 0; }

    uint8_t keys[256] = {};
    int cursorX = 0, cursorY = 0;
    platform::ScreenRect rect;
};

class InputSystemTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(input.Init(&source));
        input.BindKey(ActionTurnLeft, kQ);
        input.BindKey(ActionTurnLeft, kLeftArrow);
    }
    FakeInput source;
    InputSystem input;
};

TEST_F(InputSystemTest, HeldKeyIsDownEveryTurnAndReleasedInExactlyOne) {
    source.Press(kQ);
    for (int turn = 0; turn < 3; ++turn) {
        input.Update();
        EXPECT_TRUE(input.IsActionDown(ActionTurnLeft)) << "turn " << turn;
        EXPECT_FALSE(input.WasActionReleased(ActionTurnLeft)) << "turn " << turn;
    }
    source.Release(kQ);
    input.Update();
    EXPECT_FALSE(input.IsActionDown(ActionTurnLeft));
    EXPECT_TRUE(input.WasActionReleased(ActionTurnLeft));
    input.Update();
    EXPECT_FALSE(input.WasActionReleased(ActionTurnLeft));
}

TEST_F(InputSystemTest, ReleasingOneOfTwoHeldKeysReportsReleaseWhileStillDown) {
    source.Press(kQ);
    source.Press(kLeftArrow);
    input.Update();
    source.Release(kQ);
    input.Update();
    EXPECT_TRUE(input.IsActionDown(ActionTurnLeft));
    EXPECT_TRUE(input.WasActionReleased(ActionTurnLeft));

    input.Update();
    EXPECT_TRUE(input.IsActionDown(ActionTurnLeft));
    EXPECT_FALSE(input.WasActionReleased(ActionTurnLeft));

    source.Release(kLeftArrow);
    input.Update();
    EXPECT_FALSE(input.IsActionDown(ActionTurnLeft));
    EXPECT_TRUE(input.WasActionReleased(ActionTurnLeft));
}

TEST_F(InputSystemTest, UnboundActionIsNeverActiveAndGainsAnEmptyBinding) {
    EXPECT_EQ(input.BoundKeys(7), nullptr);
    source.Press(kQ);
    input.Update();
    EXPECT_FALSE(input.IsActionDown(7));
    EXPECT_FALSE(input.WasActionReleased(7));
    const std::vector<uint8_t>* keys = input.BoundKeys(7);
    ASSERT_NE(keys, nullptr);
    EXPECT_TRUE(keys->empty());
}

TEST_F(InputSystemTest, NothingIsReleasedAtTheFirstSampleAfterInit) {
    source.Press(kQ);
    input.Update();
    input.Update();
    ASSERT_TRUE(input.IsKeyDown(kQ));

    ASSERT_TRUE(input.Init(&source));
    source.Release(kQ);
    input.Update();
    EXPECT_FALSE(input.WasKeyReleased(kQ));
    EXPECT_FALSE(input.WasActionReleased(ActionTurnLeft));
}

TEST_F(InputSystemTest, CursorIsMeasuredAcrossTheOuterWindowRectangle) {
    source.rect = {100, 50, 900, 650};
    float at[2];

    source.cursorX = 100, source.cursorY = 50;
    input.GetCursor(at);
    EXPECT_FLOAT_EQ(at[0], 0.0f);
    EXPECT_FLOAT_EQ(at[1], 0.0f);

    source.cursorX = 900, source.cursorY = 650;
    input.GetCursor(at);
    EXPECT_FLOAT_EQ(at[0], 1.0f);
    EXPECT_FLOAT_EQ(at[1], 1.0f);

    source.cursorX = 50, source.cursorY = 350;
    input.GetCursor(at);
    EXPECT_FLOAT_EQ(at[0], -0.0625f);
    EXPECT_FLOAT_EQ(at[1], 0.5f);

    source.rect = {100, 50, 100, 50};
    at[0] = at[1] = 9.0f;
    input.GetCursor(at);
    EXPECT_EQ(at[0], 0.0f);
    EXPECT_EQ(at[1], 0.0f);
}

}  // namespace
