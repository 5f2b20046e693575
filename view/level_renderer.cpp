#include "view/level_renderer.h"

#include <GL/glew.h>

#include "graphics/camera.h"
#include "graphics/graphics_system.h"
#include "graphics/screen_quad.h"
#include "graphics/texture.h"
#include "level/level.h"
#include "resources/resource_manager.h"
#include "view/object_drawing.h"
#include "view/sky_drawing.h"

void LevelRenderer::BeginScene(Level& level, float tiltDegrees) {
    graphics.Begin3D();
    // Turned about the viewing axis, so the lights, fixed in eye space, stay put.
    glRotatef(-tiltDegrees, 0, 0, 1);
    ApplyCamera(level.GetCamera());
}

// Around the camera and turned back by the tilt, so it stays still on screen.
void LevelRenderer::DrawSky(Level& level, float tiltDegrees) {
    TextureCUBE* sky = GetCubeTexture(resources, "sky");
    if (!sky) return;
    glDisable(GL_LIGHTING);
    glPushMatrix();
    const Vector3 eye = level.GetCamera().GetPosition();
    glTranslatef(eye.x, eye.y, 0);
    glRotatef(tiltDegrees, 0, 0, 1);
    DrawSkyCube(*sky);
    glPopMatrix();
    glEnable(GL_LIGHTING);
}

void LevelRenderer::DrawObjects(Level& level) {
    looks.TrackTexture().texture = GetTexture(resources, "intro_t");
    const float seconds = float(level.CurrentInput().now);
    // Every model is closed, so faces turned away are never seen.
    glEnable(GL_CULL_FACE);
    glCullFace(GL_BACK);
    // Indexed: drawing never changes the list, but the level's own loop is by index too.
    const auto& objects = level.GetObjects();
    for (size_t i = 0; i < objects.size(); ++i) DrawObject(*objects[i], level, looks, seconds);
    glDisable(GL_CULL_FACE);
}

void LevelRenderer::DrawParticles(const ParticleSystem& particles) {
    particleDrawing.Draw(particles, GetTexture(resources, "smoke"));
}

void LevelRenderer::DrawOverlay(Level& level, float remaining, float textSize) {
    graphics.Begin2D();
    graphics.PrintText(0, 0.95f, 1, 1, 1, 0.05f, "Quota: %i%% Collect: %i", level.QuotaPercent(),
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
