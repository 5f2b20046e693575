#pragma once
#include <cstdint>
#include <string>

#include "core/vector3.h"

// The sounds a level makes, in hundredths of a decibel (0 full, -10000 silent). The game
// plays them on its sound system; this base is the silence of headless play, and tools
// record what would have been heard.
class LevelSounds {
public:
    virtual ~LevelSounds() = default;
    // A ball started touching something at this position.
    virtual void PlayContactSound(const std::string& /*name*/, const Vector3& /*position*/, int32_t /*volume*/) {}
    // The level's music: started by name (false when there is no such sound), played again
    // whenever it has run out, stopped when the level is left.
    virtual bool PlayMusic(const std::string& /*name*/, int32_t /*volume*/) { return false; }
    virtual void RepeatMusic(int32_t /*volume*/) {}
    virtual void StopMusic() {}
    // A sound played once, not kept.
    virtual void PlaySound(const std::string& /*name*/, int32_t /*volume*/) {}
};
