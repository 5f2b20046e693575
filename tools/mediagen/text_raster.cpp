#include "tools/mediagen/text_raster.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <algorithm>
#include <cmath>

#include "tools/mediagen/media_error.h"

namespace mediagen {

namespace {

// 26.6 fixed point to whole pixels, rounding half up.
int Round26(FT_Pos value) { return int((value + 32) >> 6); }

}  // namespace

void Coverage::Stamp(int x, int y, uint8_t ink) {
    if (x < 0 || y < 0 || x >= width || y >= height) return;
    uint8_t& slot = value[size_t(y) * width + x];
    slot = std::max(slot, ink);
}

std::u32string DecodeUtf8(std::string_view utf8) {
    std::u32string out;
    for (size_t i = 0; i < utf8.size();) {
        const auto lead = uint8_t(utf8[i]);
        const int extra = lead < 0x80 ? 0 : (lead >> 5) == 6 ? 1 : (lead >> 4) == 14 ? 2 : (lead >> 3) == 30 ? 3 : -1;
        char32_t code = extra == 0 ? lead : extra == 1 ? lead & 0x1f : extra == 2 ? lead & 0x0f : lead & 0x07;
        bool valid = extra >= 0 && i + extra < utf8.size();
        for (int k = 1; valid && k <= extra; ++k) {
            const auto next = uint8_t(utf8[i + k]);
            valid = (next >> 6) == 2;
            code = (code << 6) | (next & 0x3f);
        }
        out.push_back(valid ? code : U'\uFFFD');
        i += valid ? size_t(extra) + 1 : 1;
    }
    return out;
}

Font::Font(const std::filesystem::path& path) : path(path) {
    if (!std::filesystem::is_regular_file(path)) {
        throw MediaError(path.string() + ": font file not found (Debian package fonts-dejavu-core)");
    }
    if (FT_Init_FreeType(&library) != 0) throw MediaError(path.string() + ": cannot start FreeType");
    if (FT_New_Face(library, path.c_str(), 0, &face) != 0) {
        FT_Done_FreeType(library);
        throw MediaError(path.string() + ": not a font FreeType can read");
    }
}

Font::~Font() {
    FT_Done_Face(face);
    FT_Done_FreeType(library);
}

void Font::SetSize(double emHeight, double widthScale) {
    const auto height = FT_F26Dot6(std::lround(emHeight * 64.0));
    const auto width = FT_F26Dot6(std::lround(emHeight * widthScale * 64.0));
    // 72 dpi makes points and pixels the same number.
    if (FT_Set_Char_Size(face, width, height, 72, 72) != 0) {
        throw MediaError(path.string() + ": cannot set size " + std::to_string(emHeight));
    }
}

unsigned Font::GlyphIndex(char32_t code) const { return FT_Get_Char_Index(face, FT_ULong(code)); }

void Font::Load(unsigned glyph, bool render) const {
    const FT_Int32 flags = render ? FT_LOAD_RENDER : FT_LOAD_DEFAULT;
    if (FT_Load_Glyph(face, glyph, flags) != 0) {
        throw MediaError(path.string() + ": cannot load glyph " + std::to_string(glyph));
    }
}

InkBox Font::Ink(char32_t code) const {
    Load(GlyphIndex(code), true);
    const FT_GlyphSlot slot = face->glyph;
    InkBox box;
    box.left = slot->bitmap_left;
    box.top = -slot->bitmap_top;
    box.right = box.left + int(slot->bitmap.width);
    box.bottom = box.top + int(slot->bitmap.rows);
    return box;
}

int Font::Advance(std::string_view utf8) const {
    FT_Pos pen = 0;
    unsigned previous = 0;
    for (char32_t code : DecodeUtf8(utf8)) {
        const unsigned glyph = GlyphIndex(code);
        FT_Vector kern{0, 0};
        if (previous != 0 && FT_HAS_KERNING(face)) FT_Get_Kerning(face, previous, glyph, FT_KERNING_DEFAULT, &kern);
        Load(glyph, false);
        pen += kern.x + face->glyph->advance.x;
        previous = glyph;
    }
    return Round26(pen);
}

void Font::Draw(Coverage& target, int penX, int baseline, std::string_view utf8) const {
    FT_Pos pen = FT_Pos(penX) * 64;
    unsigned previous = 0;
    for (char32_t code : DecodeUtf8(utf8)) {
        const unsigned glyph = GlyphIndex(code);
        FT_Vector kern{0, 0};
        if (previous != 0 && FT_HAS_KERNING(face)) FT_Get_Kerning(face, previous, glyph, FT_KERNING_DEFAULT, &kern);
        pen += kern.x;
        Load(glyph, true);
        const FT_GlyphSlot slot = face->glyph;
        const FT_Bitmap& bitmap = slot->bitmap;
        const int left = Round26(pen) + slot->bitmap_left;
        const int top = baseline - slot->bitmap_top;
        for (unsigned row = 0; row < bitmap.rows; ++row) {
            const uint8_t* line = bitmap.buffer + ptrdiff_t(row) * bitmap.pitch;
            for (unsigned col = 0; col < bitmap.width; ++col) target.Stamp(left + int(col), top + int(row), line[col]);
        }
        pen += slot->advance.x;
        previous = glyph;
    }
}

}  // namespace mediagen
