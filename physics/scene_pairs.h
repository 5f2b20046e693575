#pragma once
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "core/vector3.h"

class btDispatcher;

namespace phys {

class Actor;
class Scene;

// One report waiting to be delivered at the end of a step.
struct PendingReport {
    bool contact = false;
    Actor* first = nullptr;   // the trigger, or the contact's first actor
    Actor* second = nullptr;  // what is in the trigger, or the contact's second actor
    uint32_t status = 0;      // trigger flags
    Vector3 sumNormalForce{0, 0, 0};
};

// Follows, tick by tick, which actors are inside which triggers and which reported pairs
// touch, and turns the changes into reports.
//
// A trigger holds an actor while their shapes overlap. A pair starts to touch when its
// contact carries force or its shapes overlap; it goes on touching while the contact lasts,
// which keeps a resting ball from being reported again every time it settles.
class ScenePairs {
public:
    void ScanTick(btDispatcher& dispatcher, const Scene& scene);
    // Adds a stay for every occupant that neither came nor went during the step.
    void FinishStep();
    void Forget(const Actor* actor);
    // The actor was moved by hand: a trigger it is found in at the next tick sees it enter
    // anew, as though it had come from outside.
    void Teleported(const Actor* actor);
    std::vector<PendingReport> TakeReports();

private:
    struct Occupant {
        Actor* trigger;
        Actor* other;
        uint32_t lastTick = 0;
        bool insideAtStepStart = false;
        bool changed = false;
        bool teleported = false;  // put here by a teleport: found inside, it enters again
    };
    struct Touch {
        Actor* first;
        Actor* second;
        uint32_t lastTick = 0;
        int points = 0;
        bool pressing = false;
        bool touching = false;
        Vector3 force{0, 0, 0};
    };

    void NoteTrigger(Actor* trigger, Actor* other, bool overlapping);
    void EndTriggerTick();
    void EndContactTick();

    uint32_t tickNumber = 0;
    std::unordered_map<uint64_t, Occupant> occupants;
    std::unordered_map<uint64_t, Touch> touches;
    std::vector<uint64_t> touchesThisTick;
    std::vector<PendingReport> reports;
};

}  // namespace phys
