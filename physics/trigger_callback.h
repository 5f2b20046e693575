#pragma once
#include "physics/scene.h"

// Hands each trigger report to the listener that owns the trigger (kept as the trigger actor's
// userData). A report that carries several flags is delivered once, as
// the first of stay, enter, leave that it carries.
class TriggerCallback : public phys::UserTriggerReport {
public:
    void OnTrigger(phys::Actor* trigger, phys::Actor* other, uint32_t status) override;
};
