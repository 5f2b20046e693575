#include "engine/player_keys.h"

#include "engine/input_system.h"
#include "platform/key_codes.h"

void BindPlayerKeys(InputSystem& input) {
    const uint8_t bindings[][2] = {
        {ActionTurnLeft, 'Q'},         {ActionTurnLeft, vk::Left},   {ActionTurnLeft, vk::LeftButton},
        {ActionTurnRight, 'E'},        {ActionTurnRight, vk::Right}, {ActionTurnRight, vk::RightButton},
        {ActionZoomOut, 'W'},          {ActionZoomOut, vk::Up},      {ActionZoomOut, vk::MiddleButton},
        {ActionNextBall, 'F'},         {ActionNextBall, vk::Tab},    {ActionNudge, vk::Space},
        {ActionNudge, vk::Down},       {ActionNudge, vk::ExtraButton1},
    };
    for (const auto& binding : bindings) input.BindKey(binding[0], binding[1]);
}

FrameInput SampleFrame(InputSystem& input, double now, float dt, float step) {
    FrameInput frame;
    frame.now = now;
    frame.dt = dt;
    frame.step = step;
    for (uint8_t action = ActionTurnLeft; action <= ActionNudge; ++action) {
        frame.down[action] = input.IsActionDown(action);
        frame.released[action] = input.WasActionReleased(action);
    }
    return frame;
}
