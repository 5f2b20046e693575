#include "tools/mediagen/splash_screens.h"

#include <array>

#include "tools/mediagen/media_error.h"
#include "tools/mediagen/text_layout.h"

namespace mediagen {

namespace {

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

int CentredPen(int width) { return (kSplashSize - width) / 2; }

void DrawBody(const SplashSource& source, Faces& faces, TextLayers& layers, const std::string& name) {
    faces.SetSize(kBody.em, kWidthScale);
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
            DrawLine(faces, line, penX, baseline, layers.body, layers.bold);
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
    Faces faces(fonts.regular, fonts.bold);
    TextLayers layers(kSplashSize, kSplashSize);

    faces.bold.SetSize(kTitle.em, kWidthScale);
    DrawCentred(faces.bold, source.title, kTitle.baseline, layers.title, name);
    DrawBody(source, faces, layers, name);
    faces.regular.SetSize(kFooter.em, kWidthScale);
    DrawCentred(faces.regular, source.footer, kFooter.baseline, layers.footer, name);

    // Drawn top-down as seen on screen; the game shows the last stored row at the top.
    Picture picture(kSplashSize, kSplashSize, 3);
    FillGradient(picture);
    DrawRule(picture);
    BlendLayers(picture, layers, {kTitleColour, kBodyColour, kBoldColour, kFooterColour});
    picture.FlipRows();
    return picture;
}

}  // namespace mediagen
