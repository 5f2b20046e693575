#pragma once
#include <array>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "resources/resource.h"

class Texture2D;
class TextureCUBE;

enum ResourceType { ResourceTexture2D = 0, ResourceTextureCube = 1, ResourceSound = 2, ResourceSound3D = 3 };

// Finds textures and sounds by short name in the media folder, loads each once and shares it,
// and unloads the least recently used ones while the loaded bytes exceed the budget.
class ResourceManager : public ILoadListener {
public:
    static ResourceManager& GetInstance();

    // A manager rooted at baseDirectory with the standard types, extensions and "media" folders.
    explicit ResourceManager(std::string baseDirectory);
    ~ResourceManager();

    // Defined beside the texture classes; they register the texture kinds on first use.
    Texture2D* GetTexture(const std::string& name);
    TextureCUBE* GetCubeTexture(const std::string& name);

    void AddExtension(ResourceType type, const std::string& extension);
    void AddFolder(ResourceType type, std::string folder);
    // The first candidate path that exists, or "" when none does.
    std::string FindFile(ResourceType type, const std::string& name) const;

    void EvictToBudget();
    void OnLoaded(Resource& resource) override;
    void OnUnloaded(Resource& resource) override;

    void SetBudget(int32_t bytes) { budget = bytes; }
    int32_t Budget() const { return budget; }
    int32_t Used() const { return used; }
    const std::string& BaseDirectory() const { return baseDirectory; }

    // Makes the object for a type. Graphics registers the texture kinds, sound the sound kinds;
    // tests register fakes. A type without a factory finds nothing.
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
};
