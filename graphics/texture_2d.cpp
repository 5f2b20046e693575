#include <GL/glew.h>

#include <utility>

#include "graphics/gl_context.h"
#include "graphics/texture.h"
#include "formats/tga_reader.h"

Texture2D::Texture2D(std::string path, std::string name, ILoadListener* listener)
    : ManagedTexture(std::move(path), std::move(name), listener, GL_TEXTURE_2D) {}

int32_t Texture2D::Load(const std::string& path) {
    TgaImage image;
    if (!ReadTga(path, image, lastError)) return -1;
    lastError.clear();
    width = image.width;
    height = image.height;
    if (!GlContextAvailable()) return image.PixelBytes();

    MakeTextureObject();
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_GENERATE_MIPMAP, GL_TRUE);
    Upload(GL_TEXTURE_2D, image);
    return image.PixelBytes();
}
