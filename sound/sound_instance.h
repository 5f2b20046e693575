#pragma once
#include <cstdint>
#include <memory>

#include "core/vector3.h"

class SampleBuffer;

// One playable copy of a sound: an OpenAL source on the sound's shared samples.
class SoundInstance {
public:
    // Null when the device has no source left.
    static std::unique_ptr<SoundInstance> Make(std::shared_ptr<SampleBuffer> samples);
    ~SoundInstance();
    SoundInstance(const SoundInstance&) = delete;
    SoundInstance& operator=(const SoundInstance&) = delete;

    // Another copy sharing these samples, or null.
    std::unique_ptr<SoundInstance> Duplicate() const;
    bool IsPlaying() const;
    void Stop();

    // Sets where the instance sounds from, heard by the listener at the origin: full gain within
    // minDistance, falling as minDistance / distance beyond it, silent beyond maxDistance.
    void PlaceInWorld(const Vector3& position, const Vector3& velocity, float gain, float minDistance,
                      float maxDistance);
    // Sets it to sound as recorded, at the listener itself.
    void PlaceAtListener(float gain);
    // Plays once from the start; false when the device refuses.
    bool Play();
    float Gain() const;
    // How far into its samples it has played.
    float SecondsPlayed() const;

    uint32_t id = 0;  // given each time the instance is handed out; 0 is none

private:
    SoundInstance(unsigned int source, std::shared_ptr<SampleBuffer> samples);
    unsigned int source;
    std::shared_ptr<SampleBuffer> samples;
};
