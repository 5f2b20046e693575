#pragma once
// What the fuzz targets share: the one way a target reports a promise that an input broke.
#include <cstdio>
#include <cstdlib>

// A broken promise of the code under test: said on standard error, then abort(), so libFuzzer
// keeps the input as a crash and the replay test of a plain build fails on it.
inline void Require(bool holds, const char* promise) {
    if (holds) return;
    std::fprintf(stderr, "fuzz: broken promise: %s\n", promise);
    std::abort();
}
