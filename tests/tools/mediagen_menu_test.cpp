// The main menu's pictures: what the game counts on when it lays them over each other.
#include <gtest/gtest.h>

#include "tools/mediagen/media_error.h"
#include "tools/mediagen/media_gen.h"
#include "tools/mediagen/menu_art.h"

using namespace mediagen;

namespace {

const std::filesystem::path kMenuSource = std::filesystem::path(VELLORAN_SOURCE_DIR) / "assets" / "menu" / "menu.txt";

SplashFonts Fonts() { return {SystemFonts().sans, SystemFonts().sansBold}; }

// A pixel as the game sees it: x from the left, y from the top of the window (stored rows are
// bottom first).
const uint8_t* Seen(const Picture& picture, double x, double y) {
    return picture.Pixel(int(x * picture.width), picture.height - 1 - int(y * picture.height));
}

std::string ErrorOf(const std::string& text) {
    try {
        ParseMenu(text, "menu.txt");
    } catch (const MediaError& e) {
        return e.what();
    }
    return "no error";
}

TEST(MediagenMenu, TheBackgroundIsOpenOnlyWhereTheRingsShowAndTheRingsCoverEverything) {
    const Picture back = RenderMenuBack(ReadMenu(kMenuSource), Fonts(), "menu.txt");
    ASSERT_EQ(back.channels, 4);
    EXPECT_EQ(Seen(back, kMenuWindowX, kMenuWindowY)[3], 0);
    // 0.3 of the height from the centre is inside on screen; sideways that is 0.3 * 600 / 800.
    EXPECT_EQ(Seen(back, kMenuWindowX + 0.3 * 0.75, kMenuWindowY)[3], 0);
    EXPECT_EQ(Seen(back, kMenuWindowX, kMenuWindowY - 0.3)[3], 0);
    for (const auto& [x, y] : {std::pair{0.02, 0.02}, {0.3, 0.5}, {0.98, 0.98}, {kMenuWindowX, 0.1}})
        EXPECT_EQ(Seen(back, x, y)[3], 255) << x << ", " << y;
    // The title's gold stands above the window.
    int gold = 0;
    for (double x = 0.5; x < 0.95; x += 0.002)
        for (double y = 0.03; y < 0.2; y += 0.004) gold += Seen(back, x, y)[0] > 200 && Seen(back, x, y)[2] < 150;
    EXPECT_GT(gold, 200);

    const Picture rings = RenderMenuRings();
    int open = 0;
    for (int y = 0; y < rings.height; y += 7)
        for (int x = 0; x < rings.width; x += 7) open += rings.Pixel(x, y)[3] != 255;
    EXPECT_EQ(open, 0) << "the clear colour would show through the window";
}

TEST(MediagenMenu, ButtonsComeInPairsShapedForTheirPlaceWithTheHoverLit) {
    const MenuSource source = ReadMenu(kMenuSource);
    const std::vector<NamedPicture> buttons = RenderMenuButtons(source, Fonts(), "menu.txt");
    ASSERT_EQ(buttons.size(), 2 * source.buttons.size());
    for (size_t i = 0; i < source.buttons.size(); ++i) {
        const Picture& plain = buttons[2 * i].picture;
        const Picture& lit = buttons[2 * i + 1].picture;
        EXPECT_EQ(buttons[2 * i].name, source.buttons[i].name);
        EXPECT_EQ(buttons[2 * i + 1].name, source.buttons[i].name + "_hover");
        EXPECT_EQ(plain.height, kMenuButtonHeight);
        // The narrow New Game button gets a narrower picture than the others.
        EXPECT_EQ(plain.width, source.buttons[i].width < 0.3 ? 256 : 512) << source.buttons[i].name;
        int different = 0, corners = 0;
        for (int y = 0; y < plain.height; ++y)
            for (int x = 0; x < plain.width; ++x) {
                const uint8_t *a = plain.Pixel(x, y), *b = lit.Pixel(x, y);
                different += std::abs(a[0] - b[0]) + std::abs(a[1] - b[1]) + std::abs(a[2] - b[2]) > 60;
            }
        for (const auto& [x, y] : {std::pair{0, 0}, {plain.width - 1, 0}, {0, plain.height - 1}})
            corners += plain.Pixel(x, y)[3] < 40;
        EXPECT_GT(different, plain.width * plain.height / 20) << source.buttons[i].name;
        EXPECT_EQ(corners, 3) << "rounded corners leave the picture's corners clear";
    }
}

TEST(MediagenMenu, ABadSourceIsNamedWithItsLine) {
    EXPECT_EQ(ErrorOf("title: V\nbutton: UI_x 0.3 X\nshade: dark\n"), "menu.txt:3: unknown key 'shade' (title, button)");
    EXPECT_EQ(ErrorOf("title: V\nbutton: UI_x wide X\n"), "menu.txt:2: width 'wide' must be a number from 0.1 to 1");
    EXPECT_EQ(ErrorOf("title: V\nbutton: UI_x 0.3\n"), "menu.txt:2: the button UI_x has no label");
    EXPECT_EQ(ErrorOf("title: V\nbutton: UI_x 0.3 A\nbutton: UI_x 0.3 B\n"), "menu.txt:3: the button UI_x is made twice");
    EXPECT_EQ(ErrorOf("button: UI_x 0.3 X\n"), "menu.txt:1: no 'title:' line");
    EXPECT_EQ(ErrorOf("title: V\nbutton: ../x 0.3 X\n").rfind("menu.txt:2: '../x' is not a texture name", 0), 0u);
    const MenuSource tooLong = ParseMenu("title: V\nbutton: UI_x 0.1 A label far too long for any button\n", "m.txt");
    try {
        RenderMenuButtons(tooLong, Fonts(), "m.txt");
        ADD_FAILURE() << "a label wider than its button was drawn";
    } catch (const MediaError& e) {
        EXPECT_EQ(std::string(e.what()).rfind("m.txt: ", 0), 0u) << e.what();
    }
}

}  // namespace
