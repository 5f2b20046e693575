#include "menu/menu.h"

#include <GL/glew.h>

#include <cmath>

#include "formats/max_model.h"
#include "graphics/graphics_system.h"
#include "graphics/material.h"
#include "graphics/model_drawing.h"
#include "graphics/texture.h"
#include "resources/resource_manager.h"
#include "sound/sound.h"

namespace {

constexpr int32_t kHoverVolume = -2000;

// The half-texel inset for the texture's size; the picture loads first if it has to.
QuadTexCoords CoordsFor(Texture2D* texture) {
    if (!texture || !texture->EnsureLoaded()) return InsetTexCoords(1, 1);
    return InsetTexCoords(texture->width, texture->height);
}

}  // namespace

// The rows step down by 0.17 and to the right; the first button is narrower than the rest.
const std::array<Menu::Button, Menu::kButtons> Menu::kLayout = {{
    {ChoiceNewGame, 0.0f, 0.051f, 0.25f, 0.15f, "UI_newgame", "UI_newgame_hover"},
    {ChoiceLevelSelect, -0.025f, 0.221f, 0.35f, 0.15f, "UI_levelselect", "UI_levelselect_hover"},
    {ChoiceOptions, 0.05f, 0.391f, 0.35f, 0.15f, "UI_options", "UI_options_hover"},
    {ChoiceCredits, 0.15f, 0.561f, 0.35f, 0.15f, "UI_credits", "UI_credits_hover"},
    {ChoiceQuit, 0.3f, 0.731f, 0.35f, 0.15f, "UI_quit", "UI_quit_hover"},
}};

Menu::Menu(ResourceManager& resourceManager, GraphicsSystem* graphicsSystem, const std::string& mediaFolder)
    : resources(&resourceManager), graphics(graphicsSystem), ballModel(std::make_unique<MaxModel>()) {
    background = GetTexture(resourceManager, "UI_back");
    rings = GetTexture(resourceManager, "UI_bg_rings");
    for (size_t i = 0; i < items.size(); ++i) {
        const Button& button = kLayout[i];
        MenuItem& item = items[i];
        item = MenuItem(button.x, button.y, button.width, button.height);
        item.normalTexture = GetTexture(resourceManager, button.normal);
        item.hoverTexture = GetTexture(resourceManager, button.hover);
        item.pressedTexture = item.normalTexture;
        item.normalCoords = item.hoverCoords = item.pressedCoords = CoordsFor(item.normalTexture);
    }
    if (!ballModel->Load(mediaFolder + "/ball.3DS")) ballModel = std::make_unique<MaxModel>();
}

Menu::Menu() = default;
Menu::~Menu() = default;

MenuChoice Menu::TestButtons(float px, float py, bool leftDown) {
    for (size_t i = 0; i < items.size(); ++i) {
        MenuItem& item = items[i];
        if (!item.Contains(px, py)) {
            item.state = MenuItem::Normal;
            continue;
        }
        if (leftDown) return kLayout[i].choice;
        if (item.state != MenuItem::Hover) PlayHoverSound();
        item.state = MenuItem::Hover;
    }
    return ChoiceNothing;
}

// Looked up again each time, so a sound evicted meanwhile loads back.
void Menu::PlayHoverSound() {
    if (!resources) return;
    hoverSound = dynamic_cast<SoundSimple*>(resources->Get(ResourceSound, "claves"));
    if (hoverSound) hoverSound->Play(kHoverVolume);
}

MenuChoice Menu::Update(const MenuInput& input) {
    if (!graphics) return TestButtons(input.cursorX, input.cursorY, input.leftDown);
    DrawScenery(input.now);
    const MenuChoice choice = TestButtons(input.cursorX, input.cursorY, input.leftDown);
    if (choice != ChoiceNothing) return choice;
    for (const MenuItem& item : items) item.Draw(*graphics);
    DrawBall(input.now);
    return ChoiceNothing;
}

void Menu::DrawBackdrop(double now) {
    if (!graphics) return;
    DrawScenery(now);
    for (MenuItem& item : items) {
        item.state = MenuItem::Normal;
        item.Draw(*graphics);
    }
    DrawBall(now);
}

void Menu::DrawScenery(double now) {
    graphics->Begin2D();
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);

    // The ring picture turns ten degrees a second about the point (0.71, 0.56).
    glPushMatrix();
    glTranslatef(0.71f, 0.56f, 0);
    glRotatef(float(std::fmod(now * 10.0, 360.0)), 0, 0, 1);
    const QuadTexCoords whole{{{0, 0}, {0, 1}, {1, 1}, {1, 0}}};
    if (rings) graphics->DrawQuad(ScreenQuad::Make(-1, -1, 2, 2), whole, rings, -0.95f);
    glPopMatrix();

    if (background) graphics->DrawQuad(ScreenQuad::Make(0, 0, 1, 1), CoordsFor(background), background, -0.9f);
}

void Menu::DrawBall(double now) {
    glColor3f(1, 1, 1);
    glDisable(GL_BLEND);
    graphics->Begin3D();
    glPushMatrix();
    glTranslatef(1.0f, -0.28f, -5.5f);
    glRotatef(float(std::fmod(now * 5.0, 360.0)), 0, -1, 1);
    // White, whatever material a level bound last.
    static OGLMaterial white = [] {
        OGLMaterial material;
        material.SetAmbient(0.2f, 0.2f, 0.22f);
        material.SetDiffuse(0.8f, 0.8f, 0.82f);
        material.SetSpecular(0.5f, 0.5f, 0.5f);
        material.shininess = 30;
        return material;
    }();
    DrawModel(*ballModel, &white);
    glPopMatrix();
}
