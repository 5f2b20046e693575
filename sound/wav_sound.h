#pragma once
#include <string>

#include "sound/sound.h"

class ResourceManager;

// Sounds read from WAV files. A load reads the file, hands its samples to the audio device and
// keeps none in memory; it returns the sample bytes, or -1 (saying why on standard error, once
// until a load succeeds again).
class WavSound3D : public Sound3D {
public:
    using Sound3D::Sound3D;
    int32_t Load(const std::string& path) override;
    void Unload() override { ReleaseAll(); }

private:
    bool reported = false;
};

class WavSoundSimple : public SoundSimple {
public:
    using SoundSimple::SoundSimple;
    int32_t Load(const std::string& path) override;
    void Unload() override { ReleaseAll(); }

private:
    bool reported = false;
};

// Makes the manager's plain and positional sound kinds WAV sounds played on this system.
void RegisterWavSoundTypes(ResourceManager& manager, SoundSystem& system);
