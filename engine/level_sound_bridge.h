#pragma once
#include "level/level_sounds.h"

class SoundSystem;

// The level's sounds, played on the game's sound system.
class LevelSoundBridge : public LevelSounds {
public:
    explicit LevelSoundBridge(SoundSystem& sound) : sound(sound) {}
    void PlayContactSound(const std::string& name, const Vector3& position, int32_t volume) override;
    bool PlayMusic(const std::string& name, int32_t volume) override;
    void RepeatMusic(int32_t volume) override;
    void StopMusic() override;
    void PlaySound(const std::string& name, int32_t volume) override;

private:
    SoundSystem& sound;
};
