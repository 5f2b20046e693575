#include "objects/turbines.h"

#include <sstream>

#include "formats/model.h"
#include "level/level.h"
#include "objects/actor_group.h"
#include "physics/actor.h"
#include "physics/joint.h"
#include "physics/physics_system.h"

namespace {


constexpr float kMotorForce = 99.0f;
// A speed sent by message is taken as degrees and turned into radians the other way round.
constexpr float kMessagePi = 3.14159f;

// A wheel's body from the first sub-model of its model, cached as a collision map.
phys::Actor* MakeWheel(PhysicsSystem* physics, Model* model, float mass) {
    if (!physics || !model || model->GetSubModelCount() == 0) return nullptr;
    const SubModel& wheel = model->GetSubModel(0);
    phys::Actor* actor = physics->CreateMeshActor(
        uint32_t(wheel.vertices.size()), wheel.vertices.data(), uint32_t(wheel.triangles.size()),
        reinterpret_cast<const uint32_t*>(wheel.triangles.data()), mass, true, 0);
    if (actor) actor->SetGroup(GroupProp);
    return actor;
}

}  // namespace

Turbine::Turbine(Level& level, std::string name, float x, float y, float speed)
    : GameObject(level, std::move(name)), speed(speed) {
    model = level.ClassModel("Turbine");
    actor = MakeWheel(Physics(), model, 1.0f);
    if (!actor) return;
    hinge = Physics()->CreateRevoluteJoint(actor, x, y, 0, 0);
    if (hinge) hinge->SetMotor({.velTarget = speed, .maxForce = kMotorForce, .freeSpin = false});
    actor->SetGlobalPosition({x, y, 0});
    actor->RaiseBodyFlag(phys::FrozenPos);
    actor->SetLinearVelocity({0, 0, 0});
}

Turbine::~Turbine() {
    if (hinge && Physics()) Physics()->ReleaseJoint(hinge);
}

// The level file's speed goes to the motor as it is; a message's speed is scaled by 180/pi.
void Turbine::HandleMessage(const QueuedMessage& message) {
    std::istringstream words(message.content);
    std::string first;
    if (!(words >> first) || first != "SetSpeed") return;
    float value;
    if (words >> value) speed = value;
    if (hinge)
        hinge->SetMotor({.velTarget = speed * 180.0f / kMessagePi, .maxForce = kMotorForce, .freeSpin = false});
}

FreeTurbine::FreeTurbine(Level& level, std::string name, float x, float y, float mass)
    : GameObject(level, std::move(name)), mass(mass) {
    model = level.ClassModel("FreeTurbine");
    actor = MakeWheel(Physics(), model, mass);
    if (!actor) return;
    actor->SetGlobalPosition({x, y, 0});
    actor->RaiseBodyFlag(phys::FrozenPos);
    actor->RaiseBodyFlag(phys::FrozenRotX);
    actor->RaiseBodyFlag(phys::FrozenRotY);
    actor->SetLinearVelocity({0, 0, 0});
}

HingedDoor::HingedDoor(Level& level, std::string name, float x, float y, float mass)
    : GameObject(level, std::move(name)), mass(mass) {
    model = level.ClassModel("HingedDoor");
    PhysicsSystem* physics = Physics();
    if (!physics) return;
    actor = physics->CreateBoxActor(1, 6, 10, 0, 3, 0, mass, 0);
    if (!actor) return;
    actor->SetGroup(GroupProp);
    joint = physics->CreatePlaneJoint(actor);
    hinge = physics->CreateRevoluteJoint(actor, x, y, 0, 0);
    actor->SetGlobalPosition({x, y, 0});
    actor->SetLinearVelocity({0, 0, 0});
}

HingedDoor::~HingedDoor() {
    if (hinge && Physics()) Physics()->ReleaseJoint(hinge);
}

Peg::Peg(Level& level, std::string name, float x, float y, float radius)
    : GameObject(level, std::move(name)), radius(radius) {
    model = level.ClassModel("Peg");
    if (PhysicsSystem* physics = Physics()) {
        actor = physics->CreateSphereActor(radius, 0, 0);
        if (actor) {
            actor->SetGlobalPosition({x, y, 0});
            actor->SetGroup(GroupPeg);
        }
    }
}
