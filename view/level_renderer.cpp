#include "view/level_renderer.h"

#include <GL/glew.h>

#include "graphics/camera.h"
#include "graphics/graphics_system.h"
#include "graphics/screen_quad.h"
#include "graphics/texture.h"
#include "level/level.h"
#include "resources/resource_manager.h"

void LevelRenderer::BeginScene(Level& level, float tiltDegrees) {
    graphics.Begin3D();
    // Turned about the viewing axis, so the lights, fixed in eye space, stay put.
    glRotatef(-tiltDegrees, 0, 0, 1);
    ApplyCamera(level.GetCamera());
}

void LevelRenderer::DrawSky(Level&, float) {}

void LevelRenderer::DrawObjects(Level&) {}

void LevelRenderer::DrawParticles(const ParticleSystem&) {}

void LevelRenderer::DrawOverlay(Level& level, float remaining, float textSize) {
    graphics.Begin2D();
    graphics.PrintText(0, 0.95f, 1, 1, 1, 0.05f, "Quota: %i%% Collect: %i", int(level.GetQuota() * 100),
                       level.GetBallCount() - level.GetCollected());
    graphics.PrintText(0.005f, textSize, 1, 1, 1, textSize, "Time: %.1f", remaining > 0 ? remaining : 0.0f);

    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    const Level::Dialogues due = level.DueDialogues();
    // The manager keeps every texture once found, so looking up by name each frame is cheap.
    if (due.goal) DrawDialogue(GetTexture(resources, "UI_dialogue"), 0.1f, 0.1f, 0.4f, 0.2f);
    if (due.controls) DrawDialogue(GetTexture(resources, "UI_dialogue_controls"), 0.5f, 0.7f, 0.4f, 0.2f);
    if (due.win) DrawDialogue(GetTexture(resources, "UI_dialogue_win"), 0.1f, 0.25f, 0.8f, 0.4f);
    if (due.lose) DrawDialogue(GetTexture(resources, "UI_dialogue_lose"), 0.1f, 0.25f, 0.8f, 0.4f);
}

// A dialogue that cannot be found shows nothing in its place.
void LevelRenderer::DrawDialogue(Texture2D* texture, float x, float y, float width, float height) {
    if (!texture || texture->width <= 0 || texture->height <= 0) return;
    graphics.DrawQuad(ScreenQuad::Make(x, y, width, height), InsetTexCoords(texture->width, texture->height), texture,
                      0);
}
