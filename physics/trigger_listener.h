#pragma once

namespace phys {

class Actor;

// The owner of a trigger sphere. The step calls these with every actor that entered, stayed in
// or left the sphere; an owner should only record them and act after the step.
class TriggerListener {
public:
    virtual ~TriggerListener() = default;
    virtual void OnTriggerEnter(Actor* other) = 0;
    virtual void OnTriggerStay(Actor* other) = 0;
    virtual void OnTriggerLeave(Actor* other) = 0;
};

}  // namespace phys
