#pragma once
#include <cstdint>

// The game's one pseudo-random source: integers from 0 to 32767, the same sequence for the
// same seed on every machine. Every random effect draws from the one instance the level is
// given, in the order its rules say, so a replay with the same seed and input is identical.
class Random {
public:
    static constexpr int kMax = 32767;

    explicit Random(uint32_t seed = 1) : state(seed) {}
    void Seed(uint32_t seed) { state = seed; }

    int Next() {
        state = state * 214013u + 2531011u;
        return int((state >> 16) & 0x7FFF);
    }
    // r / 32767: from 0 to 1, both included.
    float Unit() { return float(Next()) / float(kMax); }

private:
    uint32_t state;
};
