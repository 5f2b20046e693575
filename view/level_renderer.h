#pragma once
#include "level/level_view.h"

class GraphicsSystem;
class ResourceManager;
class Texture2D;

// Draws a level in the game window: the turned scene under the level's camera, and over it
// the quota and time lines and the dialogues that are due. The sky, the object models and
// the particles are drawn by the scene renderer that later work adds; until then those
// steps leave the scene as it is.
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
};
