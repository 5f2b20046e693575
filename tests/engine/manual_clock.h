#pragma once
// A counter of microseconds that moves only when the timer sleeps or the test moves it.
#include <cmath>
#include <cstdint>

#include "engine/frame_timer.h"

class ManualClock final : public TimerClock {
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
        count += frequency / 1000;
    }
    void Work(double seconds) { count += std::llround(seconds * double(frequency)); }

    int64_t frequency = 1'000'000;
    bool frequencyWorks = true;
    int64_t count = 123'456;  // not zero, so time must be measured from Start
    int sleeps = 0;
};
