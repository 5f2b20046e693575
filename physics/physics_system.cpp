#include "physics/physics_system.h"

#include <new>

#include "physics/actor.h"
#include "physics/joint.h"
#include "physics/scene.h"

namespace {

// Actors that must never fall asleep get a wake counter this long (seconds).
constexpr float kNeverSleep = 1e10f;

}  // namespace

PhysicsSystem::PhysicsSystem() = default;

PhysicsSystem::~PhysicsSystem() = default;

bool PhysicsSystem::Startup() {
    try {
        scene = std::make_unique<phys::Scene>();
    } catch (const std::bad_alloc&) {
        return false;
    }
    scene->SetParameter(phys::Parameter::SkinWidth, 0.01f);
    scene->SetTriggerReport(&triggerCallback);
    scene->SetContactReport(contactListener);
    scene->SetFaultReport(faultListener);
    return true;
}

// The scene lives until the physics system is destroyed.
void PhysicsSystem::Shutdown() {}

void PhysicsSystem::Step(float dt) {
    if (scene) scene->Simulate(dt);
}

void PhysicsSystem::SetGravity(const Vector3& gravity) {
    if (scene) scene->SetGravity(gravity);
}

phys::Actor* PhysicsSystem::CreateSphereActor(float radius, float mass, uint16_t material) {
    if (!scene) return nullptr;
    phys::ActorDesc desc;
    desc.kind = phys::ShapeKind::Sphere;
    desc.radius = radius;
    desc.mass = mass;
    desc.material = material;
    phys::Actor* actor = scene->CreateActor(desc);
    if (actor) actor->WakeUp(kNeverSleep);
    return actor;
}

void PhysicsSystem::SetMaterial(uint16_t index, const phys::Material& material) {
    if (scene) scene->GetMaterial(index) = material;
}

void PhysicsSystem::ReportContacts(uint16_t groupA, uint16_t groupB) {
    if (scene) scene->SetGroupPairFlags(groupA, groupB, phys::NotifyOnStartTouch);
}

void PhysicsSystem::SetContactListener(phys::UserContactReport* listener) {
    contactListener = listener;
    if (scene) scene->SetContactReport(listener);
}

void PhysicsSystem::RemoveContactListener(phys::UserContactReport* listener) {
    if (listener == contactListener) SetContactListener(nullptr);
}

void PhysicsSystem::SetFaultListener(phys::UserFaultReport* listener) {
    faultListener = listener;
    if (scene) scene->SetFaultReport(listener);
}

void PhysicsSystem::RemoveFaultListener(phys::UserFaultReport* listener) {
    if (listener == faultListener) SetFaultListener(nullptr);
}

phys::Actor* PhysicsSystem::CreateSphereTrigger(float radius, phys::TriggerListener* owner) {
    if (!scene) return nullptr;
    phys::ActorDesc desc;
    desc.kind = phys::ShapeKind::Sphere;
    desc.radius = radius;
    desc.trigger = true;
    phys::Actor* actor = scene->CreateActor(desc);
    if (actor) actor->userData = owner;
    return actor;
}

phys::Actor* PhysicsSystem::CreateBoxActor(float sizeX, float sizeY, float sizeZ, float offsetX, float offsetY,
                                           float offsetZ, float mass, uint16_t material) {
    if (!scene) return nullptr;
    phys::ActorDesc desc;
    desc.kind = phys::ShapeKind::Box;
    desc.halfExtents = Vector3(sizeX * 0.5f, sizeY * 0.5f, sizeZ * 0.5f);
    desc.offset = Vector3(offsetX, offsetY, offsetZ);
    desc.mass = mass;
    desc.material = material;
    phys::Actor* actor = scene->CreateActor(desc);
    if (actor) actor->WakeUp(kNeverSleep);
    return actor;
}

phys::Joint* PhysicsSystem::CreatePlaneJoint(phys::Actor* actor) {
    return scene ? scene->CreatePlaneJoint(actor) : nullptr;
}

phys::RevoluteJoint* PhysicsSystem::CreateRevoluteJoint(phys::Actor* actor, float worldX, float worldY, float localX,
                                                        float localY) {
    if (!scene) return nullptr;
    return scene->CreateRevoluteJoint(actor, Vector3(worldX, worldY, 0), Vector3(localX, localY, 0));
}

void PhysicsSystem::ReleaseActor(phys::Actor* actor) {
    if (scene && actor) scene->ReleaseActor(actor);
}

void PhysicsSystem::ReleaseJoint(phys::Joint* joint) {
    if (scene && joint) scene->ReleaseJoint(joint);
}
