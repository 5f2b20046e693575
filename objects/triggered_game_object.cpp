#include "objects/triggered_game_object.h"

#include <algorithm>

#include "physics/actor.h"
#include "physics/physics_system.h"

TriggeredGameObject::TriggeredGameObject(Level& level, std::string name) : GameObject(level, std::move(name)) {}

// The joint and actor go in the base destructor, after this: joints, trigger, actor.
TriggeredGameObject::~TriggeredGameObject() {
    if (trigger && Physics()) {
        if (joint) {
            Physics()->ReleaseJoint(joint);
            joint = nullptr;
        }
        Physics()->ReleaseActor(trigger);
    }
}

Vector3 TriggeredGameObject::GetPosition() const {
    return trigger ? trigger->GetGlobalPosition() : Vector3(0, 0, 0);
}

void TriggeredGameObject::Update() {
    entered.clear();
    staying.clear();
    left.clear();
    DeliverMessages();
}

void TriggeredGameObject::ForgetActor(const phys::Actor* gone) {
    for (auto* list : {&entered, &staying, &left}) std::replace(list->begin(), list->end(), const_cast<phys::Actor*>(gone), static_cast<phys::Actor*>(nullptr));
}

void TriggeredGameObject::MakeTrigger(float radius, float x, float y) {
    if (!Physics()) return;
    trigger = Physics()->CreateSphereTrigger(radius, this);
    if (trigger) trigger->SetGlobalPosition({x, y, 0});
}
