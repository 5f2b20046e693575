#include "sound/sound_system.h"

bool SoundSystem::Startup(platform::GameWindow*) { return true; }

void SoundSystem::Commit() {}

void SoundSystem::PlayContactSound(const std::string&, const Vector3&, int32_t) {}
