#include "engine/frame_timer.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

constexpr int64_t kCountsPerSecond = 1'000'000;
constexpr int64_t kCountsPerMillisecond = kCountsPerSecond / 1000;

// A counter that only moves when the timer sleeps or the test says work was done.
class FakeClock final : public TimerClock {
public:
    bool Frequency(int64_t& countsPerSecond) override {
        countsPerSecond = frequency;
        return frequencyWorks;
    }
    bool Counter(int64_t& value) override {
        value = count;
        return true;
    }
    void SleepOneMillisecond() override {
        ++sleeps;
        count += kCountsPerMillisecond;
    }
    void Work(double seconds) { count += int64_t(std::llround(seconds * double(kCountsPerSecond))); }

    int64_t frequency = kCountsPerSecond;
    bool frequencyWorks = true;
    int64_t count = 123'456;  // not zero, so time must be measured from Start
    int sleeps = 0;
};

TEST(FrameTimerTest, StartFailsWithoutAUsableFrequency) {
    FakeClock clock;
    clock.frequency = 0;
    EXPECT_FALSE(FrameTimer(clock).Start());

    clock.frequency = kCountsPerSecond;
    clock.frequencyWorks = false;
    EXPECT_FALSE(FrameTimer(clock).Start());

    clock.frequencyWorks = true;
    EXPECT_TRUE(FrameTimer(clock).Start());
}

TEST(FrameTimerTest, PacedTickSleepsInMillisecondStepsUntilTheSlotEnds) {
    FakeClock clock;
    FrameTimer timer(clock);
    ASSERT_TRUE(timer.Start());
    timer.SetTargetRate(60);

    for (int frame = 0; frame < 3; ++frame) {
        const double before = timer.Now();
        clock.sleeps = 0;
        clock.Work(0.002);
        timer.Tick();
        EXPECT_GE(timer.Now(), before + 1.0 / 60) << "frame " << frame;
        EXPECT_LT(timer.Now(), before + 1.0 / 60 + 0.001) << "overslept in frame " << frame;
        // 2 ms of work, then whole milliseconds up to the first count past 16.67 ms.
        EXPECT_EQ(clock.sleeps, 15) << "frame " << frame;
        EXPECT_DOUBLE_EQ(timer.FrameTime(), timer.Now() - before);
    }
}

TEST(FrameTimerTest, PacingCountsFromThePreviousTickSoASlowFrameIsNotPaddedOut) {
    FakeClock clock;
    FrameTimer timer(clock);
    ASSERT_TRUE(timer.Start());
    timer.SetTargetRate(60);
    timer.Tick();
    const double previous = timer.Now();

    clock.sleeps = 0;
    clock.Work(0.030);
    timer.Tick();
    EXPECT_EQ(clock.sleeps, 0);
    EXPECT_NEAR(timer.FrameTime(), 0.030, 1e-9);
    EXPECT_NEAR(timer.Now(), previous + 0.030, 1e-9);

    // The next slot starts where that late tick landed, not where it should have.
    clock.Work(0.005);
    timer.Tick();
    EXPECT_GE(timer.Now(), previous + 0.030 + 1.0 / 60);
    EXPECT_LT(timer.Now(), previous + 0.030 + 1.0 / 60 + 0.001);
}

TEST(FrameTimerTest, TickBeforeStartDoesNotWaitForever) {
    FakeClock clock;
    FrameTimer timer(clock);
    timer.SetTargetRate(60);
    timer.Tick();
    EXPECT_EQ(clock.sleeps, 0);
}

TEST(FrameTimerTest, NoTargetRateNeverSleeps) {
    for (double rate : {-1.0, 0.0}) {
        FakeClock clock;
        FrameTimer timer(clock);
        ASSERT_TRUE(timer.Start());
        timer.SetTargetRate(rate);
        clock.Work(0.001);
        timer.Tick();
        timer.Tick();
        EXPECT_EQ(clock.sleeps, 0) << "rate " << rate;
    }
}

TEST(FrameTimerTest, SmoothedRateBlendsFivePercentOfEachInstantRate) {
    FakeClock clock;
    FrameTimer timer(clock);
    ASSERT_TRUE(timer.Start());

    clock.Work(0.010);
    timer.Tick();
    EXPECT_NEAR(timer.InstantRate(), 100.0, 1e-6);
    EXPECT_NEAR(timer.SmoothedRate(), 0.95 * 60 + 0.05 * 100, 1e-6);

    const double smoothed = timer.SmoothedRate();
    clock.Work(0.020);
    timer.Tick();
    EXPECT_NEAR(timer.InstantRate(), 50.0, 1e-6);
    EXPECT_NEAR(timer.SmoothedRate(), 0.95 * smoothed + 0.05 * 50, 1e-6);
}

TEST(FrameTimerTest, TwoTicksOnOneCountKeepTheRatesFinite) {
    FakeClock clock;
    FrameTimer timer(clock);
    ASSERT_TRUE(timer.Start());
    clock.Work(0.010);
    timer.Tick();
    timer.Tick();

    EXPECT_EQ(timer.FrameTime(), 0.0);
    EXPECT_TRUE(std::isfinite(timer.InstantRate()));
    EXPECT_TRUE(std::isfinite(timer.SmoothedRate()));
    EXPECT_NEAR(timer.InstantRate(), 100.0, 1e-6);

    clock.Work(0.010);
    timer.Tick();
    EXPECT_TRUE(std::isfinite(timer.SmoothedRate()));
    EXPECT_GT(timer.SmoothedRate(), 60.0);
}

}  // namespace
