#pragma once
#include <memory>
#include <string>

struct WavData;

// One sound's samples on the audio device. Every instance of the sound plays from it; it goes
// when the last of them does, since OpenAL refuses to delete a buffer a source still holds.
class SampleBuffer {
public:
    // The samples of a PCM file (8-bit unsigned or 16-bit signed, any channel count OpenAL
    // takes: 1 or 2); null with error set when the device refuses them.
    static std::shared_ptr<SampleBuffer> Make(const WavData& wav, const std::string& path, std::string& error);
    ~SampleBuffer();
    SampleBuffer(const SampleBuffer&) = delete;
    SampleBuffer& operator=(const SampleBuffer&) = delete;

    unsigned int Id() const { return id; }

private:
    explicit SampleBuffer(unsigned int id) : id(id) {}
    unsigned int id;
};
