#include "sound/sound_system.h"

#include <AL/al.h>
#include <AL/alext.h>

#include <cstdio>

#include "resources/resource_manager.h"
#include "resources/sound_file.h"
#include "sound/audio_output.h"
#include "sound/wav_sound.h"

namespace {

LPALDEFERUPDATESSOFT deferUpdates = nullptr;
LPALPROCESSUPDATESSOFT processUpdates = nullptr;

}  // namespace

SoundSystem::SoundSystem() = default;

SoundSystem::~SoundSystem() {
    if (!resources) return;
    resources->DiscardAll(ResourceSound);
    resources->DiscardAll(ResourceSound3D);
    RegisterSoundFileTypes(*resources);
}

bool SoundSystem::Startup(ResourceManager& manager) {
    std::string note, why;
    output = AudioOutput::Open(note, why);
    if (!output) {
        std::fprintf(stderr, "sound: %s\n", why.c_str());
        return false;
    }
    if (!note.empty()) std::fprintf(stderr, "%s\n", note.c_str());

    if (alIsExtensionPresent("AL_SOFT_deferred_updates")) {
        deferUpdates = reinterpret_cast<LPALDEFERUPDATESSOFT>(alGetProcAddress("alDeferUpdatesSOFT"));
        processUpdates = reinterpret_cast<LPALPROCESSUPDATESSOFT>(alGetProcAddress("alProcessUpdatesSOFT"));
    }
    // The listener stays at the origin facing into the screen, x to the right and y up, as
    // the player looks at the level; distances fall off by the clamped inverse law.
    alDistanceModel(AL_INVERSE_DISTANCE_CLAMPED);
    alListener3f(AL_POSITION, 0, 0, 0);
    alListener3f(AL_VELOCITY, 0, 0, 0);
    const ALfloat orientation[] = {0, 0, -1, 0, 1, 0};
    alListenerfv(AL_ORIENTATION, orientation);
    minDistance = kMinDistance;
    maxDistance = kMaxDistance;

    resources = &manager;
    RegisterWavSoundTypes(manager, *this);
    return true;
}

void SoundSystem::Defer() {
    if (!output || !deferUpdates || deferring) return;
    deferUpdates();
    deferring = true;
}

void SoundSystem::Commit() {
    if (!output || !processUpdates || !deferring) return;
    processUpdates();
    deferring = false;
}

void SoundSystem::Advance(double seconds) {
    if (output) output->Advance(seconds);
}

bool SoundSystem::IsSilent() const { return !output || output->IsDiscarding(); }
