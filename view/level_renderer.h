#pragma once
#include "level/level_view.h"
#include "view/object_looks.h"
#include "view/particle_drawing.h"

class GraphicsSystem;
class ResourceManager;
class Texture2D;

// Draws a level in the game window: the scene turned by the tilt under the level's camera,
// the sky holding still around it, every object in its kind's look, the particles, and over
// it all the quota and time lines and the dialogues that are due.
class LevelRenderer : public LevelView {
public:
    LevelRenderer(GraphicsSystem& graphics, ResourceManager& resources) : graphics(graphics), resources(resources) {}

    void BeginScene(Level& level, float tiltDegrees) override;
    void DrawSky(Level& level, float tiltDegrees) override;
    void DrawObjects(Level& level) override;
    void DrawParticles(const ParticleSystem& particles) override;
    void DrawOverlay(Level& level, float remaining, float textSize) override;

private:
    void DrawDialogue(Texture2D* texture, float x, float y, float width, float height);

    GraphicsSystem& graphics;
    ResourceManager& resources;
    ObjectLooks looks;
    ParticleDrawing particleDrawing;
};
