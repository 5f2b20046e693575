// Stepping the scene and delivering what happened during the step.
#include <cmath>
#include <utility>

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
    if (ticks > 0)
        for (Actor* actor : actors)
            if (actor->IsDynamic() && !actor->switchedOff) actor->KeepPose();
    for (int i = 0; i < ticks; ++i) {
        for (Joint* joint : joints) joint->BeforeTick(kTick);
        world->stepSimulation(kTick, 0, kTick);
        SwitchOffRunaways();
        pairs->ScanTick(*dispatcher, *this);
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
    for (const auto& [actor, fault] : std::exchange(faults, {}))
        if (faultReport && !actor->released) faultReport->OnActorSwitchedOff(actor, fault);
    delivering = false;
    for (Actor* actor : releasedWhileDelivering) DestroyActor(actor);
    releasedWhileDelivering.clear();
}

void Scene::ForgetActor(Actor* actor) { pairs->Forget(actor); }

namespace {

bool Finite(const btVector3& v) { return std::isfinite(v.x()) && std::isfinite(v.y()) && std::isfinite(v.z()); }

bool FiniteMotion(const btRigidBody& body) {
    const btTransform& t = body.getWorldTransform();
    return Finite(t.getOrigin()) && Finite(t.getBasis()[0]) && Finite(t.getBasis()[1]) && Finite(t.getBasis()[2]) &&
           Finite(body.getLinearVelocity()) && Finite(body.getAngularVelocity());
}

}  // namespace

void Scene::SwitchOffRunaways() {
    for (Actor* actor : actors) {
        if (!actor->IsDynamic() || actor->switchedOff) continue;
        Fault fault;
        if (!FiniteMotion(*actor->body))
            fault = Fault::NotFinite;
        else if (actor->body->getActivationState() == DISABLE_SIMULATION)
            fault = Fault::OutOfBounds;  // the library stops a body whose bounds overflow
        else
            continue;
        Withdraw(actor);
        actor->RestorePose();
        actor->switchedOff = true;
        faults.emplace_back(actor, fault);
    }
}

}  // namespace phys
