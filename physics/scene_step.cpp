// Stepping the scene and delivering what happened during the step.
#include <cmath>

#include "physics/actor.h"
#include "physics/bullet_convert.h"
#include "physics/joint.h"
#include "physics/scene.h"
#include "physics/scene_pairs.h"

namespace phys {

void Scene::Simulate(float dt) {
    if (!(dt > 0.0f) || !std::isfinite(dt)) {
        lastTicks = 0;
        return;
    }
    leftoverTime += dt;
    // A step a hair short of a whole number of ticks still runs them all.
    int ticks = int(std::floor(leftoverTime / kTick + 1e-4));
    leftoverTime = std::max(0.0, leftoverTime - ticks * double(kTick));
    if (ticks > kMaxTicksPerStep) {
        // The game slows down rather than taking longer ticks.
        ticks = kMaxTicksPerStep;
        leftoverTime = 0.0;
    }
    for (int i = 0; i < ticks; ++i) {
        for (Joint* joint : joints) joint->BeforeTick(kTick);
        world->stepSimulation(kTick, 0, kTick);
        pairs->ScanTick(*dispatcher, *this, kTick);
    }
    lastTicks = ticks;
    pairs->FinishStep();

    // Reports are delivered after the ticks, so a callback never sees the world half-stepped.
    delivering = true;
    for (const PendingReport& report : pairs->TakeReports()) {
        if (report.first->released || report.second->released) continue;
        if (report.contact) {
            if (contactReport)
                contactReport->OnContactNotify({{report.first, report.second}, report.sumNormalForce},
                                               NotifyOnStartTouch);
        } else if (triggerReport) {
            triggerReport->OnTrigger(report.first, report.second, report.status);
        }
    }
    delivering = false;
    for (Actor* actor : releasedWhileDelivering) DestroyActor(actor);
    releasedWhileDelivering.clear();
}

void Scene::ForgetActor(Actor* actor) { pairs->Forget(actor); }

}  // namespace phys
