#include "engine/level_sound_bridge.h"

#include "resources/resource_manager.h"
#include "sound/sound.h"

namespace {

// Before the sound system starts the manager's sounds are headless ones, which play nothing.
SoundSimple* PlainSound(ResourceManager& resources, const std::string& name) {
    return dynamic_cast<SoundSimple*>(resources.Get(ResourceSound, name));
}

}  // namespace

void LevelSoundBridge::PlayContactSound(const std::string& name, const Vector3& position, int32_t volume) {
    if (auto* sound = dynamic_cast<Sound3D*>(resources.Get(ResourceSound3D, name)))
        sound->Play(position, Vector3(0, 0, 0), volume);
}

bool LevelSoundBridge::PlayMusic(const std::string& name, int32_t volume) {
    music = PlainSound(resources, name);
    if (!music) return false;
    music->Play(volume);
    return true;
}

void LevelSoundBridge::RepeatMusic(int32_t volume) {
    if (music && music->CountPlaying() == 0) music->Play(volume);
}

void LevelSoundBridge::StopMusic() {
    if (music) music->StopAll();
}

void LevelSoundBridge::PlaySound(const std::string& name, int32_t volume) {
    if (SoundSimple* sound = PlainSound(resources, name)) sound->Play(volume);
}
