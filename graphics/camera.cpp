#include "graphics/camera.h"

#include <GL/glu.h>

void ApplyCamera(const PositionLookAtCamera& camera) {
    const Vector3 eye = camera.GetPosition(), at = camera.LookAt();
    gluLookAt(eye.x, eye.y, eye.z, at.x, at.y, at.z, 0.0, 1.0, 0.0);
}
