#pragma once
#include <cstdint>

namespace platform {

// A monotonic high-resolution counter and its frequency (counts per second).
bool CounterFrequency(int64_t& frequency);
bool CounterNow(int64_t& counter);
void SleepOneMillisecond();

}  // namespace platform
