#pragma once
#include <cstddef>

// What a level may hold. The game refuses a file beyond the hard limits with a message naming
// it; the linter warns about values outside the playable ranges, which load but make a level
// unplayable or slow (NaN from a mass of 1e38, a radius the physics refuses, a ball kicked
// to the far side of the float range).
namespace level_limits {

// Hard limits: the reader stops, and the level does not load.
constexpr size_t kMaxFileBytes = size_t(4) << 20;
constexpr size_t kMaxElements = 4000;  // tracks and objects together

// Above this many tracks and objects the linter warns: every one costs time each frame, and
// piles of balls cost the square of their number.
constexpr size_t kManyElements = 1000;

// Playable ranges; the linter warns outside them.
struct Range {
    float low, high;
    bool Holds(float value) const { return value >= low && value <= high; }
};
constexpr Range kCoordinate{-10000.0f, 10000.0f};  // x and y of tracks and objects
constexpr Range kRadius{0.1f, 100.0f};
constexpr Range kMass{0.01f, 10000.0f};
constexpr Range kHealth{0.0f, 1000000.0f};
constexpr Range kForce{0.0f, 1000.0f};  // bumpers' kick, as an impulse: a ball of mass 1 leaves at `force` units/s
constexpr Range kSpeed{-100.0f, 100.0f};         // driven turbines, radians per second
constexpr Range kInitialAngle{-360.0f, 360.0f};  // hinged doors, degrees
constexpr Range kQuota{0.0f, 1.0f};              // a share of every ball the level ever had

}  // namespace level_limits
