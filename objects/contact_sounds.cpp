#include "objects/contact_sounds.h"

#include <cmath>

#include "objects/actor_group.h"

namespace {

constexpr double kQuietest = -10000.0;
constexpr double kTrackLoudness = -20000.0;  // tracks and pegs
constexpr double kPropLoudness = -5000.0;

int32_t ForceVolume(double constant, const Vector3& force) {
    const float length = std::sqrt(force.x * force.x + force.y * force.y + force.z * force.z);
    const double volume = constant / double(length);
    if (!(volume >= kQuietest)) return int32_t(kQuietest);
    return int32_t(volume);
}

}  // namespace

ContactSound ChooseContactSound(uint16_t otherGroup, const Vector3& sumNormalForce) {
    switch (otherGroup) {
        case GroupTrack:
        case GroupPeg:
            return {"claves", ForceVolume(kTrackLoudness, sumNormalForce)};
        case GroupProp:
            return {"cowbell", ForceVolume(kPropLoudness, sumNormalForce)};
        case GroupBumper:
            return {"oriental_gong", 0};
        default:
            return {};
    }
}
