#pragma once
#include <cstdint>

// Where the timer reads its counter and sleeps; the platform's by default, a fake in tests.
class TimerClock {
public:
    virtual ~TimerClock() = default;
    virtual bool Frequency(int64_t& countsPerSecond) = 0;
    virtual bool Counter(int64_t& count) = 0;
    virtual void SleepOneMillisecond() = 0;
};

TimerClock& PlatformTimerClock();

// The engine's clock. Each Tick paces the loop to targetRate frames a second, measured from
// the previous tick's time, by sleeping in 1 ms steps; a targetRate of 0 or less never waits.
class FrameTimer {
public:
    explicit FrameTimer(TimerClock& clock = PlatformTimerClock()) : clock(clock) {}

    bool Start();
    void Tick();

    double Now() const { return now; }
    double FrameTime() const { return frameTime; }
    double InstantRate() const { return instantRate; }
    double SmoothedRate() const { return smoothedRate; }
    double TargetRate() const { return targetRate; }
    void SetTargetRate(double rate) { targetRate = rate; }

private:
    TimerClock& clock;
    int64_t start = 0;
    double secondsPerCount = 0.0;
    double now = 0.0;
    double previous = 0.0;
    double frameTime = 0.0;
    double instantRate = 60.0;
    double smoothedRate = 60.0;
    double targetRate = -1.0;
};
