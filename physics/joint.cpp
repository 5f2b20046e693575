#include "physics/joint.h"

#include <BulletDynamics/ConstraintSolver/btGeneric6DofConstraint.h>

#include "physics/actor.h"
#include "physics/bullet_convert.h"
#include "physics/scene.h"

namespace phys {

PlaneJoint::PlaneJoint(Actor* actor) : Joint(actor) {
    const Vector3 c = actor->centreOfMass;
    freezesZ = !actor->IsDynamic() || (c.x == 0 && c.y == 0 && c.z == 0);
    if (freezesZ) {
        ++actor->planeJoints;
        actor->ApplyFreezing();
    } else {
        // The world comes first: the library measures the held offset in the first frame.
        btTransform inBody;
        inBody.setIdentity();
        inBody.setOrigin(-ToBt(c));
        btTransform inWorld;
        inWorld.setIdentity();
        auto* plane = new btGeneric6DofConstraint(btTypedConstraint::getFixedBody(), *actor->body, inWorld, inBody,
                                                   true);
        plane->setUseFrameOffset(false);
        // Free along x and y and about every axis; z held at 0.
        plane->setLinearLowerLimit(btVector3(1, 1, 0));
        plane->setLinearUpperLimit(btVector3(-1, -1, 0));
        plane->setAngularLowerLimit(btVector3(1, 1, 1));
        plane->setAngularUpperLimit(btVector3(-1, -1, -1));
        plane->setParam(BT_CONSTRAINT_STOP_ERP, 0.8f, 2);
        constraint = plane;
    }
    if (actor->IsDynamic()) {
        Vector3 position = actor->GetGlobalPosition();
        position.z = 0.0f;
        actor->SetGlobalPosition(position);
    }
}

btTypedConstraint* PlaneJoint::Constraint() const { return constraint; }

void PlaneJoint::BeforeTick(float) {
    if (!constraint || !actor) return;
    const Vector3 origin = actor->GetGlobalPosition();
    btTransform inWorld;
    inWorld.setIdentity();
    inWorld.setOrigin(btVector3(origin.x, origin.y, 0));
    constraint->setFrames(inWorld, constraint->getFrameOffsetB());
}

PlaneJoint::~PlaneJoint() {
    delete constraint;
    if (!actor || !freezesZ) return;
    --actor->planeJoints;
    actor->ApplyFreezing();
}

RevoluteJoint::RevoluteJoint(Actor* actor, const Vector3& worldAnchor, const Vector3& localAnchor) : Joint(actor) {
    // Both frames have their z axis along the world's z: the hinge axis.
    btTransform inBody;
    inBody.setIdentity();
    inBody.setOrigin(ToBt(localAnchor) - ToBt(actor->centreOfMass));
    btTransform inWorld;
    inWorld.setIdentity();
    inWorld.setOrigin(ToBt(worldAnchor));
    hinge = new btHingeConstraint(*actor->body, btTypedConstraint::getFixedBody(), inBody, inWorld);
}

RevoluteJoint::~RevoluteJoint() { delete hinge; }

btTypedConstraint* RevoluteJoint::Constraint() const { return hinge; }

void RevoluteJoint::SetMotor(const MotorDesc& desc) {
    motor = desc;
    motorSet = true;
    hinge->enableAngularMotor(true, motor.velTarget, motor.maxForce * Scene::kTick);
}

float RevoluteJoint::GetVelocity() const { return actor ? actor->GetAngularVelocity().z : 0.0f; }

void RevoluteJoint::BeforeTick(float tick) {
    if (!motorSet || !actor) return;
    bool drive = true;
    if (motor.freeSpin) {
        const float velocity = GetVelocity();
        drive = motor.velTarget > 0 ? velocity < motor.velTarget : motor.velTarget < 0 && velocity > motor.velTarget;
    }
    hinge->enableAngularMotor(drive, motor.velTarget, motor.maxForce * tick);
}

}  // namespace phys
