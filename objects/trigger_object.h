#pragma once

namespace phys {
class Actor;
}

// An object that owns a trigger sphere. The physics step calls these with every actor that
// entered, stayed in or left the sphere; the object records them and acts in its own update.
class ITriggerObject {
public:
    virtual ~ITriggerObject() = default;
    virtual void OnTriggerEnter(phys::Actor* other) = 0;
    virtual void OnTriggerStay(phys::Actor* other) = 0;
    virtual void OnTriggerLeave(phys::Actor* other) = 0;
};
