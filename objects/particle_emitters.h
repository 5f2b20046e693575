#pragma once
#include "core/vector3.h"

class ParticleSystem;
class Random;

// The game's particle effects. Each draws its random numbers (u = r / 32767) from the one
// source, in the order written in its comment, so effects replay exactly.

// A bumper's kick: `count` sparks from the trigger centre b, 20 units/s along the kick
// direction d (unit or zero) spread by t^3 * 45 degrees, t = 2u - 1 per spark.
void EmitBumperSparks(ParticleSystem& particles, Random& random, const Vector3& b, const Vector3& d, int count);

// A goal's fountain: 20 particles from b, shading from red to green, rising along +z.
void EmitGoalFountain(ParticleSystem& particles, Random& random, const Vector3& b);

// A teleporter's swirl: 5 particles on a ring 5 to 7 units about b, 5 above the plane,
// flying in towards it. Per particle: angle, distance, then one value for all three colours.
void EmitTeleporterSwirl(ParticleSystem& particles, Random& random, const Vector3& b);

// A ring of 10 particles bursting out at a teleported ball's arrival point p (z = 0).
void EmitTeleporterBurst(ParticleSystem& particles, const Vector3& p);

// One trail particle at the current ball: blue-grey while gravity points down, reddish else.
void EmitBallTrail(ParticleSystem& particles, Random& random, const Vector3& ball, bool gravityDown);

// The burst of a nudge: 50 particles round the current ball.
void EmitNudgeBurst(ParticleSystem& particles, Random& random, const Vector3& ball);
