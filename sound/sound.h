#pragma once
#include <array>
#include <cstdint>
#include <memory>

#include "core/vector3.h"
#include "resources/resource.h"
#include "sound/sound_instance.h"

class SoundSystem;

// The playing copies of one loaded sound. Slot 0, the primary, exists while the sound is
// loaded; slots 1 to 7 hold copies sharing its samples, made when the sound is wanted while
// the others still play and dropped once idle. So at most eight play at once.
class Sound {
public:
    static constexpr int kInstances = 8;

    explicit Sound(SoundSystem& system) : system(system) {}
    virtual ~Sound();
    Sound(const Sound&) = delete;
    Sound& operator=(const Sound&) = delete;

    // An idle instance with a new id, or null when the sound is not loaded or all eight play.
    SoundInstance* GetFreeInstance();
    int CountPlaying() const;
    // Stops every instance and drops the copies; the primary stays.
    void StopAll();
    // Stops and drops every instance, the primary too.
    void ReleaseAll();
    // The instance becomes the primary, after every other is released.
    void SetPrimary(std::unique_ptr<SoundInstance> instance);
    const SoundInstance* Slot(int index) const { return instances[size_t(index)].get(); }

protected:
    SoundSystem& system;

private:
    void ReleaseIdleCopies();
    std::array<std::unique_ptr<SoundInstance>, kInstances> instances;
};

// A sound placed in the world, heard from the listener at the origin. Mono only.
class Sound3D : public Sound, public Resource {
public:
    Sound3D(SoundSystem& system, std::string path, std::string name, ILoadListener* listener)
        : Sound(system), Resource(std::move(path), std::move(name), listener) {}
    // The id of the instance started, or 0 when none could be.
    uint32_t Play(const Vector3& position, const Vector3& velocity, int32_t volume);
};

// A sound heard as recorded, wherever the listener is: music, the whoosh, the menu's click.
class SoundSimple : public Sound, public Resource {
public:
    SoundSimple(SoundSystem& system, std::string path, std::string name, ILoadListener* listener)
        : Sound(system), Resource(std::move(path), std::move(name), listener) {}
    uint32_t Play(int32_t volume);
};
