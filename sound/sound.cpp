#include "sound/sound.h"

#include "sound/sound_system.h"
#include "sound/sound_volume.h"

Sound::~Sound() { ReleaseAll(); }

void Sound::ReleaseIdleCopies() {
    for (size_t i = 1; i < instances.size(); ++i)
        if (instances[i] && !instances[i]->IsPlaying()) instances[i].reset();
}

SoundInstance* Sound::GetFreeInstance() {
    if (!instances[0]) return nullptr;
    ReleaseIdleCopies();
    SoundInstance* free = nullptr;
    if (!instances[0]->IsPlaying()) {
        free = instances[0].get();
    } else {
        for (size_t i = 1; i < instances.size() && !free; ++i) {
            if (instances[i]) continue;
            instances[i] = instances[0]->Duplicate();
            free = instances[i].get();
            if (!free) return nullptr;  // the device has no source to spare
        }
    }
    if (free) free->id = system.NextInstanceId();
    return free;
}

int Sound::CountPlaying() const {
    int playing = 0;
    for (const auto& instance : instances)
        if (instance && instance->IsPlaying()) ++playing;
    return playing;
}

void Sound::StopAll() {
    for (const auto& instance : instances)
        if (instance && instance->IsPlaying()) instance->Stop();
    for (size_t i = 1; i < instances.size(); ++i) instances[i].reset();
}

void Sound::ReleaseAll() {
    for (auto& instance : instances) instance.reset();
}

void Sound::SetPrimary(std::unique_ptr<SoundInstance> instance) {
    ReleaseAll();
    instances[0] = std::move(instance);
}

uint32_t Sound3D::Play(const Vector3& position, const Vector3& velocity, int32_t volume) {
    MarkUsed();
    SoundInstance* instance = GetFreeInstance();
    if (!instance) return 0;
    // The new place is committed before the start, so an instance never starts where it last played.
    system.Defer();
    instance->PlaceInWorld(position, velocity, GainOfVolume(volume), system.MinDistance(), system.MaxDistance());
    system.Commit();
    return instance->Play() ? instance->id : 0;
}

uint32_t SoundSimple::Play(int32_t volume) {
    MarkUsed();
    SoundInstance* instance = GetFreeInstance();
    if (!instance) return 0;
    instance->PlaceAtListener(GainOfVolume(volume));
    return instance->Play() ? instance->id : 0;
}
