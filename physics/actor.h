#pragma once
#include <array>
#include <cstdint>

#include "core/matrix4.h"
#include "core/vector3.h"
#include "physics/physics_types.h"

class btRigidBody;
class btCollisionShape;

namespace phys {

class Scene;
class TriangleMesh;

// A rigid body of one shape: static when made without mass, dynamic otherwise. Positions and
// poses are those of the actor's own origin, which need not be its centre of mass (a box with
// an offset turns about its centre but is placed by its origin).
class Actor {
public:
    Actor(const Actor&) = delete;
    Actor& operator=(const Actor&) = delete;

    void* userData = nullptr;

    uint16_t GetGroup() const { return group; }
    void SetGroup(uint16_t value) { group = value; }

    bool IsDynamic() const { return mass != 0.0f; }
    bool IsTrigger() const { return trigger; }
    // Taken out of the world by the scene after its motion stopped being finite: it stays
    // where it last was fine, still and touching nothing, until released.
    bool IsSwitchedOff() const { return switchedOff; }
    float GetMass() const { return mass; }
    uint16_t GetMaterial() const { return material; }
    ShapeKind GetShapeKind() const { return kind; }
    float GetSphereRadius() const { return radius; }
    Vector3 GetBoxHalfExtents() const { return halfExtents; }
    // Where the shape sits in the actor's frame.
    Vector3 GetShapeOffset() const { return offset; }
    // Creation order within the scene; orders everything the scene reports.
    uint32_t GetSerial() const { return serial; }
    Scene* GetScene() const { return scene; }

    Vector3 GetGlobalPosition() const;
    // Moves the actor's origin there at once; velocities and orientation are kept.
    void SetGlobalPosition(const Vector3& position);
    // Rotation and translation of the actor's frame.
    Matrix4 GetGlobalPose() const;
    Vector3 GetLinearVelocity() const;
    // Frozen axes stay still: their components are dropped.
    void SetLinearVelocity(const Vector3& velocity);
    Vector3 GetAngularVelocity() const;
    void SetAngularVelocity(const Vector3& velocity);
    // Applied at the centre of mass; does nothing to a static actor.
    void AddForce(const Vector3& force, ForceMode mode);

    void RaiseBodyFlag(uint32_t flags);
    void ClearBodyFlag(uint32_t flags);
    bool ReadBodyFlag(uint32_t flag) const { return (bodyFlags & flag) != 0; }
    // Keeps the actor awake for at least counter seconds. Every actor of this layer is
    // kept awake for good, so this only records the request.
    void WakeUp(float counter) { wakeCounter = counter; }
    float GetWakeCounter() const { return wakeCounter; }

private:
    friend class Scene;
    friend class RevoluteJoint;
    friend class PlaneJoint;
    Actor() = default;
    ~Actor();
    // Recomputes the body's linear and angular factors from the flags and plane joints.
    void ApplyFreezing();
    // The body's frame at the start of the step, and putting it back there.
    void KeepPose();
    void RestorePose();

    Scene* scene = nullptr;
    btRigidBody* body = nullptr;
    btCollisionShape* ownedShape = nullptr;
    btCollisionShape* childShape = nullptr;  // the box inside its offsetting compound
    TriangleMesh* mesh = nullptr;
    ShapeKind kind = ShapeKind::Sphere;
    float radius = 0.0f;
    Vector3 halfExtents{0, 0, 0};
    Vector3 offset{0, 0, 0};
    // The centre of mass in the actor's frame.
    Vector3 centreOfMass{0, 0, 0};
    float mass = 0.0f;
    uint16_t material = 0;
    uint16_t group = 0;
    bool trigger = false;
    bool released = false;
    bool switchedOff = false;
    std::array<float, 12> keptPose{};  // origin, then the rotation's rows
    uint32_t serial = 0;
    uint32_t bodyFlags = 0;
    int planeJoints = 0;
    float wakeCounter = 0.0f;
};

}  // namespace phys
