#include "graphics/material.h"

#include <GL/glew.h>

#include "graphics/texture.h"

void OGLMaterial::Bind() {
    glMaterialfv(GL_FRONT, GL_AMBIENT, ambient);
    glMaterialfv(GL_FRONT, GL_DIFFUSE, diffuse);
    glMaterialfv(GL_FRONT, GL_SPECULAR, specular);
    glMaterialfv(GL_FRONT, GL_EMISSION, emission);
    // Lighting takes 0 to 128; anything else leaves the shininess in effect as it is, as GL's
    // own refusal would, but without leaving an error behind for whoever asks next.
    if (shininess >= 0 && shininess <= 128) glMaterialf(GL_FRONT, GL_SHININESS, shininess);
}

void TextureMaterial::Bind() {
    if (texture) texture->Bind();
}

void TextureMaterial::Unbind() {
    if (texture) texture->Unbind();
}
