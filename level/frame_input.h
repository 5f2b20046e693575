#pragma once
#include <cstdint>

// The five player actions and their numbers.
enum PlayerAction : uint8_t {
    ActionTurnLeft = 0,
    ActionTurnRight = 1,
    ActionZoomOut = 2,
    ActionNextBall = 3,
    ActionNudge = 4,
};

// What one frame of play is given: the clock and the player's actions, sampled once.
struct FrameInput {
    double now = 0.0;              // the engine's running time, seconds
    float dt = 1.0f / 60.0f;       // this frame's length
    float step = 1.0f / 60.0f;     // the physics step: one over the frame-rate cap
    bool down[5] = {};             // the action is held (ActionTurnLeft ... ActionNudge)
    bool released[5] = {};         // the action was released this frame

    bool Down(PlayerAction action) const { return down[action]; }
    bool Released(PlayerAction action) const { return released[action]; }
};
