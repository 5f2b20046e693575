#include "graphics/camera.h"

#include <GL/glu.h>

#include <algorithm>

void PositionLookAtCamera::Update(float, float frameTime) {
    Vector3 d = targetPosition + -position;
    Vector3 e = targetLookAt + -lookAt;
    float k = std::min(positionRate * frameTime, 1.0f);
    position += d * k;
    float m = std::min(lookAtRate * frameTime, 1.0f);
    lookAt += e * m;
}

void PositionLookAtCamera::Apply() {
    gluLookAt(position.x, position.y, position.z, lookAt.x, lookAt.y, lookAt.z, 0.0, 1.0, 0.0);
}

Vector3 PositionLookAtCamera::GetDirection() {
    Vector3 direction = lookAt + -position;
    return direction.Normalize();
}
