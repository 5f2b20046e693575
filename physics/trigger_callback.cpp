#include "physics/trigger_callback.h"

#include "physics/actor.h"
#include "physics/trigger_listener.h"

void TriggerCallback::OnTrigger(phys::Actor* trigger, phys::Actor* other, uint32_t status) {
    auto* owner = static_cast<phys::TriggerListener*>(trigger->userData);
    if (!owner) return;
    if (status & phys::TriggerOnStay)
        owner->OnTriggerStay(other);
    else if (status & phys::TriggerOnEnter)
        owner->OnTriggerEnter(other);
    else if (status & phys::TriggerOnLeave)
        owner->OnTriggerLeave(other);
}
