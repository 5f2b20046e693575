#include "physics/scene_pairs.h"

#include <algorithm>
#include <utility>

#include "physics/actor.h"
#include "physics/bullet_convert.h"
#include "physics/scene.h"

namespace phys {

namespace {

uint64_t PairKey(const Actor* a, const Actor* b) {
    uint32_t x = a->GetSerial(), y = b->GetSerial();
    if (x > y) std::swap(x, y);
    return uint64_t(x) << 32 | y;
}

// Hash maps iterate in no fixed order; reports made while walking one are sorted by key.
template <class Map, class Pick>
std::vector<uint64_t> SortedKeys(const Map& map, Pick pick) {
    std::vector<uint64_t> keys;
    for (const auto& [key, value] : map)
        if (pick(value)) keys.push_back(key);
    std::sort(keys.begin(), keys.end());
    return keys;
}

}  // namespace

void ScenePairs::ScanTick(btDispatcher& dispatcher, const Scene& scene) {
    ++tickNumber;
    touchesThisTick.clear();
    const int count = dispatcher.getNumManifolds();
    for (int m = 0; m < count; ++m) {
        const btPersistentManifold* manifold = dispatcher.getManifoldByIndexInternal(m);
        const int points = manifold->getNumContacts();
        if (points == 0) continue;
        auto* a = static_cast<Actor*>(manifold->getBody0()->getUserPointer());
        auto* b = static_cast<Actor*>(manifold->getBody1()->getUserPointer());
        if (!a || !b) continue;

        if (a->IsTrigger() || b->IsTrigger()) {
            Actor* trigger = a->IsTrigger() ? a : b;
            Actor* other = trigger == a ? b : a;
            // Triggers sense moving things only.
            if (other->IsTrigger() || !other->IsDynamic()) continue;
            bool overlapping = false;
            for (int p = 0; p < points; ++p) overlapping |= manifold->getContactPoint(p).getDistance() <= 0;
            NoteTrigger(trigger, other, overlapping);
            continue;
        }

        if (!(scene.GetGroupPairFlags(a->GetGroup(), b->GetGroup()) & NotifyOnStartTouch)) continue;
        const uint64_t key = PairKey(a, b);
        Touch& touch = touches.try_emplace(key, Touch{a, b}).first->second;
        if (touch.lastTick != tickNumber) {
            touch.lastTick = tickNumber;
            touch.points = 0;
            touch.pressing = false;
            touch.force = Vector3(0, 0, 0);
            touchesThisTick.push_back(key);
        }
        for (int p = 0; p < points; ++p) {
            const btManifoldPoint& point = manifold->getContactPoint(p);
            ++touch.points;
            touch.pressing |= point.getAppliedImpulse() > 0 || point.getDistance() < 0;
            touch.force += FromBt(point.m_normalWorldOnB * point.getAppliedImpulse());
        }
    }
    EndTriggerTick();
    EndContactTick();
}

void ScenePairs::NoteTrigger(Actor* trigger, Actor* other, bool overlapping) {
    if (!overlapping) return;
    auto [it, added] = occupants.try_emplace(PairKey(trigger, other), Occupant{trigger, other});
    Occupant& occupant = it->second;
    if (added || occupant.teleported) {
        occupant.changed = true;
        occupant.teleported = false;
        reports.push_back({false, trigger, other, TriggerOnEnter, {0, 0, 0}});
    }
    occupant.lastTick = tickNumber;
}

void ScenePairs::Teleported(const Actor* actor) {
    for (auto& [key, occupant] : occupants)
        if (occupant.other == actor) occupant.teleported = true;
}

void ScenePairs::EndTriggerTick() {
    const auto gone = SortedKeys(occupants, [this](const Occupant& o) { return o.lastTick != tickNumber; });
    for (uint64_t key : gone) {
        const Occupant& occupant = occupants.at(key);
        reports.push_back({false, occupant.trigger, occupant.other, TriggerOnLeave, {0, 0, 0}});
        occupants.erase(key);
    }
}

void ScenePairs::EndContactTick() {
    for (uint64_t key : touchesThisTick) {
        Touch& touch = touches.at(key);
        const bool now = touch.points > 0 && (touch.pressing || touch.touching);
        if (now && !touch.touching) reports.push_back({true, touch.first, touch.second, 0, touch.force});
        touch.touching = now;
    }
    std::erase_if(touches, [this](const auto& entry) {
        return entry.second.lastTick != tickNumber || !entry.second.touching;
    });
}

void ScenePairs::FinishStep() {
    const auto staying = SortedKeys(occupants, [](const Occupant& o) { return o.insideAtStepStart && !o.changed; });
    for (uint64_t key : staying) {
        const Occupant& occupant = occupants.at(key);
        reports.push_back({false, occupant.trigger, occupant.other, TriggerOnStay, {0, 0, 0}});
    }
    for (auto& [key, occupant] : occupants) {
        occupant.insideAtStepStart = true;
        occupant.changed = false;
    }
}

void ScenePairs::Forget(const Actor* actor) {
    std::erase_if(occupants, [actor](const auto& e) { return e.second.trigger == actor || e.second.other == actor; });
    std::erase_if(touches, [actor](const auto& e) { return e.second.first == actor || e.second.second == actor; });
    std::erase_if(reports, [actor](const PendingReport& r) { return r.first == actor || r.second == actor; });
}

std::vector<PendingReport> ScenePairs::TakeReports() { return std::exchange(reports, {}); }

}  // namespace phys
