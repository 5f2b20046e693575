#include "physics/physics_system.h"

#include <new>

#include "objects/actor_group.h"
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
    for (uint16_t group : {GroupTrack, GroupBumper, GroupProp, GroupPeg})
        scene->SetGroupPairFlags(GroupBall, group, phys::NotifyOnStartTouch);
    scene->SetContactReport(&contactReport);
    scene->GetMaterial(0) = {.staticFriction = 0.6f, .dynamicFriction = 0.1f, .restitution = 0.3f};
    // Dead balls: grippy and dull.
    scene->GetMaterial(1) = {.staticFriction = 0.8f, .dynamicFriction = 0.7f, .restitution = 0.0f};
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

phys::Actor* PhysicsSystem::CreateSphereTrigger(float radius, ITriggerObject* owner) {
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
