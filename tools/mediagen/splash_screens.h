#pragma once
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "tools/mediagen/tga_writer.h"

namespace mediagen {

// A full-window picture shown between menus, made from a text source in assets/splashes/
// (the format is described in assets/README.md).
struct SplashSource {
    enum class Align { Left, Centre };
    std::string title;
    std::string footer;
    Align align = Align::Left;
    std::vector<std::string> body;  // an empty line is a gap; *stars* mark bold spans
};

struct SplashFonts {
    std::filesystem::path regular;
    std::filesystem::path bold;
};

inline constexpr int kSplashSize = 1024;

// name is the file the text came from, used in error messages.
SplashSource ParseSplash(std::string_view text, const std::string& name);
SplashSource ReadSplash(const std::filesystem::path& path);

// Fills the picture, rows top-down, with the splashes' night sky: a violet-blue gradient to
// black with faint stars, drawn for a square picture stretched over the 4:3 window. Alpha, if
// the picture has it, is left alone.
void FillNightSky(Picture& picture);

// 24-bit, bottom row stored first, drawn squeezed sideways so that it looks right stretched
// over an 800 x 600 window. Throws MediaError naming `name` if the text does not fit.
Picture RenderSplash(const SplashSource& source, const SplashFonts& fonts, const std::string& name);

}  // namespace mediagen
