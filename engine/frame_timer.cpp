#include "engine/frame_timer.h"

#include "platform/clock.h"

namespace {

class SystemClock final : public TimerClock {
public:
    bool Frequency(int64_t& countsPerSecond) override { return platform::CounterFrequency(countsPerSecond); }
    bool Counter(int64_t& count) override { return platform::CounterNow(count); }
    void SleepOneMillisecond() override { platform::SleepOneMillisecond(); }
};

}  // namespace

TimerClock& PlatformTimerClock() {
    static SystemClock clock;
    return clock;
}

bool FrameTimer::Start() {
    int64_t frequency = 0;
    if (!clock.Frequency(frequency) || frequency == 0) return false;
    secondsPerCount = 1.0 / double(frequency);
    return clock.Counter(start);
}

void FrameTimer::Tick() {
    int64_t counter = 0;
    clock.Counter(counter);
    // Before Start no time passes, so waiting for the slot's end would never return.
    if (targetRate > 0 && secondsPerCount > 0) {
        double slotEnd = now + 1.0 / targetRate;
        while (double(counter - start) * secondsPerCount < slotEnd) {
            clock.SleepOneMillisecond();
            if (!clock.Counter(counter)) break;
        }
    }
    previous = now;
    now = double(counter - start) * secondsPerCount;
    frameTime = now - previous;
    // Two ticks on the same count (possible only without pacing) would make the rate
    // infinite and poison the smoothed rate for good; such a tick keeps the last rate.
    if (frameTime > 0.0) instantRate = 1.0 / frameTime;
    smoothedRate = 0.95 * smoothedRate + 0.05 * instantRate;
}
