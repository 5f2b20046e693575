#pragma once
#include <cstdint>
#include <memory>
#include <string>

class AudioOutput;
class ResourceManager;

// The audio output and its listener, fixed at the world's origin. Until Startup it has no
// output; sounds are then the resource manager's headless kinds and make no noise.
class SoundSystem {
public:
    static constexpr float kMinDistance = 10.0f;
    static constexpr float kMaxDistance = 500.0f;

    SoundSystem();
    // Releases every sound of the manager before the output closes.
    ~SoundSystem();
    SoundSystem(const SoundSystem&) = delete;
    SoundSystem& operator=(const SoundSystem&) = delete;

    // Opens the audio output (a silent one when the machine has no sound) and makes the
    // manager's sounds play on it. False only when no output at all can be had. Call it before
    // the manager is asked for any sound (those already made stay silent); the manager must
    // outlive this system.
    bool Startup(ResourceManager& resources);
    // Settings made after Defer reach the mixer together at the next Commit.
    void Defer();
    void Commit();
    // Lets real time pass for a silent output, which mixes only when told to.
    void Advance(double seconds);

    bool IsStarted() const { return output != nullptr; }
    bool IsSilent() const;
    float MinDistance() const { return minDistance; }
    float MaxDistance() const { return maxDistance; }
    // Ids count from 1 across every sound; 0 means none was started.
    uint32_t NextInstanceId() { return ++lastInstanceId; }

private:
    std::unique_ptr<AudioOutput> output;
    ResourceManager* resources = nullptr;
    float minDistance = 0.0f;
    float maxDistance = 0.0f;
    uint32_t lastInstanceId = 0;
    bool deferring = false;
};
