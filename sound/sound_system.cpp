#include "sound/sound_system.h"

bool SoundSystem::Startup(platform::GameWindow*) { return true; }

void SoundSystem::Commit() {}

void SoundSystem::PlayContactSound(const std::string&, const Vector3&, int32_t) {}

bool SoundSystem::PlayMusic(const std::string&, int32_t) { return false; }

void SoundSystem::RepeatMusic(int32_t) {}

void SoundSystem::StopMusic() {}

void SoundSystem::PlaySound(const std::string&, int32_t) {}
