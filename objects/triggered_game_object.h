#pragma once
#include <vector>

#include "objects/game_object.h"
#include "objects/trigger_object.h"

// An object that senses what passes through its trigger sphere. The physics step fills the
// lists; the object acts on `entered` in its next Update, then the lists are emptied. An
// entry whose actor was destroyed meanwhile is null and must be skipped.
class TriggeredGameObject : public GameObject, public ITriggerObject {
public:
    TriggeredGameObject(Level& level, std::string name);
    ~TriggeredGameObject() override;

    void OnTriggerEnter(phys::Actor* other) override { entered.push_back(other); }
    void OnTriggerStay(phys::Actor* other) override { staying.push_back(other); }
    void OnTriggerLeave(phys::Actor* other) override { left.push_back(other); }

    // The trigger's position; the origin when there is no trigger.
    Vector3 GetPosition() const override;
    // Empties the lists, then delivers messages.
    void Update() override;
    void ForgetActor(const phys::Actor* gone) override;

    phys::Actor* GetTrigger() const { return trigger; }
    const std::vector<phys::Actor*>& GetEntered() const { return entered; }

protected:
    // Makes the trigger sphere at (x, y, 0); no trigger when the physics refuses the radius.
    void MakeTrigger(float radius, float x, float y);

    std::vector<phys::Actor*> entered;
    std::vector<phys::Actor*> staying;
    std::vector<phys::Actor*> left;
    phys::Actor* trigger = nullptr;
};
