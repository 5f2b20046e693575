#include "objects/teleporters.h"

#include "core/random.h"
#include "level/level.h"
#include "objects/particle_emitters.h"
#include "physics/actor.h"

TeleporterEntrance::TeleporterEntrance(Level& level, std::string name, float x, float y, float radius)
    : TriggeredGameObject(level, std::move(name)), radius(radius) {
    MakeTrigger(radius, x, y);
    model = level.ClassModel("TeleporterEntrance");
}

void TeleporterEntrance::HandleMessage(const QueuedMessage& message) {
    if (message.content == "Disable") enabled = false;
    if (message.content == "Enable") enabled = true;
}

GameObject* TeleporterEntrance::PickDestination() {
    Random& random = level.GetRandom();
    std::vector<GameObject*> found = level.FindObjectsByName(exits[size_t(random.Next()) % exits.size()]);
    for (size_t i = 0; found.empty() && i < exits.size(); ++i) found = level.FindObjectsByName(exits[i]);
    if (found.empty()) return nullptr;
    return found[size_t(random.Next()) % found.size()];
}

void TeleporterEntrance::Update() {
    if (enabled) {
        swirlTimer -= level.CurrentInput().dt;
        if (swirlTimer <= 0) {
            if (ParticleSystem* particles = level.GetParticles())
                EmitTeleporterSwirl(*particles, level.GetRandom(), GetPosition());
            swirlTimer = 0.02f;
        }
        GameObject* ball = level.GetCurrentBall();
        phys::Actor* current = ball ? ball->GetActor() : nullptr;
        for (phys::Actor* a : entered) {
            if (!a || exits.empty()) continue;
            GameObject* destination = PickDestination();
            if (!destination) continue;
            const Vector3 p = destination->GetPosition();
            a->SetGlobalPosition({p.x, p.y, 0});
            if (a == current) {
                RaiseEvent("Enter");
                destination->RaiseEvent("Exit");
                if (ParticleSystem* particles = level.GetParticles()) EmitTeleporterBurst(*particles, {p.x, p.y, 0});
            }
        }
    }
    TriggeredGameObject::Update();
}

TeleporterExit::TeleporterExit(Level& level, std::string name, float x, float y)
    : GameObject(level, std::move(name)), x(x), y(y) {
    model = level.ClassModel("TeleporterExit");
}
