#include "graphics/graphics_system.h"

#include <GL/glew.h>
#include <GL/glu.h>

#include <cstdarg>
#include <cstdio>

#include "graphics/gl_context.h"
#include "graphics/texture.h"
#include "graphics/window.h"
#include "resources/resource_manager.h"

namespace {

char textBuffer[1024];

void SetLight(GLenum light, const GLfloat position[4]) {
    const GLfloat ambient[] = {0.4f, 0.4f, 0.4f, 1.0f};
    const GLfloat white[] = {1.0f, 1.0f, 1.0f, 1.0f};
    glEnable(light);
    glLightfv(light, GL_POSITION, position);
    glLightfv(light, GL_AMBIENT, ambient);
    glLightfv(light, GL_DIFFUSE, white);
    glLightfv(light, GL_SPECULAR, white);
}

}  // namespace

GraphicsSystem::~GraphicsSystem() { Shutdown(); }

bool GraphicsSystem::Init(Window* gameWindow, ResourceManager& manager) {
    window = gameWindow;
    resources = &manager;
    if (!window || !window->Handle() || !window->Handle()->CreateGLContext()) return false;
    hasContext = true;
    window->Handle()->MakeGLCurrent(true);
    SetRenderingState();
    // Without a GLX display (SDL's offscreen driver) GLEW reports 4 but the entry points it
    // needs come through EGL and work; only other errors are fatal.
    GLenum status = glewInit();
    if (status != GLEW_OK && status != GLEW_ERROR_NO_GLX_DISPLAY) {
        std::fprintf(stderr, "Cannot load the OpenGL entry points: %s\n",
                     reinterpret_cast<const char*>(glewGetErrorString(status)));
        return false;
    }
    SetGlContextAvailable(true);
    RegisterTextureTypes(manager);
    font = GetTexture(manager, "font");
    if (!font) {
        std::fprintf(stderr, "The texture \"font\" was not found in %s/media\n", manager.BaseDirectory().c_str());
        return false;
    }
    font->EnsureLoaded();
    return true;
}

void GraphicsSystem::Shutdown() {
    if (!hasContext) return;
    if (resources) {
        resources->DiscardAll(ResourceTexture2D);
        resources->DiscardAll(ResourceTextureCube);
    }
    SetGlContextAvailable(false);
    if (window && window->Handle()) window->Handle()->DestroyGLContext();
    hasContext = false;
}

// The whole fixed state, set again every frame so that nothing drawn needs to restore it.
void GraphicsSystem::SetRenderingState() {
    glEnable(GL_DEPTH_TEST);
    glDisable(GL_CULL_FACE);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glEnable(GL_LIGHTING);
    const GLfloat light0[] = {-100.0f, 100.0f, -100.0f, 0.0f};
    const GLfloat light1[] = {-100.0f, 100.0f, 100.0f, 0.0f};
    SetLight(GL_LIGHT0, light0);
    SetLight(GL_LIGHT1, light1);
    glColor3f(0, 0, 0);
    glEnable(GL_TEXTURE_2D);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    gluPerspective(45.0, 1.0, 1.0, 5000.0);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glBindTexture(GL_TEXTURE_2D, 0);
    glHint(GL_PERSPECTIVE_CORRECTION_HINT, GL_NICEST);
    glClearColor(0, 1, 0, 1);
}

// The context stays current from Init to Shutdown: this game has one window and one context,
// and resources may load outside a frame.
void GraphicsSystem::BeginFrame() {
    if (!hasContext) return;
    SetRenderingState();
    int width = 0, height = 0;
    window->Handle()->ClientSize(width, height);
    glViewport(0, 0, width, height);
    SetRenderingState();
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
}

void GraphicsSystem::EndFrame() {
    if (!hasContext) return;
    glFlush();
    window->Handle()->SwapBuffers();
}

void GraphicsSystem::Begin3D() {
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    gluPerspective(45.0, 1.0, 1.0, 10000.0);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glEnable(GL_DEPTH_TEST);
    glEnable(GL_LIGHTING);
}

void GraphicsSystem::Begin2D() {
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(0, 1, 1, 0, -1, 1);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_LIGHTING);
}

void GraphicsSystem::DrawQuad(const ScreenQuad& quad, const QuadTexCoords& coords, Texture* texture, float z) {
    if (texture) texture->Bind();
    glColor3f(1, 1, 1);
    glBegin(GL_QUADS);
    glNormal3f(0, 0, 1);
    for (int i = 0; i < 4; ++i) {
        glTexCoord2f(coords.coords[i].x, coords.coords[i].y);
        glVertex3f(quad.corners[i].x, quad.corners[i].y, z);
    }
    glEnd();
    if (texture) texture->Unbind();
}

void GraphicsSystem::PrintText(float x, float y, float red, float green, float blue, float size,
                               const char* format, ...) {
    if (!format) return;
    va_list args;
    va_start(args, format);
    std::vsnprintf(textBuffer, sizeof textBuffer, format, args);
    va_end(args);
    PrintPlain(x, y, red, green, blue, size, 0.9f, textBuffer);
}

void GraphicsSystem::PrintPlain(float x, float y, float red, float green, float blue, float size, float advance,
                                const char* text) {
    if (font) font->Bind();
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glTexEnvf(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    glColor3f(0, 0, 0);
    DrawText(x + 0.05f * size, y + 0.05f * size, size, text, advance);
    glColor3f(red, green, blue);
    DrawText(x, y, size, text, advance);
    if (font) font->Unbind();
    glColor3f(1, 1, 1);
    glDisable(GL_BLEND);
}

void GraphicsSystem::DrawText(float x, float y, float size, const char* text, float advance) {
    const float lineStart = x;
    const float cell = 1.0f / 16.0f;
    for (const char* p = text; *p; ++p) {
        auto c = static_cast<signed char>(*p);
        if (c == '\n') {
            x = lineStart;
            y += size;
            continue;
        }
        // Bytes above 127 are negative here and have no cell in the 16 x 16 grid.
        if (c >= 0) {
            float u = float(c % 16) * cell, v = float(c / 16) * cell;
            glBegin(GL_QUADS);
            glNormal3f(0, 0, 1);
            glTexCoord2f(u, v + cell);
            glVertex3f(x, y, 0);
            glTexCoord2f(u + cell, v + cell);
            glVertex3f(x + size, y, 0);
            glTexCoord2f(u + cell, v);
            glVertex3f(x + size, y - size, 0);
            glTexCoord2f(u, v);
            glVertex3f(x, y - size, 0);
            glEnd();
        }
        x += advance * size;
    }
}
