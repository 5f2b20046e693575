#include "tools/mediagen/splash_screens.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "tools/mediagen/media_error.h"
#include "tools/mediagen/palette.h"
#include "tools/mediagen/text_layout.h"
#include "tools/mediagen/texture_noise.h"

namespace mediagen {

namespace {

// The window is 800 x 600 but the picture is square, so glyphs are stored 600/800 as wide.
constexpr double kWidthScale = 0.75;
constexpr int kSideMargin = 80;

// The game's night palette: violet-blue fading to black, gold titles, teal accents.
constexpr Colour kSkyTop{32, 28, 84};
constexpr Colour kSkyBottom{4, 4, 16};
constexpr Colour kTitleColour = palette::kGold;
constexpr Colour kRuleColour = palette::kTeal;
constexpr Colour kBodyColour = palette::kText;
constexpr Colour kBoldColour = palette::kPaleGold;
constexpr Colour kFooterColour = palette::kFooterTeal;

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

// A line under the title fading out towards its ends, with a small gold diamond in the middle.
void DrawRule(Picture& picture) {
    const double half = kSplashSize / 4.0, middle = kRuleTop + 1.5;
    for (int y = kRuleTop - 8; y < kRuleTop + 12; ++y) {
        for (int x = kSplashSize / 4; x < kSplashSize * 3 / 4; ++x) {
            const double dx = std::abs(x + 0.5 - kSplashSize / 2.0), dy = std::abs(y + 0.5 - middle);
            const double diamond = std::clamp(9.5 - dx / kWidthScale - dy, 0.0, 1.0);
            const double line = std::clamp(2 - dy, 0.0, 1.0) * std::clamp(1.6 * (1 - dx / half), 0.0, 1.0);
            const double ink = std::max(diamond, line);
            const Colour& colour = diamond >= line ? kTitleColour : kRuleColour;
            uint8_t* pixel = picture.Pixel(x, y);
            for (int c = 0; c < 3; ++c) pixel[c] = uint8_t(std::lround(pixel[c] + (colour[c] - pixel[c]) * ink));
        }
    }
}

}  // namespace

// The night sky: the gradient with faint stars, dim enough that text always stands out.
void FillNightSky(Picture& picture) {
    constexpr int kCell = 24;  // at most one star in each square of this many pixels
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            const uint32_t cx = uint32_t(x / kCell), cy = uint32_t(y / kCell);
            double star = 0;
            if (Hash(cx, cy, 0, 61) < 0.35) {
                const double sx = (cx + Hash(cx, cy, 1, 61)) * kCell, sy = (cy + Hash(cx, cy, 2, 61)) * kCell;
                const double dx = (x + 0.5 - sx) / kWidthScale, dy = y + 0.5 - sy;
                star = (40 + 90 * Hash(cx, cy, 3, 61)) * std::exp(-(dx * dx + dy * dy) / 1.6);
            }
            uint8_t* pixel = picture.Pixel(x, y);
            for (int c = 0; c < 3; ++c) {
                const double sky = kSkyTop[c] + double(kSkyBottom[c] - kSkyTop[c]) * y / (picture.height - 1);
                pixel[c] = uint8_t(std::lround(std::min(sky + star, 160.0)));
            }
        }
    }
}

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
    FillNightSky(picture);
    DrawRule(picture);
    BlendLayers(picture, layers, {kTitleColour, kBodyColour, kBoldColour, kFooterColour});
    picture.FlipRows();
    return picture;
}

}  // namespace mediagen
