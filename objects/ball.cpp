#include "objects/ball.h"

#include "core/random.h"
#include "level/level.h"
#include "objects/actor_group.h"
#include "physics/actor.h"
#include "physics/physics_system.h"

namespace {

constexpr float kNudgeImpulse = 20.0f;


// A sphere kept in the plane, at rest at (x, y, 0); null when the physics refuses the values.
phys::Actor* MakeSphere(PhysicsSystem* physics, float radius, float mass, uint16_t material, float x, float y,
                        uint16_t group) {
    if (!physics) return nullptr;
    phys::Actor* actor = physics->CreateSphereActor(radius, mass, material);
    if (!actor) return nullptr;
    actor->RaiseBodyFlag(phys::FrozenPosZ);
    actor->SetGroup(group);
    actor->SetGlobalPosition({x, y, 0});
    actor->SetLinearVelocity({0, 0, 0});
    return actor;
}

}  // namespace

Ball::Ball(Level& level, std::string name, float x, float y, float health, float mass, float radius)
    : GameObject(level, std::move(name)), radius(radius), health(health), mass(mass) {
    actor = MakeSphere(Physics(), radius, mass, kDefaultMaterial, x, y, GroupBall);
    if (actor) actor->userData = static_cast<GameObject*>(this);
    model = level.ClassModel("Ball");
}

void Ball::Nudge(Random& random) {
    Vector3 direction;
    direction.x = float(random.Next()) * 2.0f / float(Random::kMax) - 1.0f;
    direction.y = float(random.Next()) * 2.0f / float(Random::kMax) - 1.0f;
    direction.z = float(random.Next()) * 2.0f / float(Random::kMax) - 1.0f;
    if (actor) actor->AddForce(DividedByLength(direction) * kNudgeImpulse, phys::ForceMode::Impulse);
}

DeadBall::DeadBall(Level& level, std::string name, float x, float y, float mass, float radius)
    : GameObject(level, std::move(name)), radius(radius), mass(mass) {
    // Grippy and dull: high friction, no bounce.
    actor = MakeSphere(Physics(), radius, mass, kDeadBallMaterial, x, y, GroupProp);
    model = level.ClassModel("DeadBall");
}
