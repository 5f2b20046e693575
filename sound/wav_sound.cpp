#include "sound/wav_sound.h"

#include <cstdio>
#include <memory>

#include "resources/resource_manager.h"
#include "resources/sound_file.h"
#include "sound/sample_buffer.h"

namespace {

int32_t LoadWav(Sound& sound, const std::string& path, bool positional, bool& reported) {
    WavData wav;
    std::string error;
    std::unique_ptr<SoundInstance> primary;
    if (ReadSoundFile(path, positional, wav, error)) {
        primary = SoundInstance::Make(SampleBuffer::Make(wav, path, error));
        if (!primary && error.empty()) error = path + ": the audio device has no source left to play it";
    }
    if (!primary) {
        // Every use retries a failed load; one line is enough.
        if (!reported) std::fprintf(stderr, "sound: %s\n", error.c_str());
        reported = true;
        sound.ReleaseAll();
        return -1;
    }
    reported = false;
    sound.SetPrimary(std::move(primary));
    return int32_t(wav.data.size());
}

}  // namespace

int32_t WavSound3D::Load(const std::string& path) { return LoadWav(*this, path, true, reported); }

int32_t WavSoundSimple::Load(const std::string& path) { return LoadWav(*this, path, false, reported); }

void RegisterWavSoundTypes(ResourceManager& manager, SoundSystem& system) {
    manager.SetFactory(ResourceSound, [&system](const std::string& path, const std::string& name,
                                                ILoadListener* listener) -> std::unique_ptr<Resource> {
        return std::make_unique<WavSoundSimple>(system, path, name, listener);
    });
    manager.SetFactory(ResourceSound3D, [&system](const std::string& path, const std::string& name,
                                                  ILoadListener* listener) -> std::unique_ptr<Resource> {
        return std::make_unique<WavSound3D>(system, path, name, listener);
    });
}
