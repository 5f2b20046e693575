#include "menu/menu_item.h"

#include "graphics/graphics_system.h"
#include "graphics/texture.h"

void MenuItem::Draw(GraphicsSystem& graphics) const {
    Texture2D* texture = nullptr;
    const QuadTexCoords* coords = nullptr;
    switch (state) {
    case Normal: texture = normalTexture, coords = &normalCoords; break;
    case Hover: texture = hoverTexture, coords = &hoverCoords; break;
    case Pressed: texture = pressedTexture, coords = &pressedCoords; break;
    default: return;
    }
    // Without its picture the button would be a white block; better to leave the spot empty.
    if (!texture) return;
    graphics.DrawQuad(ScreenQuad::Make(x, y, width, height), *coords, texture, 0);
}
