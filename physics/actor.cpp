#include "physics/actor.h"

#include <cmath>

#include "physics/bullet_convert.h"
#include "physics/scene.h"

namespace phys {

namespace {

// The body's frame sits at the centre of mass; the actor's frame is shifted from it by the
// centre's offset, turned with the body.
btVector3 ActorOrigin(const btTransform& body, const Vector3& centreOfMass) {
    return body.getOrigin() - body.getBasis() * ToBt(centreOfMass);
}

}  // namespace

Actor::~Actor() {
    delete body;
    delete ownedShape;
}

Vector3 Actor::GetGlobalPosition() const { return FromBt(ActorOrigin(body->getWorldTransform(), centreOfMass)); }

void Actor::SetGlobalPosition(const Vector3& position) {
    // A position that is no number would poison every contact the body makes.
    if (!std::isfinite(position.x) || !std::isfinite(position.y) || !std::isfinite(position.z)) return;
    btTransform transform = body->getWorldTransform();
    transform.setOrigin(ToBt(position) + transform.getBasis() * ToBt(centreOfMass));
    body->setWorldTransform(transform);
    body->setInterpolationWorldTransform(transform);
    if (body->getBroadphaseHandle()) scene->RefreshPlacement(this);
}

Matrix4 Actor::GetGlobalPose() const {
    const btTransform& transform = body->getWorldTransform();
    const btMatrix3x3& r = transform.getBasis();
    const btVector3 t = ActorOrigin(transform, centreOfMass);
    return {float(r[0][0]), float(r[0][1]), float(r[0][2]), float(t.x()),
            float(r[1][0]), float(r[1][1]), float(r[1][2]), float(t.y()),
            float(r[2][0]), float(r[2][1]), float(r[2][2]), float(t.z()),
            0.0f,           0.0f,           0.0f,           1.0f};
}

Vector3 Actor::GetLinearVelocity() const { return FromBt(body->getLinearVelocity()); }

void Actor::SetLinearVelocity(const Vector3& velocity) {
    if (!IsDynamic() || switchedOff) return;
    // Setting a velocity bypasses the body's linear factor, so frozen axes are dropped here.
    body->setLinearVelocity(ToBt(velocity) * body->getLinearFactor());
}

Vector3 Actor::GetAngularVelocity() const { return FromBt(body->getAngularVelocity()); }

void Actor::SetAngularVelocity(const Vector3& velocity) {
    if (!IsDynamic() || switchedOff) return;
    body->setAngularVelocity(ToBt(velocity) * body->getAngularFactor());
}

void Actor::AddForce(const Vector3& force, ForceMode mode) {
    if (!IsDynamic() || switchedOff) return;
    if (mode == ForceMode::Impulse)
        body->applyCentralImpulse(ToBt(force));
    else
        body->setLinearVelocity(body->getLinearVelocity() + ToBt(force) * body->getLinearFactor());
}

void Actor::RaiseBodyFlag(uint32_t flags) {
    bodyFlags |= flags;
    ApplyFreezing();
}

void Actor::ClearBodyFlag(uint32_t flags) {
    bodyFlags &= ~flags;
    ApplyFreezing();
}

void Actor::ApplyFreezing() {
    if (!IsDynamic()) return;
    const btVector3 linear(ReadBodyFlag(FrozenPosX) ? 0 : 1, ReadBodyFlag(FrozenPosY) ? 0 : 1,
                           ReadBodyFlag(FrozenPosZ) || planeJoints > 0 ? 0 : 1);
    const btVector3 angular(ReadBodyFlag(FrozenRotX) ? 0 : 1, ReadBodyFlag(FrozenRotY) ? 0 : 1,
                            ReadBodyFlag(FrozenRotZ) ? 0 : 1);
    body->setLinearFactor(linear);
    body->setAngularFactor(angular);
    body->setLinearVelocity(body->getLinearVelocity() * linear);
    body->setAngularVelocity(body->getAngularVelocity() * angular);
}

void Actor::KeepPose() {
    const btTransform& transform = body->getWorldTransform();
    const btVector3& o = transform.getOrigin();
    const btMatrix3x3& r = transform.getBasis();
    keptPose = {float(o.x()), float(o.y()), float(o.z()), float(r[0][0]), float(r[0][1]), float(r[0][2]),
                float(r[1][0]), float(r[1][1]), float(r[1][2]), float(r[2][0]), float(r[2][1]), float(r[2][2])};
}

void Actor::RestorePose() {
    const auto& k = keptPose;
    const btTransform transform(btMatrix3x3(k[3], k[4], k[5], k[6], k[7], k[8], k[9], k[10], k[11]),
                                btVector3(k[0], k[1], k[2]));
    body->setWorldTransform(transform);
    body->setInterpolationWorldTransform(transform);
    body->setLinearVelocity(btVector3(0, 0, 0));
    body->setAngularVelocity(btVector3(0, 0, 0));
    body->setInterpolationLinearVelocity(btVector3(0, 0, 0));
    body->setInterpolationAngularVelocity(btVector3(0, 0, 0));
    body->clearForces();
}

}  // namespace phys
