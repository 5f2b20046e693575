#include "tools/mediagen/splash_screens.h"

#include <array>

#include "tools/mediagen/media_error.h"
#include "tools/mediagen/text_raster.h"

namespace mediagen {

namespace {

using Colour = std::array<int, 3>;

// The window is 800 x 600 but the picture is square, so glyphs are stored 600/800 as wide.
constexpr double kWidthScale = 0.75;
constexpr int kSideMargin = 80;

constexpr Colour kSkyTop{20, 36, 96};
constexpr Colour kSkyBottom{0, 0, 4};
constexpr Colour kTitleColour{255, 255, 255};
constexpr Colour kRuleColour{90, 130, 215};
constexpr Colour kBodyColour{206, 216, 240};
constexpr Colour kBoldColour{255, 255, 255};
constexpr Colour kFooterColour{140, 160, 205};

struct TextStyle {
    double em;
    int baseline;
};
constexpr TextStyle kTitle{104, 190};
constexpr TextStyle kBody{40, 320};
constexpr TextStyle kFooter{38, kSplashSize - 64};
constexpr int kRuleTop = 234;
constexpr int kBodyLineStep = 58;
constexpr int kBodyLowestBaseline = kFooter.baseline - 90;

// A run of text in one weight; a word may mix weights ("*Tilt left:*" is bold throughout).
struct Span {
    bool bold;
    std::string text;
};
using Word = std::vector<Span>;

struct Faces {
    Font regular;
    Font bold;
    const Font& Of(bool isBold) const { return isBold ? bold : regular; }
};

// Layers of ink, one per colour, blended over the background at the end.
struct Layers {
    Coverage body{kSplashSize, kSplashSize};
    Coverage bold{kSplashSize, kSplashSize};
    Coverage title{kSplashSize, kSplashSize};
    Coverage footer{kSplashSize, kSplashSize};
};

std::vector<Word> SplitWords(const std::string& line) {
    std::vector<Word> words(1);
    bool bold = false;
    for (char c : line) {
        if (c == '*') {
            bold = !bold;
        } else if (c == ' ') {
            if (!words.back().empty()) words.emplace_back();
        } else {
            Word& word = words.back();
            if (word.empty() || word.back().bold != bold) word.push_back({bold, ""});
            word.back().text += c;
        }
    }
    if (words.back().empty()) words.pop_back();
    return words;
}

int WordWidth(const Faces& faces, const Word& word) {
    int width = 0;
    for (const Span& span : word) width += faces.Of(span.bold).Advance(span.text);
    return width;
}

// Greedy wrapping; a word wider than the line still gets a line of its own.
std::vector<std::vector<Word>> WrapLine(const Faces& faces, const std::string& line, int maxWidth) {
    std::vector<std::vector<Word>> lines;
    const int space = faces.regular.Advance(" ");
    int width = 0;
    for (Word& word : SplitWords(line)) {
        const int wordWidth = WordWidth(faces, word);
        if (lines.empty() || width + space + wordWidth > maxWidth) {
            lines.emplace_back();
            width = wordWidth;
        } else {
            width += space + wordWidth;
        }
        lines.back().push_back(std::move(word));
    }
    return lines;
}

int LineWidth(const Faces& faces, const std::vector<Word>& words) {
    int width = 0;
    for (const Word& word : words) width += WordWidth(faces, word);
    return width + faces.regular.Advance(" ") * int(words.empty() ? 0 : words.size() - 1);
}

void DrawLine(const Faces& faces, const std::vector<Word>& words, int penX, int baseline, Layers& layers) {
    const int space = faces.regular.Advance(" ");
    for (const Word& word : words) {
        for (const Span& span : word) {
            faces.Of(span.bold).Draw(span.bold ? layers.bold : layers.body, penX, baseline, span.text);
            penX += faces.Of(span.bold).Advance(span.text);
        }
        penX += space;
    }
}

int CentredPen(int width) { return (kSplashSize - width) / 2; }

void DrawBody(const SplashSource& source, Faces& faces, Layers& layers, const std::string& name) {
    faces.regular.SetSize(kBody.em, kWidthScale);
    faces.bold.SetSize(kBody.em, kWidthScale);
    int baseline = kBody.baseline;
    for (const std::string& paragraph : source.body) {
        if (paragraph.empty()) {
            baseline += kBodyLineStep / 2;
            continue;
        }
        for (const auto& line : WrapLine(faces, paragraph, kSplashSize - 2 * kSideMargin)) {
            if (baseline > kBodyLowestBaseline) throw MediaError(name + ": body text runs into the footer");
            const bool centre = source.align == SplashSource::Align::Centre;
            const int penX = centre ? CentredPen(LineWidth(faces, line)) : kSideMargin;
            DrawLine(faces, line, penX, baseline, layers);
            baseline += kBodyLineStep;
        }
    }
}

void DrawCentred(const Font& font, const std::string& text, int baseline, Coverage& layer, const std::string& name) {
    const int width = font.Advance(text);
    if (width > kSplashSize - kSideMargin) throw MediaError(name + ": '" + text + "' is too wide");
    font.Draw(layer, CentredPen(width), baseline, text);
}

void FillGradient(Picture& picture) {
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            uint8_t* pixel = picture.Pixel(x, y);
            for (int c = 0; c < 3; ++c) {
                pixel[c] = uint8_t(kSkyTop[c] + (kSkyBottom[c] - kSkyTop[c]) * y / (picture.height - 1));
            }
        }
    }
}

void Blend(Picture& picture, const Coverage& ink, const Colour& colour) {
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            const int alpha = ink.At(x, y);
            if (alpha == 0) continue;
            uint8_t* pixel = picture.Pixel(x, y);
            for (int c = 0; c < 3; ++c) pixel[c] = uint8_t((pixel[c] * (255 - alpha) + colour[c] * alpha + 127) / 255);
        }
    }
}

void DrawRule(Picture& picture) {
    for (int y = kRuleTop; y < kRuleTop + 3; ++y) {
        for (int x = kSplashSize / 4; x < kSplashSize * 3 / 4; ++x) {
            uint8_t* pixel = picture.Pixel(x, y);
            for (int c = 0; c < 3; ++c) pixel[c] = uint8_t(kRuleColour[c]);
        }
    }
}

}  // namespace

Picture RenderSplash(const SplashSource& source, const SplashFonts& fonts, const std::string& name) {
    Faces faces{Font(fonts.regular), Font(fonts.bold)};
    Layers layers;

    faces.bold.SetSize(kTitle.em, kWidthScale);
    DrawCentred(faces.bold, source.title, kTitle.baseline, layers.title, name);
    DrawBody(source, faces, layers, name);
    faces.regular.SetSize(kFooter.em, kWidthScale);
    DrawCentred(faces.regular, source.footer, kFooter.baseline, layers.footer, name);

    // Drawn top-down as seen on screen; the game shows the last stored row at the top.
    Picture picture(kSplashSize, kSplashSize, 3);
    FillGradient(picture);
    DrawRule(picture);
    Blend(picture, layers.title, kTitleColour);
    Blend(picture, layers.body, kBodyColour);
    Blend(picture, layers.bold, kBoldColour);
    Blend(picture, layers.footer, kFooterColour);
    picture.FlipRows();
    return picture;
}

}  // namespace mediagen
