#pragma once

class Level;

// The camera fly-over that opens a level: over the current ball, across to the goal and
// back, 11 seconds long. Given the seconds since it began, aims the level's camera and says
// whether the fly-over goes on; false as soon as it is over, or when the ball or the goal it
// needs is missing.
bool FlyOverStep(Level& level, float t);

constexpr float kFlyOverSeconds = 11.0f;
