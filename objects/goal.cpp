#include "objects/goal.h"

#include "level/level.h"
#include "objects/particle_emitters.h"
#include "physics/actor.h"

Goal::Goal(Level& level, std::string name, float x, float y, float quota, float radius)
    : TriggeredGameObject(level, std::move(name)), radius(radius), quota(quota) {
    MakeTrigger(radius, x, y);
    model = level.ClassModel("Goal");
}

void Goal::HandleMessage(const QueuedMessage& message) {
    if (message.content == "Disable") enabled = false;
    if (message.content == "Enable") enabled = true;
}

namespace {

// What enters the goal and is not a ball is thrown out at this speed.
constexpr float kPushAway = 100.0f;

}  // namespace

void Goal::Update() {
    if (enabled) {
        // Indexed: collecting a ball blanks its entries in every list, this one included.
        for (size_t i = 0; i < entered.size(); ++i) {
            phys::Actor* a = entered[i];
            if (!a) continue;
            auto* object = static_cast<GameObject*>(a->userData);
            if (object && object->IsBall()) {
                level.CollectBall(object);
                RaiseEvent("Score");
                if (ParticleSystem* particles = level.GetParticles())
                    EmitGoalFountain(*particles, level.GetRandom(), GetPosition());
                continue;
            }
            const Vector3 b = GetPosition();
            const Vector3 d = DividedByLength(a->GetGlobalPosition() - b);
            a->AddForce(d * kPushAway, phys::ForceMode::VelocityChange);
        }
    }
    TriggeredGameObject::Update();
}
