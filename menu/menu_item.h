#pragma once
#include <cstdint>

#include "graphics/screen_quad.h"

class GraphicsSystem;
class Texture2D;

// One picture button of the main menu, placed in the window's outer units.
class MenuItem {
public:
    enum State : int32_t { Normal = 0, Hover = 1, Pressed = 2 };

    MenuItem() = default;
    MenuItem(float x, float y, float width, float height) : x(x), y(y), width(width), height(height) {}
    virtual ~MenuItem() = default;

    // Edges count as inside, so the cursor on a border line still hits the button.
    bool Contains(float px, float py) const { return x <= px && px <= x + width && y <= py && py <= y + height; }
    // The picture for the state; nothing for a state without one or a missing picture.
    void Draw(GraphicsSystem& graphics) const;

    float x = 0, y = 0, width = 0, height = 0;
    Texture2D* normalTexture = nullptr;
    Texture2D* hoverTexture = nullptr;
    Texture2D* pressedTexture = nullptr;
    QuadTexCoords normalCoords{}, hoverCoords{}, pressedCoords{};
    int32_t state = Normal;
};
