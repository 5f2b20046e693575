#pragma once
#include "graphics/screen_quad.h"

class ResourceManager;
class Window;
class Texture;
class Texture2D;

// Owns the OpenGL context of the game window and the fixed rendering state: two white
// directional lights, the 3D and 2D projections, screen quads and bitmap-font text.
class GraphicsSystem {
public:
    virtual ~GraphicsSystem();
    // Makes the context, loads the GL entry points, makes the manager's pictures textures and
    // loads the "font" texture from it; false on failure.
    virtual bool Init(Window* window, ResourceManager& resources);
    // Unloads every texture while the context still exists (they load again on their next
    // use in a new context), then destroys the context.
    virtual void Shutdown();

    void BeginFrame();
    void EndFrame();
    void Begin3D();
    void Begin2D();
    void DrawQuad(const ScreenQuad& quad, const QuadTexCoords& coords, Texture* texture, float z);
    // Formats into the 1024-byte text buffer (longer text is cut) and draws it with a black
    // drop shadow 5 % of size right of and below it. A null format prints nothing.
    void PrintText(float x, float y, float red, float green, float blue, float size, const char* format, ...)
        __attribute__((format(printf, 8, 9)));

    // The same for plain text (no format), with each glyph advancing `advance` sizes.
    void PrintPlain(float x, float y, float red, float green, float blue, float size, float advance,
                    const char* text);

    // Draws text glyph by glyph at the current colour: each glyph stands on line y and reaches
    // up to y - size and the next starts `advance` sizes further; a line break starts again at
    // x one size lower.
    void DrawText(float x, float y, float size, const char* text, float advance = 0.9f);

private:
    void SetRenderingState();

    Window* window = nullptr;
    ResourceManager* resources = nullptr;
    bool hasContext = false;
    Texture2D* font = nullptr;
};
