#include <memory>

#include "graphics/texture.h"
#include "resources/resource_manager.h"

void RegisterTextureTypes(ResourceManager& manager) {
    manager.SetFactory(ResourceTexture2D, [](const std::string& path, const std::string& name,
                                             ILoadListener* listener) -> std::unique_ptr<Resource> {
        return std::make_unique<Texture2D>(path, name, listener);
    });
    manager.SetFactory(ResourceTextureCube, [](const std::string& path, const std::string& name,
                                               ILoadListener* listener) -> std::unique_ptr<Resource> {
        return std::make_unique<TextureCUBE>(path, name, listener);
    });
}

Texture2D* GetTexture(ResourceManager& manager, const std::string& name) {
    return dynamic_cast<Texture2D*>(manager.Get(ResourceTexture2D, name));
}

TextureCUBE* GetCubeTexture(ResourceManager& manager, const std::string& name) {
    return dynamic_cast<TextureCUBE*>(manager.Get(ResourceTextureCube, name));
}
