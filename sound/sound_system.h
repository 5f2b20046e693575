#pragma once

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
};
