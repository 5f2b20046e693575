#pragma once

// Screen units: in 2D mode x runs 0 (left) to 1 (right), y 0 (top) to 1 (bottom).
struct ScreenPoint {
    float x, y;
};

// Four corners: top left, bottom left, bottom right, top right.
struct ScreenQuad {
    ScreenPoint corners[4];
    static ScreenQuad Make(float x, float y, float width, float height) {
        return {{{x, y}, {x, y + height}, {x + width, y + height}, {x + width, y}}};
    }
};

// Texture coordinates for the four corners of a ScreenQuad, in the same order.
struct QuadTexCoords {
    ScreenPoint coords[4];
};

// Coordinates inset by half a texel of a width x height texture. The quad's top edge takes t
// near 1, the last row uploaded, which is the top row of a bottom-up TGA.
inline QuadTexCoords InsetTexCoords(int width, int height) {
    float u = 0.5f / float(width), v = 0.5f / float(height);
    return {{{u, 1 - v}, {u, v}, {1 - u, v}, {1 - u, 1 - v}}};
}
