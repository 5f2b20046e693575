#pragma once
#include <cstdint>

// What kind of thing a solid actor is; contact sounds and reports go by it.
enum ActorGroup : uint16_t {
    GroupBall = 1,
    GroupTrack = 2,
    GroupBumper = 3,
    GroupPeg = 4,
    GroupProp = 5,  // loose dynamic props: dead balls, turbines, doors
};

// The surface materials objects are made of (objects/game_world.cpp gives their values).
inline constexpr uint16_t kDefaultMaterial = 0;
inline constexpr uint16_t kDeadBallMaterial = 1;
