#pragma once
#include <filesystem>
#include <string>
#include <string_view>

#include "tools/mediagen/splash_screens.h"
#include "tools/mediagen/tga_writer.h"

namespace mediagen {

// A panel of text shown over a level (the goal, the controls, won, lost), made from
// assets/dialogues/NAME.txt. The source is written like a splash source, but the footer is
// optional.
SplashSource ParseDialogue(std::string_view text, const std::string& name);
SplashSource ReadDialogue(const std::filesystem::path& path);

inline constexpr int kDialogueWidth = 512;
inline constexpr int kDialogueHeight = 256;

// 32-bit: a rounded, see-through panel with opaque text on transparent black, bottom row
// stored first like the splashes. Throws MediaError naming `name` if the text does not fit.
Picture RenderDialogue(const SplashSource& source, const SplashFonts& fonts, const std::string& name);

}  // namespace mediagen
