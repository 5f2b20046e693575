#include <GL/glew.h>

#include <utility>

#include "graphics/gl_context.h"
#include "graphics/texture.h"
#include "formats/tga_reader.h"

ManagedTexture::ManagedTexture(std::string path, std::string name, ILoadListener* listener, unsigned target)
    : Resource(std::move(path), std::move(name), listener), target(target) {}

// The texture object belongs to the context, which may already be gone at exit.
ManagedTexture::~ManagedTexture() {
    textureName = 0;
    unit = 0;
}

void ManagedTexture::MakeTextureObject() {
    if (textureName != 0) glDeleteTextures(1, &textureName);
    glGenTextures(1, &textureName);
    glBindTexture(target, textureName);
}

void ManagedTexture::Upload(unsigned target, const TgaImage& image) {
    // 24-bit rows of small textures are not 4-byte aligned.
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glTexImage2D(target, 0, GL_RGBA8, image.width, image.height, 0, image.depth == 32 ? GL_BGRA : GL_BGR,
                 GL_UNSIGNED_BYTE, image.Pixels());
}

void ManagedTexture::Unload() {
    if (textureName != 0 && GlContextAvailable()) glDeleteTextures(1, &textureName);
    textureName = 0;
}

void ManagedTexture::Bind() {
    MarkUsed();
    if (textureName == 0) return;
    glActiveTextureARB(GL_TEXTURE0_ARB + unit);
    glEnable(target);
    glBindTexture(target, textureName);
}

void ManagedTexture::Unbind() {
    MarkUsed();
    if (textureName == 0) return;
    glActiveTextureARB(GL_TEXTURE0_ARB + unit);
    glDisable(target);
}
