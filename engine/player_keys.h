#pragma once
#include "level/frame_input.h"

class InputSystem;

// Binds the keys and mouse buttons of the five player actions, in the game's order.
void BindPlayerKeys(InputSystem& input);

// This turn's actions from the input system, with the clock values of the frame.
FrameInput SampleFrame(InputSystem& input, double now, float dt, float step);
