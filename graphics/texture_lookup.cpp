// The resource manager's texture getters live here, beside the classes they hand out, so
// that resources/ knows nothing of graphics.
#include "graphics/texture.h"
#include "resources/resource_manager.h"

Texture2D* ResourceManager::GetTexture(const std::string& name) {
    if (!HasFactory(ResourceTexture2D)) RegisterTextureTypes(*this);
    return static_cast<Texture2D*>(Get(ResourceTexture2D, name));
}

TextureCUBE* ResourceManager::GetCubeTexture(const std::string& name) {
    if (!HasFactory(ResourceTextureCube)) RegisterTextureTypes(*this);
    return static_cast<TextureCUBE*>(Get(ResourceTextureCube, name));
}
