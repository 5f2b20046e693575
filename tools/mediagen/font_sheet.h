#pragma once
#include <filesystem>

#include "tools/mediagen/tga_writer.h"

namespace mediagen {

// The game's text texture: a 16 x 16 grid of 32-pixel cells, cell = character code
// (column code % 16, row code / 16), white with the glyph in alpha. Only printable ASCII
// (33..126) gets ink. Each glyph's top is at the cell's first stored row, because the game maps
// the first stored row to the top of the on-screen quad.
inline constexpr int kFontSheetSize = 512;
inline constexpr int kFontCellSize = kFontSheetSize / 16;

Picture MakeFontSheet(const std::filesystem::path& monoFont);

}  // namespace mediagen
