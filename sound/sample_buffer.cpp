#include "sound/sample_buffer.h"

#include <AL/al.h>

#include "formats/wav_reader.h"

std::shared_ptr<SampleBuffer> SampleBuffer::Make(const WavData& wav, const std::string& path, std::string& error) {
    ALenum format = 0;
    if (wav.channels == 1) format = wav.bitsPerSample == 8 ? AL_FORMAT_MONO8 : AL_FORMAT_MONO16;
    if (wav.channels == 2) format = wav.bitsPerSample == 8 ? AL_FORMAT_STEREO8 : AL_FORMAT_STEREO16;
    if (format == 0) {
        error = path + ": the game plays mono or stereo sounds, this one has " + std::to_string(wav.channels) +
                " channels";
        return nullptr;
    }
    // OpenAL takes whole sample frames only; a stray last byte is dropped.
    const size_t frameBytes = size_t(wav.channels) * (wav.bitsPerSample / 8);
    const size_t bytes = wav.data.size() / frameBytes * frameBytes;

    alGetError();
    ALuint id = 0;
    alGenBuffers(1, &id);
    if (alGetError() != AL_NO_ERROR) {
        error = path + ": the audio device has no room for another sound";
        return nullptr;
    }
    alBufferData(id, format, wav.data.data(), ALsizei(bytes), ALsizei(wav.sampleRate));
    if (alGetError() != AL_NO_ERROR) {
        alDeleteBuffers(1, &id);
        error = path + ": the audio device refused its samples";
        return nullptr;
    }
    return std::shared_ptr<SampleBuffer>(new SampleBuffer(id));
}

SampleBuffer::~SampleBuffer() { alDeleteBuffers(1, &id); }
