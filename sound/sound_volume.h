#pragma once
#include <cstdint>

#include "core/vector3.h"

// Volumes are hundredths of a decibel of attenuation: 0 is full loudness, -10000 (100 dB down)
// silence. Anything outside that range is taken as its nearest end.
inline constexpr int32_t kSilentVolume = -10000;
inline constexpr int32_t kFullVolume = 0;

// The amplitude factor of a volume: 10^(volume / 2000).
float GainOfVolume(int32_t volume);

// True when a sound at this place is too far from the listener at the origin to be heard.
bool BeyondHearing(const Vector3& position, float maxDistance);
