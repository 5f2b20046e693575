#include <GL/glew.h>

#include <array>
#include <cstdint>
#include <utility>

#include "graphics/gl_context.h"
#include "graphics/texture.h"
#include "graphics/tga_reader.h"

namespace {

struct Face {
    const char* suffix;
    GLenum target;
};

// Read and uploaded in this order.
constexpr std::array<Face, 6> kFaces = {{
    {"_posx.tga", GL_TEXTURE_CUBE_MAP_POSITIVE_X},
    {"_negx.tga", GL_TEXTURE_CUBE_MAP_NEGATIVE_X},
    {"_posy.tga", GL_TEXTURE_CUBE_MAP_POSITIVE_Y},
    {"_negy.tga", GL_TEXTURE_CUBE_MAP_NEGATIVE_Y},
    {"_posz.tga", GL_TEXTURE_CUBE_MAP_POSITIVE_Z},
    {"_negz.tga", GL_TEXTURE_CUBE_MAP_NEGATIVE_Z},
}};

constexpr size_t kSuffixLength = 9;  // "_posx.tga" and friends

}  // namespace

TextureCUBE::TextureCUBE(std::string path, std::string name, ILoadListener* listener)
    : ManagedTexture(std::move(path), std::move(name), listener, GL_TEXTURE_CUBE_MAP) {}

int32_t TextureCUBE::Load(const std::string& path) {
    if (path.size() < kSuffixLength) {
        lastError = path + ": too short to name a cube-map face (expected a name ending in _posx.tga)";
        return -1;
    }
    const std::string base = path.substr(0, path.size() - kSuffixLength);
    const bool gl = GlContextAvailable();

    if (gl) {
        MakeTextureObject();
        glTexParameteri(GL_TEXTURE_CUBE_MAP, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
        glTexParameteri(GL_TEXTURE_CUBE_MAP, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
        glTexParameteri(GL_TEXTURE_CUBE_MAP, GL_TEXTURE_WRAP_R, GL_CLAMP_TO_EDGE);
        glTexParameteri(GL_TEXTURE_CUBE_MAP, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
        glTexParameteri(GL_TEXTURE_CUBE_MAP, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR);
        glTexParameteri(GL_TEXTURE_CUBE_MAP, GL_GENERATE_MIPMAP, GL_TRUE);
    }

    int64_t total = 0;
    for (const Face& face : kFaces) {
        TgaImage image;
        if (!ReadTga(base + face.suffix, image, lastError)) return -1;
        width = image.width;
        height = image.height;
        total += image.PixelBytes();
        if (gl) {
            Upload(face.target, image);
        }
    }
    // Each face fits an int32 but six together may not.
    if (total > INT32_MAX) {
        lastError = path + ": the six faces together are too large to load";
        return -1;
    }
    lastError.clear();
    return static_cast<int32_t>(total);
}
