#include "level/sound_voices.h"

#include <algorithm>

#include "resources/sound_file.h"

std::vector<double>& SoundVoices::Endings(const Key& key, double now) {
    std::vector<double>& list = endings[key];
    std::erase_if(list, [now](double end) { return end <= now; });
    return list;
}

bool SoundVoices::Start(ResourceType type, const std::string& name, double now) {
    auto* sound = dynamic_cast<SoundFileResource*>(resources.Get(type, name));
    if (!sound) return false;
    sound->MarkUsed();
    if (!sound->IsLoaded()) return false;
    std::vector<double>& playing = Endings({type, name}, now);
    if (int(playing.size()) >= kInstances) return false;
    playing.push_back(now + sound->seconds);
    return true;
}

int SoundVoices::CountPlaying(ResourceType type, const std::string& name, double now) {
    return int(Endings({type, name}, now).size());
}

void SoundVoices::StopAll(ResourceType type, const std::string& name) { endings.erase({type, name}); }
