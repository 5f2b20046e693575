#pragma once
#include <cstdint>
#include <string>

#include "core/vector3.h"

namespace platform {
class GameWindow;
}

// The sound device and its 3D listener. Until an audio device is opened it is silent, which
// is also what headless play and the tests use.
class SoundSystem {
public:
    virtual ~SoundSystem() = default;
    virtual bool Startup(platform::GameWindow* window);
    // Applies the listener's deferred 3D settings.
    virtual void Commit();
    // Plays the named positional sound; silent while no device is open.
    virtual void PlayContactSound(const std::string& name, const Vector3& position, int32_t volume);

    // The level's music: started by name (false when there is no such sound), played again
    // whenever it has run out, stopped when the level is left.
    virtual bool PlayMusic(const std::string& name, int32_t volume);
    virtual void RepeatMusic(int32_t volume);
    virtual void StopMusic();
    // A sound played once, not kept.
    virtual void PlaySound(const std::string& name, int32_t volume);
};
