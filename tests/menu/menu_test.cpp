// The menu's buttons without a window: where they are hit, when the hover click sounds, and
// that holding the left button over one chooses it at once.
#include <gtest/gtest.h>

#include "menu/menu.h"
#include "resources/resource_manager.h"
#include "tests/support/files.h"

namespace {

class CountingMenu : public Menu {
public:
    using Menu::Menu;
    void PlayHoverSound() override { ++hoverSounds; }
    int hoverSounds = 0;
};

class MenuTest : public ::testing::Test {
protected:
    TempDir folder;
    ResourceManager resources{folder.File("")};
    // No pictures and no ball: the buttons still stand where they belong.
    CountingMenu menu{resources, nullptr, folder.File("Media")};
};

TEST_F(MenuTest, ButtonsCountTheirEdgesAsInsideAndNothingBeyond) {
    const MenuItem& newGame = menu.Item(0);  // 0, 0.051, 0.25 x 0.15
    EXPECT_TRUE(newGame.Contains(0.0f, 0.051f));
    EXPECT_TRUE(newGame.Contains(0.25f, 0.201f));
    EXPECT_FALSE(newGame.Contains(0.2501f, 0.1f));
    EXPECT_FALSE(newGame.Contains(0.1f, 0.2011f));
    EXPECT_FALSE(newGame.Contains(-0.0001f, 0.1f));

    const MenuItem& levelSelect = menu.Item(1);  // starts left of the window's edge
    EXPECT_TRUE(levelSelect.Contains(-0.02f, 0.3f));
    EXPECT_FALSE(levelSelect.Contains(0.2f, 0.21f)) << "the gap between rows belongs to no button";
}

TEST_F(MenuTest, HoverSoundsOncePerButtonEntered) {
    EXPECT_EQ(menu.TestButtons(0.1f, 0.1f, false), ChoiceNothing);
    EXPECT_EQ(menu.Item(0).state, MenuItem::Hover);
    menu.TestButtons(0.12f, 0.1f, false);
    menu.TestButtons(0.2f, 0.15f, false);
    EXPECT_EQ(menu.hoverSounds, 1) << "resting on a button sounds once";

    menu.TestButtons(0.1f, 0.3f, false);  // straight down onto Level Select
    EXPECT_EQ(menu.hoverSounds, 2);
    EXPECT_EQ(menu.Item(0).state, MenuItem::Normal);
    EXPECT_EQ(menu.Item(1).state, MenuItem::Hover);

    menu.TestButtons(0.9f, 0.1f, false);  // off every button
    for (int i = 0; i < Menu::kButtons; ++i) EXPECT_EQ(menu.Item(i).state, MenuItem::Normal);
    menu.TestButtons(0.1f, 0.3f, false);
    EXPECT_EQ(menu.hoverSounds, 3) << "coming back is a new entry";
}

TEST_F(MenuTest, TheLeftButtonDownOverAButtonChoosesItAtOnce) {
    const MenuChoice expected[] = {ChoiceNewGame, ChoiceLevelSelect, ChoiceOptions, ChoiceCredits, ChoiceQuit};
    for (int i = 0; i < Menu::kButtons; ++i) {
        const MenuItem& item = menu.Item(i);
        // Dragged in with the button already held: no hover first, and no click sound.
        EXPECT_EQ(menu.TestButtons(item.x + item.width / 2, item.y + item.height / 2, true), expected[i]) << i;
    }
    EXPECT_EQ(menu.hoverSounds, 0);
    EXPECT_EQ(menu.TestButtons(0.9f, 0.1f, true), ChoiceNothing) << "a press beside the buttons chooses nothing";
}

TEST_F(MenuTest, UpdateWithoutGraphicsStillGivesTheChoice) {
    MenuInput input;
    input.cursorX = 0.5f, input.cursorY = 0.8f, input.leftDown = true;  // on Quit
    EXPECT_EQ(menu.Update(input), ChoiceQuit);
}

}  // namespace
