#pragma once
#include <vector>

class ParticleSystem;
class Texture;

// Draws every live particle as a square in the level's plane, textured with its frame of the
// 4 x 4 atlas, added to the picture without writing depth, in one batch from one array.
class ParticleDrawing {
public:
    void Draw(const ParticleSystem& particles, Texture* atlas);

private:
    // Kept between frames, so drawing allocates nothing once the arrays have grown.
    std::vector<float> positions, coords, colours;
};
