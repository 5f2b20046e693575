#include "tools/mediagen/font_sheet.h"

#include <algorithm>
#include <vector>

#include "tools/mediagen/media_error.h"
#include "tools/mediagen/text_raster.h"

namespace mediagen {

namespace {

constexpr char32_t kFirstGlyph = 33;
constexpr char32_t kLastGlyph = 126;
// Empty pixels around every glyph, so mipmaps of one cell never pick up its neighbours.
constexpr int kMargin = 2;
// The game draws cells 4:3 wider than tall on screen and steps 0.9 of a cell per character,
// so glyphs are stretched sideways, the widest to 85 % of the cell: the text then reads as
// letters with narrow gaps, not as letters far apart.
constexpr double kInkWidthShare = 0.85;

// The extremes of all glyphs' ink around a shared pen position.
InkBox UnionOfGlyphs(const Font& font) {
    InkBox all{0, 0, 0, 0};
    for (char32_t code = kFirstGlyph; code <= kLastGlyph; ++code) {
        const InkBox box = font.Ink(code);
        if (box.Empty()) continue;
        all.top = std::min(all.top, box.top);
        all.bottom = std::max(all.bottom, box.bottom);
        all.right = std::max(all.right, box.right - box.left);
    }
    return all;
}

// The biggest size at which every glyph fits the cell's height inside the margins, then
// widened until the widest glyph takes its share of the cell. Sizes are tried from the top
// down, because hinting makes ink grow in uneven steps.
InkBox FitFontToCell(Font& font, const std::filesystem::path& path) {
    const int room = kFontCellSize - 2 * kMargin;
    const double wanted = kInkWidthShare * kFontCellSize;
    for (double em = kFontCellSize; em >= 8.0; em -= 0.5) {
        font.SetSize(em, 1.0);
        const InkBox natural = UnionOfGlyphs(font);
        if (natural.bottom - natural.top > room || natural.right <= 0) continue;
        for (double scale = wanted / natural.right; scale > 0.5; scale -= 0.02) {
            font.SetSize(em, scale);
            const InkBox all = UnionOfGlyphs(font);
            if (all.bottom - all.top <= room && all.right <= wanted) return all;
        }
    }
    throw MediaError(path.string() + ": glyphs do not fit a " + std::to_string(kFontCellSize) + "-pixel cell");
}

void DrawGlyph(const Font& font, char32_t code, int baseline, Coverage& sheet) {
    const InkBox box = font.Ink(code);
    if (box.Empty()) return;
    const int column = int(code % 16);
    const int row = int(code / 16);
    // Centre the ink, not the advance: some glyphs sit off-centre in their advance.
    const int inkWidth = box.right - box.left;
    const int penX = column * kFontCellSize + (kFontCellSize - inkWidth) / 2 - box.left;
    const char utf8[2] = {char(code), 0};
    font.Draw(sheet, penX, row * kFontCellSize + baseline, utf8);
}

}  // namespace

Picture MakeFontSheet(const std::filesystem::path& monoFont) {
    Font font(monoFont);
    const InkBox all = FitFontToCell(font, monoFont);
    // The baseline sits as low as the deepest descender allows, about 80 % down the cell.
    const int baseline = kFontCellSize - kMargin - all.bottom;

    Coverage ink(kFontSheetSize, kFontSheetSize);
    for (char32_t code = kFirstGlyph; code <= kLastGlyph; ++code) DrawGlyph(font, code, baseline, ink);

    // Coverage rows are top-down, which is the stored order the game wants for this sheet.
    Picture sheet(kFontSheetSize, kFontSheetSize, 4);
    for (int y = 0; y < kFontSheetSize; ++y) {
        for (int x = 0; x < kFontSheetSize; ++x) {
            uint8_t* pixel = sheet.Pixel(x, y);
            pixel[0] = pixel[1] = pixel[2] = 255;
            pixel[3] = ink.At(x, y);
        }
    }
    return sheet;
}

}  // namespace mediagen
