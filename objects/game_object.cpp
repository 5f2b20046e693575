#include "objects/game_object.h"

#include "level/level.h"
#include "level/level_view.h"
#include "physics/actor.h"
#include "physics/physics_system.h"

GameObject::GameObject(Level& level, std::string name) : level(level), name(std::move(name)) {}

GameObject::~GameObject() {
    PhysicsSystem* physics = Physics();
    if (!physics) return;
    if (joint) physics->ReleaseJoint(joint);
    if (actor) physics->ReleaseActor(actor);
}

PhysicsSystem* GameObject::Physics() const { return level.Physics(); }

void GameObject::HandleMessage(const QueuedMessage&) {}

Vector3 GameObject::GetPosition() const { return actor ? actor->GetGlobalPosition() : Vector3(0, 0, 0); }

Vector3 GameObject::GetVelocity() const { return actor ? actor->GetLinearVelocity() : Vector3(0, 0, 0); }

void GameObject::Update() { DeliverMessages(); }

void GameObject::AddMessage(std::unique_ptr<Message> message) { messages.push_back(std::move(message)); }

void GameObject::RaiseEvent(const std::string& event) {
    if (LevelObserver* observer = level.Observer()) observer->OnEvent(*this, event);
    for (const auto& rule : messages) {
        if (rule->event != event) continue;
        for (GameObject* target : level.FindObjectsByName(rule->target)) target->Receive(this, rule->content);
    }
}

void GameObject::Receive(GameObject* sender, const std::string& content) {
    if (queue.size() < MessageQueueLimit) queue.push_back({sender, content});
}

void GameObject::DeliverMessages() {
    while (!queue.empty()) {
        const QueuedMessage message = std::move(queue.front());
        queue.pop_front();
        if (LevelObserver* observer = level.Observer()) observer->OnMessage(*this, message.content);
        HandleMessage(message);
    }
}
