#pragma once
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "tools/mediagen/splash_screens.h"
#include "tools/mediagen/tga_writer.h"

namespace mediagen {

// The main menu's pictures, from assets/menu/menu.txt (the format is in assets/README.md).
struct MenuButtonSource {
    std::string name;   // the texture's, e.g. "UI_newgame"
    double width = 0;   // on screen, as a share of the window's width
    std::string label;
};

struct MenuSource {
    std::string title;
    std::vector<MenuButtonSource> buttons;
};

// name is the file the text came from, used in error messages.
MenuSource ParseMenu(std::string_view text, const std::string& name);
MenuSource ReadMenu(const std::filesystem::path& path);

// Where the menu's round window lies on screen (x in window widths, y in heights), through
// which the turning rings show; the game turns the rings about the same centre.
inline constexpr double kMenuWindowX = 0.71, kMenuWindowY = 0.56, kMenuWindowRadius = 0.34;  // of the height
inline constexpr int kMenuBackSize = 1024;
inline constexpr int kMenuRingsSize = 1024;
inline constexpr int kMenuButtonHeight = 128;

// 32-bit, bottom row stored first like the splashes. UI_back: the sky, the title and the
// rimmed window, see-through inside the window.
Picture RenderMenuBack(const MenuSource& source, const SplashFonts& fonts, const std::string& name);
// UI_bg_rings: thin rings, dashes and ticks about the centre on an opaque deep blue glow; it
// turns under the whole window, so it covers the clear colour everywhere.
Picture RenderMenuRings();
struct NamedPicture {
    std::string name;  // the texture's
    Picture picture;
};
// Every button's picture, plain (NAME) and lit for the cursor over it (NAME_hover), with all
// labels at the largest size at which each fits its button. Throws MediaError naming `name`
// when a label does not fit even small.
std::vector<NamedPicture> RenderMenuButtons(const MenuSource& source, const SplashFonts& fonts,
                                            const std::string& name);

}  // namespace mediagen
