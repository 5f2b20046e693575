#include "resources/image_resource.h"

#include <array>
#include <memory>
#include <utility>

#include "formats/cube_faces.h"
#include "formats/tga_reader.h"
#include "resources/resource_manager.h"

ImageResource::ImageResource(std::string path, std::string name, ILoadListener* listener, bool cube)
    : Resource(std::move(path), std::move(name), listener), cube(cube) {}

int32_t ImageResource::Load(const std::string& path) {
    if (cube) {
        std::array<TgaImage, 6> faces;
        int32_t bytes = 0;
        if (!ReadTgaCube(path, faces, bytes, lastError)) return -1;
        width = faces[5].width;
        height = faces[5].height;
        lastError.clear();
        return bytes;
    }
    TgaImage image;
    if (!ReadTga(path, image, lastError)) return -1;
    width = image.width;
    height = image.height;
    lastError.clear();
    return image.PixelBytes();
}

void RegisterImageTypes(ResourceManager& manager) {
    for (ResourceType type : {ResourceTexture2D, ResourceTextureCube}) {
        const bool cube = type == ResourceTextureCube;
        manager.SetFactory(type, [cube](const std::string& path, const std::string& name,
                                        ILoadListener* listener) -> std::unique_ptr<Resource> {
            return std::make_unique<ImageResource>(path, name, listener, cube);
        });
    }
}
