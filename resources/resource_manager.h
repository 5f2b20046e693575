#pragma once
#include <array>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "resources/resource.h"

enum ResourceType { ResourceTexture2D = 0, ResourceTextureCube = 1, ResourceSound = 2, ResourceSound3D = 3 };

// Finds textures and sounds by short name in the media folder, loads each once and shares it,
// and unloads the least recently used ones while the loaded bytes exceed the budget.
class ResourceManager final : public ILoadListener {
public:
    // A manager rooted at baseDirectory with the standard types, extensions and "media" folders.
    // Its picture and sound kinds start as the headless ones (resources/image_resource.h,
    // resources/sound_file.h).
    explicit ResourceManager(std::string baseDirectory);
    ~ResourceManager();
    ResourceManager(const ResourceManager&) = delete;
    ResourceManager& operator=(const ResourceManager&) = delete;

    void AddExtension(ResourceType type, const std::string& extension);
    void AddFolder(ResourceType type, std::string folder);
    // The first candidate path that exists, or "" when none does.
    std::string FindFile(ResourceType type, const std::string& name) const;

    void EvictToBudget();
    // Unloads every loaded resource of the type (all types without one); each loads again on
    // its next use. The graphics system calls this before its context goes away.
    void DiscardAll();
    void DiscardAll(ResourceType type);
    void OnLoaded(Resource& resource) override;
    void OnUnloaded(Resource& resource) override;
    // Milliseconds of the clock's running time plus a sequence of up to ten uses within one
    // millisecond, so uses in one frame are still ordered.
    int32_t UseStamp() override;
    // Where use stamps read the time, in seconds: the engine's frame timer; none reads 0.
    void SetClock(std::function<double()> secondsNow) { clock = std::move(secondsNow); }

    void SetBudget(int32_t bytes) { budget = bytes; }
    int32_t Budget() const { return budget; }
    int32_t Used() const { return used; }
    const std::string& BaseDirectory() const { return baseDirectory; }

    // Makes the object for a type. Graphics registers the texture kinds, sound the sound kinds;
    // tests register fakes. A type without a factory finds nothing. Objects already made keep
    // the kind that made them.
    using Factory = std::function<std::unique_ptr<Resource>(const std::string& path, const std::string& name,
                                                            ILoadListener* listener)>;
    void SetFactory(ResourceType type, Factory factory);
    bool HasFactory(ResourceType type) const { return bool(factories[type]); }
    Resource* Get(ResourceType type, const std::string& name);

private:
    std::array<std::map<std::string, std::unique_ptr<Resource>>, 4> resources;
    std::array<std::vector<std::string>, 4> extensions;
    std::array<std::vector<std::string>, 4> folders;
    std::array<Factory, 4> factories;
    std::string baseDirectory;
    int32_t budget = 256000000;
    int32_t used = 0;
    std::function<double()> clock;
    int32_t lastStamp = 0;
    int32_t stampSequence = 0;
};
