#pragma once
#include <filesystem>
#include <ostream>

namespace mediagen {

// The font files every generated texture is drawn with.
struct FontSet {
    std::filesystem::path mono;      // the glyph sheet
    std::filesystem::path sans;      // splash body text
    std::filesystem::path sansBold;  // splash titles
};

// DejaVu from fonts-dejavu-core. The media target in CMakeLists.txt lists the same files.
FontSet SystemFonts();

// Writes every file of Media/ from the sources under assetsDir (splashes/, dialogues/, menu/, tracks/,
// levels/, sounds/) and from code into outDir, creating it if needed, and prints one line per file to
// progress. Every source is read before anything is written. Throws MediaError naming the file
// at fault (and the line, for a bad source).
void GenerateMedia(const std::filesystem::path& assetsDir, const std::filesystem::path& outDir,
                   const FontSet& fonts, std::ostream& progress);

}  // namespace mediagen
