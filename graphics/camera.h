#pragma once
#include "core/look_at_camera.h"

// Multiplies the camera's view onto the current GL matrix; the caller prepares the matrix.
void ApplyCamera(const PositionLookAtCamera& camera);
