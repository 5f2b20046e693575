#include "resources/resource_manager.h"

#include <cmath>
#include <filesystem>
#include <system_error>

#include "resources/image_resource.h"
#include "resources/path_case.h"
#include "resources/sound_file.h"

namespace {

// Candidates this long cannot be opened on Linux; they are skipped rather than cut.
constexpr size_t kMaxPathLength = 4095;

}  // namespace

ResourceManager::ResourceManager(std::string baseDirectory) : baseDirectory(std::move(baseDirectory)) {
    AddExtension(ResourceTexture2D, ".tga");
    AddExtension(ResourceTextureCube, "_posx.tga");
    AddExtension(ResourceSound, ".wav");
    AddExtension(ResourceSound3D, ".wav");
    for (int type = 0; type < 4; ++type) AddFolder(ResourceType(type), "media");
    RegisterImageTypes(*this);
    RegisterSoundFileTypes(*this);
}

ResourceManager::~ResourceManager() = default;

void ResourceManager::AddExtension(ResourceType type, const std::string& extension) {
    extensions[type].push_back(extension);
}

void ResourceManager::AddFolder(ResourceType type, std::string folder) {
    // An empty folder is the base directory itself, not the file-system root.
    if (!folder.empty() && folder.back() != '/' && folder.back() != '\\') folder += '/';
    folders[type].push_back(std::move(folder));
}

void ResourceManager::SetFactory(ResourceType type, Factory factory) { factories[type] = std::move(factory); }

std::string ResourceManager::FindFile(ResourceType type, const std::string& name) const {
    for (const std::string& folder : folders[type]) {
        std::filesystem::path absolute = std::filesystem::path(folder).is_absolute()
                                             ? std::filesystem::path(folder)
                                             : std::filesystem::path(baseDirectory) / folder;
        for (const std::string& extension : extensions[type]) {
            std::string candidate = absolute.string() + name + extension;
            if (candidate.size() > kMaxPathLength) continue;
            std::string found = ResolvePathCase(candidate);
            if (!found.empty() && std::filesystem::is_regular_file(found)) return found;
        }
    }
    return "";
}

Resource* ResourceManager::Get(ResourceType type, const std::string& name) {
    auto& map = resources[type];
    if (auto it = map.find(name); it != map.end()) return it->second.get();
    if (!factories[type]) return nullptr;
    std::string path = FindFile(type, name);
    if (path.empty()) return nullptr;
    std::unique_ptr<Resource> made = factories[type](path, name, this);
    if (!made) return nullptr;
    Resource* resource = map.emplace(name, std::move(made)).first->second.get();
    resource->EnsureLoaded();
    return resource;
}

void ResourceManager::EvictToBudget() {
    while (used > budget) {
        Resource* victim = nullptr;
        for (auto& map : resources) {
            for (auto& [name, resource] : map) {
                if (resource->IsLoaded() && (!victim || resource->LastUse() < victim->LastUse()))
                    victim = resource.get();
            }
        }
        if (!victim) return;
        victim->Discard();
    }
}

void ResourceManager::DiscardAll() {
    for (int type = 0; type < 4; ++type) DiscardAll(ResourceType(type));
}

void ResourceManager::DiscardAll(ResourceType type) {
    for (auto& [name, resource] : resources[type]) resource->Discard();
}

void ResourceManager::OnLoaded(Resource& resource) {
    used += resource.Size();
    EvictToBudget();
}

void ResourceManager::OnUnloaded(Resource& resource) { used -= resource.Size(); }

int32_t ResourceManager::UseStamp() {
    stampSequence = (stampSequence + 1) % 10;
    const auto now = static_cast<int32_t>(std::trunc((clock ? clock() : 0.0) * 1000.0));
    if (now != lastStamp) {
        lastStamp = now;
        stampSequence = 0;
    }
    return now + stampSequence;
}
