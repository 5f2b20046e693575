#include "engine/frame_timer.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tests/engine/manual_clock.h"

namespace {

TEST(FrameTimerTest, StartNeedsAUsableFrequency) {
    ManualClock clock;
    clock.frequency = 0;
    EXPECT_FALSE(FrameTimer(clock).Start());
    clock.frequency = 1'000'000;
    clock.frequencyWorks = false;
    EXPECT_FALSE(FrameTimer(clock).Start());
}

TEST(FrameTimerTest, PacingSleepsWholeMillisecondsToTheEndOfASlotCountedFromThePreviousTick) {
    ManualClock clock;
    FrameTimer timer(clock);
    ASSERT_TRUE(timer.Start());
    timer.SetTargetRate(60);
    for (int frame = 0; frame < 3; ++frame) {
        const double before = timer.Now();
        clock.sleeps = 0;
        clock.Work(0.002);
        timer.Tick();
        // 2 ms of work, then whole milliseconds up to the first count past 16.67 ms.
        EXPECT_EQ(clock.sleeps, 15) << "frame " << frame;
        EXPECT_GE(timer.FrameTime(), 1.0 / 60) << "frame " << frame;
        EXPECT_LT(timer.FrameTime(), 1.0 / 60 + 0.001) << "overslept in frame " << frame;
        EXPECT_DOUBLE_EQ(timer.FrameTime(), timer.Now() - before);
    }

    // A slow frame is not padded out, and the next slot starts where it landed.
    const double previous = timer.Now();
    clock.sleeps = 0;
    clock.Work(0.030);
    timer.Tick();
    EXPECT_EQ(clock.sleeps, 0);
    EXPECT_NEAR(timer.FrameTime(), 0.030, 1e-9);
    clock.Work(0.005);
    timer.Tick();
    EXPECT_GE(timer.Now(), previous + 0.030 + 1.0 / 60);
    EXPECT_LT(timer.Now(), previous + 0.030 + 1.0 / 60 + 0.001);
}

TEST(FrameTimerTest, NeverSleepsBeforeStartOrWithoutATargetRate) {
    for (double rate : {60.0, 0.0, -1.0}) {
        ManualClock clock;
        FrameTimer timer(clock);
        if (rate <= 0) {
            ASSERT_TRUE(timer.Start());  // a paced tick before Start would wait for ever
        }
        timer.SetTargetRate(rate);
        clock.Work(0.001);
        timer.Tick();
        timer.Tick();
        EXPECT_EQ(clock.sleeps, 0) << "rate " << rate;
    }
}

TEST(FrameTimerTest, TwoTicksOnOneCountKeepTheRatesFinite) {
    ManualClock clock;
    FrameTimer timer(clock);
    ASSERT_TRUE(timer.Start());
    clock.Work(0.010);
    timer.Tick();
    timer.Tick();
    EXPECT_EQ(timer.FrameTime(), 0.0);
    EXPECT_NEAR(timer.InstantRate(), 100.0, 1e-6) << "the last rate is kept";
    clock.Work(0.010);
    timer.Tick();
    EXPECT_TRUE(std::isfinite(timer.SmoothedRate()));
    EXPECT_GT(timer.SmoothedRate(), 60.0);
}

}  // namespace
