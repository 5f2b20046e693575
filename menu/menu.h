#pragma once
#include <array>
#include <memory>
#include <string>

#include "menu/menu_item.h"

class GraphicsSystem;
class MaxModel;
class ResourceManager;
class SoundSimple;
class Texture2D;

enum MenuChoice {
    ChoiceNothing = 0,
    ChoiceNewGame = 1,
    ChoiceLevelSelect = 3,
    ChoiceOptions = 4,
    ChoiceCredits = 5,
    ChoiceQuit = 6,
};

// What the menu reads of the frame: the running time in seconds, the cursor in the window's
// outer units (0..1 from its top left) and whether the left mouse button is down now.
struct MenuInput {
    double now = 0;
    float cursorX = 0, cursorY = 0;
    bool leftDown = false;
};

// The front screen: a turning ring pattern under the background picture, five picture buttons
// down the left and a spinning ball on the right.
class Menu {
public:
    static constexpr int kButtons = 5;
    struct Button {
        MenuChoice choice;
        float x, y, width, height;
        const char* normal;
        const char* hover;
    };
    static const std::array<Button, kButtons> kLayout;

    // The pictures come from the resource manager; the ball from mediaFolder/ball.3DS (an
    // empty model when that does not load). Graphics may be null where nothing is drawn.
    Menu(ResourceManager& resources, GraphicsSystem* graphics, const std::string& mediaFolder);
    virtual ~Menu();

    // Draws the menu and gives the choice of this frame: a button's choice as soon as the
    // left button is down over it, without waiting for the release.
    virtual MenuChoice Update(const MenuInput& input);
    // The menu as a still backdrop for a dialog drawn over it: every button at rest.
    virtual void DrawBackdrop(double now);

    // Follows the cursor over the buttons, playing the hover sound once on entering each.
    MenuChoice TestButtons(float px, float py, bool leftDown);
    const MenuItem& Item(int index) const { return items[size_t(index)]; }

protected:
    // Only for stand-ins that replace the whole menu.
    Menu();
    virtual void PlayHoverSound();

private:
    void DrawScenery(double now);
    void DrawBall(double now);

    ResourceManager* resources = nullptr;
    GraphicsSystem* graphics = nullptr;
    Texture2D* background = nullptr;
    Texture2D* rings = nullptr;
    std::array<MenuItem, kButtons> items;
    std::unique_ptr<MaxModel> ballModel;
    SoundSimple* hoverSound = nullptr;
};
