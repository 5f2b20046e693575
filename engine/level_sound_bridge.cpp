#include "engine/level_sound_bridge.h"

#include "sound/sound_system.h"

void LevelSoundBridge::PlayContactSound(const std::string& name, const Vector3& position, int32_t volume) {
    sound.PlayContactSound(name, position, volume);
}

bool LevelSoundBridge::PlayMusic(const std::string& name, int32_t volume) { return sound.PlayMusic(name, volume); }

void LevelSoundBridge::RepeatMusic(int32_t volume) { sound.RepeatMusic(volume); }

void LevelSoundBridge::StopMusic() { sound.StopMusic(); }

void LevelSoundBridge::PlaySound(const std::string& name, int32_t volume) { sound.PlaySound(name, volume); }
