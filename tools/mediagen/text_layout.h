#pragma once
#include <array>
#include <filesystem>
#include <string>
#include <vector>

#include "tools/mediagen/text_raster.h"
#include "tools/mediagen/tga_writer.h"

namespace mediagen {

// Paragraphs of text with *bold* spans, wrapped and drawn for the splash screens and dialogues.

using Colour = std::array<int, 3>;

// A run of text in one weight; a word may mix weights ("*Tilt left:*" is bold throughout).
struct Span {
    bool bold;
    std::string text;
};
using Word = std::vector<Span>;
using TextLine = std::vector<Word>;

struct Faces {
    Faces(const std::filesystem::path& regularFile, const std::filesystem::path& boldFile)
        : regular(regularFile), bold(boldFile) {}
    const Font& Of(bool isBold) const { return isBold ? bold : regular; }
    void SetSize(double em, double widthScale) {
        regular.SetSize(em, widthScale);
        bold.SetSize(em, widthScale);
    }

    Font regular;
    Font bold;
};

// Greedy wrapping of one paragraph; a word wider than the line still gets a line of its own.
std::vector<TextLine> WrapLine(const Faces& faces, const std::string& paragraph, int maxWidth);
int LineWidth(const Faces& faces, const TextLine& line);
// Regular spans go to `regular`, bold ones to `bold`.
void DrawLine(const Faces& faces, const TextLine& line, int penX, int baseline, Coverage& regular, Coverage& bold);

// Lays ink of one colour over the picture, rows in the coverage's order. On a picture with
// alpha the ink is laid over what is there, so text on a see-through panel is opaque.
void Blend(Picture& picture, const Coverage& ink, const Colour& colour);

// Ink of one colour per kind of text, blended over the background once everything is drawn.
struct TextLayers {
    TextLayers(int width, int height) : title(width, height), body(width, height), bold(width, height), footer(width, height) {}
    Coverage title, body, bold, footer;
};

struct TextColours {
    Colour title, body, bold, footer;
};

// Title, body, bold and footer ink, in that order, each in its colour.
void BlendLayers(Picture& picture, const TextLayers& layers, const TextColours& colours);

}  // namespace mediagen
