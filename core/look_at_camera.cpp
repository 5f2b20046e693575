#include "core/look_at_camera.h"

namespace {

// p + (t - p) is not always t in floats, so a step that closes the whole gap lands on t itself.
void Glide(Vector3& current, const Vector3& target, float fraction) {
    if (fraction >= 1.0f)
        current = target;
    else
        current += (target + -current) * fraction;
}

}  // namespace

void PositionLookAtCamera::Update(float, float frameTime) {
    Glide(position, targetPosition, positionRate * frameTime);
    Glide(lookAt, targetLookAt, lookAtRate * frameTime);
}

Vector3 PositionLookAtCamera::GetDirection() const {
    Vector3 direction = lookAt + -position;
    return direction.Normalize();
}
