#include <GL/glew.h>

#include <array>
#include <utility>

#include "graphics/gl_context.h"
#include "graphics/texture.h"
#include "formats/cube_faces.h"

namespace {

// Uploaded in the order of kCubeFaceSuffixes.
constexpr std::array<GLenum, 6> kFaceTargets = {
    GL_TEXTURE_CUBE_MAP_POSITIVE_X, GL_TEXTURE_CUBE_MAP_NEGATIVE_X, GL_TEXTURE_CUBE_MAP_POSITIVE_Y,
    GL_TEXTURE_CUBE_MAP_NEGATIVE_Y, GL_TEXTURE_CUBE_MAP_POSITIVE_Z, GL_TEXTURE_CUBE_MAP_NEGATIVE_Z,
};

}  // namespace

TextureCUBE::TextureCUBE(std::string path, std::string name, ILoadListener* listener)
    : ManagedTexture(std::move(path), std::move(name), listener, GL_TEXTURE_CUBE_MAP) {}

int32_t TextureCUBE::Load(const std::string& path) {
    std::array<TgaImage, 6> faces;
    int32_t bytes = 0;
    if (!ReadTgaCube(path, faces, bytes, lastError)) return -1;
    lastError.clear();
    width = faces[5].width;  // the last face read, -z
    height = faces[5].height;
    if (!GlContextAvailable()) return bytes;

    MakeTextureObject();
    glTexParameteri(GL_TEXTURE_CUBE_MAP, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_CUBE_MAP, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_CUBE_MAP, GL_TEXTURE_WRAP_R, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_CUBE_MAP, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_CUBE_MAP, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR);
    glTexParameteri(GL_TEXTURE_CUBE_MAP, GL_GENERATE_MIPMAP, GL_TRUE);
    for (size_t face = 0; face < faces.size(); ++face) Upload(kFaceTargets[face], faces[face]);
    return bytes;
}
