#pragma once

// The sizes of the class models, in world units. Level files give objects these radii and
// designers place them by them (assets/README.md lists them), so change both together.
// Every model is centred on its origin in the plane of play (z = 0) unless said otherwise.
namespace mediagen::sizes {

inline constexpr float kBallRadius = 1.0f;
inline constexpr float kDeadBallRadius = 1.0f;

// Bumpers: round posts standing along z.
inline constexpr float kBumperRadius = 2.0f;
inline constexpr float kPostHalfDepth = 1.5f;  // bumpers, pegs, turbines: z from -1.5 to 1.5

inline constexpr float kPegRadius = 0.5f;

// Turbines: a hub and paddles, each its own convex part so the physics keeps them apart.
inline constexpr float kTurbineRadius = 4.5f;      // the outer end of a paddle
inline constexpr float kTurbineHubRadius = 0.8f;   // corners of the octagonal hub
inline constexpr float kPaddleInnerRadius = 1.0f;
inline constexpr float kPaddleThickness = 0.5f;
inline constexpr int kFreeTurbinePaddles = 4;
inline constexpr int kDrivenTurbinePaddles = 6;

// The door stands on its hinge at the origin: x -0.5..0.5, y 0..6, z -5..5.
inline constexpr float kDoorThickness = 1.0f;
inline constexpr float kDoorLength = 6.0f;
inline constexpr float kDoorDepth = 10.0f;

inline constexpr float kTeleporterEntranceRadius = 3.0f;
inline constexpr float kTeleporterExitRadius = 2.0f;
inline constexpr float kTeleporterHalfDepth = 0.5f;

// The goal is a cup open towards the viewer, its back plate at z = -1.5.
inline constexpr float kGoalRadius = 3.0f;
inline constexpr float kGoalHalfDepth = 1.5f;

}  // namespace mediagen::sizes
