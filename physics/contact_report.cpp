#include "physics/contact_report.h"

#include <cmath>

#include "objects/actor_group.h"
#include "physics/actor.h"
#include "sound/contact_sound_player.h"

namespace {

constexpr double kQuietest = -10000.0;

int32_t ForceVolume(double constant, const Vector3& force) {
    const float length = std::sqrt(force.x * force.x + force.y * force.y + force.z * force.z);
    const double volume = constant / double(length);
    if (!(volume >= kQuietest)) return int32_t(kQuietest);
    return int32_t(volume);
}

}  // namespace

ContactSound ContactReport::Choose(uint16_t otherGroup, const Vector3& sumNormalForce) {
    switch (otherGroup) {
        case GroupTrack:
        case GroupPeg:
            return {"claves", ForceVolume(-20000.0, sumNormalForce)};
        case GroupProp:
            return {"cowbell", ForceVolume(-5000.0, sumNormalForce)};
        case GroupBumper:
            return {"oriental_gong", 0};
        default:
            return {};
    }
}

void ContactReport::OnContactNotify(const phys::ContactPair& pair, uint32_t) {
    const uint16_t group0 = pair.actors[0]->GetGroup();
    const uint16_t group1 = pair.actors[1]->GetGroup();
    phys::Actor* ball;
    phys::Actor* other;
    if (group0 == GroupBall) {
        ball = pair.actors[0];
        other = pair.actors[1];
    } else if (group1 == GroupBall) {
        ball = pair.actors[1];
        other = pair.actors[0];
    } else {
        return;
    }
    const uint16_t otherGroup = other->GetGroup();
    if (listener) listener->OnBallContact(ball, other);
    const ContactSound sound = Choose(otherGroup, pair.sumNormalForce);
    if (!sound.name || !sounds) return;
    sounds->PlayContactSound(sound.name, ball->GetGlobalPosition(), sound.volume);
}
