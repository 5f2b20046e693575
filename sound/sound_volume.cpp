#include "sound/sound_volume.h"

#include <algorithm>
#include <cmath>

float GainOfVolume(int32_t volume) {
    const int32_t clamped = std::clamp(volume, kSilentVolume, kFullVolume);
    return float(std::pow(10.0, clamped / 2000.0));
}

bool BeyondHearing(const Vector3& position, float maxDistance) {
    const double distance = std::sqrt(double(position.x) * position.x + double(position.y) * position.y +
                                      double(position.z) * position.z);
    return !(distance <= maxDistance);
}
