#include "sound/sound_system.h"

bool SoundSystem::Startup(platform::GameWindow*) { return true; }

void SoundSystem::Commit() {}
