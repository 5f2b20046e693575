#pragma once
#include <cstdint>
#include <string>

#include "formats/wav_reader.h"
#include "resources/resource.h"

// Reads a sound file for one of the two sound kinds: a positional sound must be mono, since
// a stereo recording has no single place to come from. On failure error is "PATH: reason".
bool ReadSoundFile(const std::string& path, bool positional, WavData& wav, std::string& error);

// How long the sound plays, in seconds.
double SoundSeconds(const WavData& wav);

// The sound kinds as headless play uses them: a load reads and checks the file exactly as the
// sound system would and keeps only its length. The sound system replaces these kinds with
// sounds that also hand their samples to the audio device.
class SoundFileResource : public Resource {
public:
    SoundFileResource(std::string path, std::string name, ILoadListener* listener, bool positional);
    int32_t Load(const std::string& path) override;
    void Unload() override {}

    double seconds = 0;
    std::string lastError;  // why the last Load failed, naming the file

private:
    bool positional;
};

class ResourceManager;
// Registers SoundFileResource as the manager's plain and positional sound kinds.
void RegisterSoundFileTypes(ResourceManager& manager);
