#pragma once
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

struct FT_LibraryRec_;
struct FT_FaceRec_;

namespace mediagen {

// Grey-level ink, 0 = none, 255 = full; rows top-down as a reader sees text.
struct Coverage {
    Coverage(int width, int height) : width(width), height(height), value(size_t(width) * height, 0) {}
    uint8_t At(int x, int y) const { return value[size_t(y) * width + x]; }
    // Keeps the stronger of the old and new ink, so overlapping glyphs never darken each other.
    void Stamp(int x, int y, uint8_t ink);

    int width;
    int height;
    std::vector<uint8_t> value;
};

// Where a glyph's ink lies, in pixels from the pen position on the baseline (y grows down).
struct InkBox {
    int left = 0;
    int top = 0;
    int right = 0;   // one past the last column
    int bottom = 0;  // one past the last row
    bool Empty() const { return right <= left || bottom <= top; }
};

// One font file at one size. Everything here is deterministic for a given FreeType build.
class Font {
public:
    // Throws MediaError naming the file if it is missing or not a font.
    explicit Font(const std::filesystem::path& path);
    ~Font();
    Font(const Font&) = delete;
    Font& operator=(const Font&) = delete;

    // Em height in pixels; widthScale squeezes or stretches every glyph and advance sideways,
    // for textures that the game draws at a different aspect ratio than they are stored.
    void SetSize(double emHeight, double widthScale);

    InkBox Ink(char32_t code) const;
    // Pen travel for the text in pixels, kerning included.
    int Advance(std::string_view utf8) const;
    // Draws with the pen starting at penX on the given baseline row.
    void Draw(Coverage& target, int penX, int baseline, std::string_view utf8) const;

private:
    unsigned GlyphIndex(char32_t code) const;
    void Load(unsigned glyph, bool render) const;

    std::filesystem::path path;
    FT_LibraryRec_* library = nullptr;
    FT_FaceRec_* face = nullptr;
};

// Splits UTF-8 into code points; bytes that are not valid UTF-8 become U+FFFD.
std::u32string DecodeUtf8(std::string_view utf8);

}  // namespace mediagen
