#include "sound/sound_instance.h"

#include <AL/al.h>

#include <utility>

#include "sound/sample_buffer.h"
#include "sound/sound_volume.h"

std::unique_ptr<SoundInstance> SoundInstance::Make(std::shared_ptr<SampleBuffer> samples) {
    if (!samples) return nullptr;
    alGetError();
    ALuint source = 0;
    alGenSources(1, &source);
    if (alGetError() != AL_NO_ERROR) return nullptr;
    alSourcei(source, AL_BUFFER, ALint(samples->Id()));
    alSourcei(source, AL_LOOPING, AL_FALSE);
    return std::unique_ptr<SoundInstance>(new SoundInstance(source, std::move(samples)));
}

SoundInstance::SoundInstance(unsigned int source, std::shared_ptr<SampleBuffer> samples)
    : source(source), samples(std::move(samples)) {}

// The source lets go of the buffer before this instance's share of it goes.
SoundInstance::~SoundInstance() {
    alSourceStop(source);
    alSourcei(source, AL_BUFFER, 0);
    alDeleteSources(1, &source);
}

std::unique_ptr<SoundInstance> SoundInstance::Duplicate() const { return Make(samples); }

bool SoundInstance::IsPlaying() const {
    ALint state = AL_STOPPED;
    alGetSourcei(source, AL_SOURCE_STATE, &state);
    return state == AL_PLAYING;
}

void SoundInstance::Stop() { alSourceStop(source); }

void SoundInstance::PlaceInWorld(const Vector3& position, const Vector3& velocity, float gain, float minDistance,
                                 float maxDistance) {
    // The inverse-distance law stops falling at the maximum distance; the game wants silence
    // there, so a sound that starts beyond it is muted (sounds do not move once started).
    if (BeyondHearing(position, maxDistance)) gain = 0.0f;
    alSourcei(source, AL_SOURCE_RELATIVE, AL_FALSE);
    alSource3f(source, AL_POSITION, position.x, position.y, position.z);
    alSource3f(source, AL_VELOCITY, velocity.x, velocity.y, velocity.z);
    alSourcef(source, AL_REFERENCE_DISTANCE, minDistance);
    alSourcef(source, AL_MAX_DISTANCE, maxDistance);
    alSourcef(source, AL_ROLLOFF_FACTOR, 1.0f);
    alSourcef(source, AL_GAIN, gain);
}

void SoundInstance::PlaceAtListener(float gain) {
    // Relative to the listener at no distance: no fall-off, no direction.
    alSourcei(source, AL_SOURCE_RELATIVE, AL_TRUE);
    alSource3f(source, AL_POSITION, 0, 0, 0);
    alSource3f(source, AL_VELOCITY, 0, 0, 0);
    alSourcef(source, AL_GAIN, gain);
}

bool SoundInstance::Play() {
    alGetError();
    alSourceRewind(source);
    alSourcePlay(source);
    return alGetError() == AL_NO_ERROR;
}

float SoundInstance::Gain() const {
    ALfloat gain = 0;
    alGetSourcef(source, AL_GAIN, &gain);
    return gain;
}

float SoundInstance::SecondsPlayed() const {
    ALfloat seconds = 0;
    alGetSourcef(source, AL_SEC_OFFSET, &seconds);
    return seconds;
}
