#include "objects/bumpers.h"

#include "core/random.h"
#include "level/level.h"
#include "objects/actor_group.h"
#include "objects/ball.h"
#include "objects/particle_emitters.h"
#include "physics/actor.h"
#include "physics/physics_system.h"

namespace {

constexpr float kTriggerScale = 1.1f;  // the trigger reaches a little beyond the post
constexpr int kSparks = 5;
constexpr int kCurrentBallSparks = 50;
// Spawned balls stand this many times the ball's distance from the bumper's centre, with the
// standard ball's health, mass and radius.
constexpr float kSpawnDistance = 1.1f;
constexpr float kSpawnHealth = 100.0f, kSpawnMass = 1.0f, kSpawnRadius = 1.0f;

}  // namespace

Bumper::Bumper(Level& level, std::string name, float x, float y, float force, float radius)
    : TriggeredGameObject(level, std::move(name)), radius(radius), force(force) {
    if (PhysicsSystem* physics = Physics()) {
        actor = physics->CreateSphereActor(radius, 0, 0);
        if (actor) {
            actor->SetGlobalPosition({x, y, 0});
            actor->SetGroup(GroupBumper);
            actor->userData = static_cast<GameObject*>(this);
        }
    }
    if (force > 0) MakeTrigger(radius * kTriggerScale, x, y);
    model = level.ClassModel("Bumper");
}

phys::Actor* Bumper::CurrentBallActor() const {
    GameObject* ball = level.GetCurrentBall();
    return ball ? ball->GetActor() : nullptr;
}

void Bumper::Update() {
    phys::Actor* current = CurrentBallActor();
    if (!entered.empty() && trigger) {
        const Vector3 b = trigger->GetGlobalPosition();
        for (phys::Actor* a : entered) {
            if (!a) continue;
            const Vector3 p = a->GetGlobalPosition();
            const Vector3 d = DividedByLength(p - b);
            a->AddForce(d * force, phys::ForceMode::Impulse);
            int sparks = kSparks;
            if (a == current) {
                RaiseEvent("Bump");
                sparks = kCurrentBallSparks;
            }
            if (ParticleSystem* particles = level.GetParticles())
                EmitBumperSparks(*particles, level.GetRandom(), b, d, sparks);
        }
        flash = true;
    }
    TriggeredGameObject::Update();
}

ReverseGravityBumper::ReverseGravityBumper(Level& level, std::string name, float x, float y, float force,
                                           float radius)
    : Bumper(level, std::move(name), x, y, force, radius) {
    model = level.ClassModel("ReverseGravityBumper");
}

void ReverseGravityBumper::Update() {
    if (phys::Actor* current = CurrentBallActor()) {
        for (phys::Actor* a : entered) {
            if (a != current) continue;
            const Vector3 g = -level.GetBaseGravity();
            level.SetBaseGravity(g);
            if (g.y < 0)
                RaiseEvent("GravityDown");
            else if (g.y > 0)
                RaiseEvent("GravityUp");
        }
    }
    Bumper::Update();
}

SpawnerBumper::SpawnerBumper(Level& level, std::string name, float x, float y, float force, float radius,
                             int32_t count)
    : Bumper(level, std::move(name), x, y, force, radius), count(count) {
    model = level.ClassModel("SpawnerBumper");
}

void SpawnerBumper::Update() {
    phys::Actor* current = CurrentBallActor();
    if (current && trigger) {
        // Copied: new balls join the level while we walk the list.
        const std::vector<phys::Actor*> arrivals = entered;
        for (phys::Actor* a : arrivals) {
            if (!a || a != current) continue;
            const Vector3 p = a->GetGlobalPosition();
            const Vector3 b = trigger->GetGlobalPosition();
            const float dx = b.x - p.x, dy = b.y - p.y;
            const float ax = kSpawnDistance * dx, by = kSpawnDistance * dy;
            const Vector3 p1(b.x + ax, b.y + by, 0), p2(b.x - by, b.y + ax, 0), p3(b.x + by, b.y - ax, 0);
            std::vector<Vector3> spots;
            if (count == 1)
                spots = {p1};
            else if (count == 2)
                spots = {p2, p3};
            else
                spots = {p1, p2, p3};
            for (const Vector3& spot : spots)
                level.AddObject(
                    std::make_unique<Ball>(level, "", spot.x, spot.y, kSpawnHealth, kSpawnMass, kSpawnRadius));
        }
    }
    Bumper::Update();
}
