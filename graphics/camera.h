#pragma once
#include "engine/matrix4.h"
#include "engine/vector3.h"

class Camera {
public:
    virtual void Update(float now, float frameTime) = 0;
    // Multiplies the view onto the current GL matrix; the caller prepares the matrix.
    virtual void Apply() = 0;
    virtual Matrix4 GetViewMatrix() = 0;
    virtual Vector3 GetPosition() = 0;
    virtual Vector3 GetDirection() = 0;

protected:
    ~Camera() = default;
};

// The camera of play: its eye and looked-at point each glide towards a target, closing the
// fraction rate x frameTime (at most all) of the remaining distance per frame. Up is +Y.
class PositionLookAtCamera : public Camera {
public:
    virtual ~PositionLookAtCamera() = default;

    void Update(float now, float frameTime) override;
    void Apply() override;
    Matrix4 GetViewMatrix() override { return Matrix4::RotationZ(0); }
    Vector3 GetPosition() override { return position; }
    Vector3 GetDirection() override;

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
