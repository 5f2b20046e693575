#pragma once
#include <cstdint>
#include <string>

#include "engine/vector3.h"

// Where the physics step's contact report sends the collision sound it chose: a sound name,
// where the ball was, and a volume in hundredths of a decibel (0 full, -10000 silent).
class ContactSoundPlayer {
public:
    virtual ~ContactSoundPlayer() = default;
    virtual void PlayContactSound(const std::string& name, const Vector3& position, int32_t volume) = 0;
};
