#pragma once
#include "core/vector3.h"
#include "physics/physics_types.h"

class btHingeConstraint;
class btTypedConstraint;
class btGeneric6DofConstraint;

namespace phys {

class Actor;
class Scene;

// A joint between the world and one actor. The scene makes and releases joints.
class Joint {
public:
    Joint(const Joint&) = delete;
    Joint& operator=(const Joint&) = delete;
    Actor* GetActor() const { return actor; }

protected:
    friend class Scene;
    explicit Joint(Actor* actor) : actor(actor) {}
    virtual ~Joint() = default;
    // The library's constraint, when the joint needs one.
    virtual btTypedConstraint* Constraint() const = 0;
    // Called before every tick of the step.
    virtual void BeforeTick(float) {}
    Actor* actor;
};

// Holds the actor's origin in the plane z = 0; the actor may still turn any way. When the
// origin is the centre of mass, that is exactly a frozen z, kept without drift whatever the
// forces; otherwise a constraint holds the origin in the plane.
class PlaneJoint : public Joint {
private:
    friend class Scene;
    explicit PlaneJoint(Actor* actor);
    ~PlaneJoint() override;
    btTypedConstraint* Constraint() const override;
    // Keeps the world frame under the actor's origin: the library measures the held point's
    // lever from there.
    void BeforeTick(float tick) override;
    btGeneric6DofConstraint* constraint = nullptr;
    bool freezesZ = false;
};

// A hinge about a line parallel to z through a world anchor, meeting the actor at a local
// anchor. Optionally driven by a motor.
class RevoluteJoint : public Joint {
public:
    void SetMotor(const MotorDesc& motor);
    const MotorDesc& GetMotor() const { return motor; }
    bool HasMotor() const { return motorSet; }
    // The actor's angular speed about the hinge axis, radians per second.
    float GetVelocity() const;

private:
    friend class Scene;
    RevoluteJoint(Actor* actor, const Vector3& worldAnchor, const Vector3& localAnchor);
    ~RevoluteJoint() override;
    btTypedConstraint* Constraint() const override;
    // A free-spinning motor lets go once the hinge is fast enough.
    void BeforeTick(float tick) override;

    btHingeConstraint* hinge = nullptr;
    MotorDesc motor;
    bool motorSet = false;
};

}  // namespace phys
