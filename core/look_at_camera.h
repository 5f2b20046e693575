#pragma once
#include "core/matrix4.h"
#include "core/vector3.h"

// The camera of play: its eye and looked-at point each glide towards a target, closing the
// fraction rate x frameTime (at most all) of the remaining distance per frame. Up is +Y.
//
// Only the motion lives here; graphics/camera.h turns it into the GL view.
class PositionLookAtCamera {
public:
    void Update(float now, float frameTime);
    Matrix4 GetViewMatrix() const { return Matrix4::RotationZ(0); }
    Vector3 GetPosition() const { return position; }
    Vector3 GetDirection() const;

    void SetTargetPosition(float x, float y, float z) { targetPosition = {x, y, z}; }
    void SetTargetLookAt(float x, float y, float z) { targetLookAt = {x, y, z}; }
    // Rates of 0, below 0 or not a number are ignored.
    void SetPositionRate(float rate) {
        if (rate > 0) positionRate = rate;
    }
    void SetLookAtRate(float rate) {
        if (rate > 0) lookAtRate = rate;
    }

    Vector3 LookAt() const { return lookAt; }
    Vector3 TargetPosition() const { return targetPosition; }
    Vector3 TargetLookAt() const { return targetLookAt; }
    float PositionRate() const { return positionRate; }
    float LookAtRate() const { return lookAtRate; }

private:
    Vector3 position{0, 0, 10};
    Vector3 lookAt{0, 0, 0};
    Vector3 targetPosition{0, 0, 10};
    Vector3 targetLookAt{0, 0, 0};
    float positionRate = 100;
    float lookAtRate = 100;
};
