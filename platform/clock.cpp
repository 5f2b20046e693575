#include "platform/clock.h"

#include <time.h>

namespace platform {

bool CounterFrequency(int64_t& frequency) {
    frequency = 1000000000;
    return true;
}

bool CounterNow(int64_t& counter) {
    timespec now{};
    if (clock_gettime(CLOCK_MONOTONIC, &now) != 0) return false;
    counter = int64_t(now.tv_sec) * 1000000000 + now.tv_nsec;
    return true;
}

void SleepOneMillisecond() {
    timespec wait{0, 1000000};
    nanosleep(&wait, nullptr);
}

}  // namespace platform
