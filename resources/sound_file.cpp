#include "resources/sound_file.h"

#include <memory>
#include <utility>

#include "resources/resource_manager.h"

bool ReadSoundFile(const std::string& path, bool positional, WavData& wav, std::string& error) {
    WavData read;
    if (!ReadWav(path, read, error)) return false;
    if (positional && read.channels != 1) {
        error = path + ": a positional sound must be mono, this one has " + std::to_string(read.channels) +
                " channels";
        return false;
    }
    wav = std::move(read);
    return true;
}

double SoundSeconds(const WavData& wav) {
    const double bytesPerSecond = double(wav.channels) * (wav.bitsPerSample / 8) * wav.sampleRate;
    return bytesPerSecond > 0 ? double(wav.data.size()) / bytesPerSecond : 0.0;
}

SoundFileResource::SoundFileResource(std::string path, std::string name, ILoadListener* listener, bool positional)
    : Resource(std::move(path), std::move(name), listener), positional(positional) {}

int32_t SoundFileResource::Load(const std::string& path) {
    WavData wav;
    if (!ReadSoundFile(path, positional, wav, lastError)) return -1;
    seconds = SoundSeconds(wav);
    lastError.clear();
    return int32_t(wav.data.size());
}

void RegisterSoundFileTypes(ResourceManager& manager) {
    for (ResourceType type : {ResourceSound, ResourceSound3D}) {
        const bool positional = type == ResourceSound3D;
        manager.SetFactory(type, [positional](const std::string& path, const std::string& name,
                                              ILoadListener* listener) -> std::unique_ptr<Resource> {
            return std::make_unique<SoundFileResource>(path, name, listener, positional);
        });
    }
}
