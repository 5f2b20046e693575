#pragma once
#include "level/level_sounds.h"

class ResourceManager;
class SoundSimple;

// The level's sounds, found by name in the resource manager and played on the sound system.
// A name with no sound (or a sound that does not load) plays nothing.
class LevelSoundBridge : public LevelSounds {
public:
    explicit LevelSoundBridge(ResourceManager& resources) : resources(resources) {}
    void PlayContactSound(const std::string& name, const Vector3& position, int32_t volume) override;
    bool PlayMusic(const std::string& name, int32_t volume) override;
    void RepeatMusic(int32_t volume) override;
    void StopMusic() override;
    void PlaySound(const std::string& name, int32_t volume) override;

private:
    ResourceManager& resources;
    SoundSimple* music = nullptr;
};
