#pragma once
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "resources/resource_manager.h"

// Which plays the game's sound system would start, for play without an audio device: a sound
// with no file, or one that does not load, starts nothing, and neither does a ninth play of a
// sound while eight copies still sound. Each copy sounds for its file's length of play time.
class SoundVoices {
public:
    static constexpr int kInstances = 8;

    explicit SoundVoices(ResourceManager& resources) : resources(resources) {}
    // True when a play at this time (seconds) starts a copy.
    bool Start(ResourceType type, const std::string& name, double now);
    int CountPlaying(ResourceType type, const std::string& name, double now);
    void StopAll(ResourceType type, const std::string& name);

private:
    using Key = std::pair<ResourceType, std::string>;
    std::vector<double>& Endings(const Key& key, double now);

    ResourceManager& resources;
    std::map<Key, std::vector<double>> endings;  // when each sounding copy falls silent
};
