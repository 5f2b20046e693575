#include "tools/mediagen/dialogues.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "tools/mediagen/media_error.h"
#include "tools/mediagen/palette.h"
#include "tools/mediagen/text_layout.h"

namespace mediagen {

namespace {

constexpr int kW = kDialogueWidth;
constexpr int kH = kDialogueHeight;

// The game stretches the panel to 8:3 on its 4:3 window (0.4 x 0.2 of the screen), so it is
// drawn squeezed sideways by this much: text and corners look right once stretched.
constexpr double kWidthScale = 0.75;

// The panel, in on-screen proportions (x divided by kWidthScale): inset so its glow fades out
// before the texture's border.
constexpr double kInset = 6;
constexpr double kCorner = 26;
constexpr double kBorder = 3;
constexpr double kGlow = 3;  // how fast the glow outside the border fades
constexpr Colour kFillTop{30, 28, 80};
constexpr Colour kFillBottom{10, 10, 36};
constexpr int kFillAlpha = 215;
constexpr Colour kBorderTop{120, 232, 236};
constexpr Colour kBorderBottom = palette::kDeepTeal;

constexpr Colour kTitleColour = palette::kGold;
constexpr Colour kRuleColour = palette::kTeal;
constexpr Colour kBodyColour{236, 234, 246};  // a touch brighter than the splashes': the panels are small
constexpr Colour kBoldColour = palette::kPaleGold;
constexpr Colour kFooterColour = palette::kFooterTeal;

constexpr int kSideMargin = 30;
constexpr double kTitleEm = 38;
constexpr int kTitleBaseline = 54;
constexpr int kRuleRow = 69;
constexpr int kBodyTop = 82;
constexpr double kFooterEm = 20;
constexpr int kFooterBaseline = kH - 20;

using Shade = std::array<double, 3>;

Shade Between(const Colour& a, const Colour& b, double t) {
    return {a[0] + (b[0] - a[0]) * t, a[1] + (b[1] - a[1]) * t, a[2] + (b[2] - a[2]) * t};
}

// Signed distance from the panel's edge in on-screen pixels, negative inside.
double PanelDistance(double x, double y) {
    const double w = kW / kWidthScale;
    const double halfW = w / 2 - kInset, halfH = kH / 2.0 - kInset;
    const double qx = std::abs(x / kWidthScale - w / 2) - (halfW - kCorner);
    const double qy = std::abs(y - kH / 2.0) - (halfH - kCorner);
    return std::hypot(std::max(qx, 0.0), std::max(qy, 0.0)) + std::min(std::max(qx, qy), 0.0) - kCorner;
}

double Cover(double distance) { return std::clamp(0.5 - distance, 0.0, 1.0); }

// A translucent fill darkening downwards, an opaque border from light to deep teal and a faint
// glow outside it. Rows top-down.
void DrawPanel(Picture& picture) {
    for (int y = 0; y < kH; ++y) {
        const double down = double(y) / (kH - 1);
        const Shade fillColour = Between(kFillTop, kFillBottom, down);
        const Shade borderColour = Between(kBorderTop, kBorderBottom, down);
        for (int x = 0; x < kW; ++x) {
            const double d = PanelDistance(x + 0.5, y + 0.5);
            const double fill = Cover(d + kBorder) * kFillAlpha;
            const double ring = (Cover(d) - Cover(d + kBorder)) * 255;
            const double glow = d > 0 ? (1 - Cover(d)) * 90 * std::exp(-d / kGlow) : 0;
            const double alpha = fill + ring + glow;
            if (alpha < 0.5) continue;  // transparent black
            uint8_t* pixel = picture.Pixel(x, y);
            for (int c = 0; c < 3; ++c) {
                pixel[c] = uint8_t(std::lround((fillColour[c] * fill + borderColour[c] * (ring + glow)) / alpha));
            }
            pixel[3] = uint8_t(std::lround(std::min(alpha, 255.0)));
        }
    }
}

// A line under the title fading out towards its ends, with a small gold diamond in the middle.
void DrawRule(Picture& picture) {
    const double half = kW * 0.3;
    for (int y = kRuleRow - 4; y <= kRuleRow + 4; ++y) {
        for (int x = int(kW / 2 - half); x < int(kW / 2 + half); ++x) {
            const double dx = std::abs(x + 0.5 - kW / 2.0), dy = std::abs(y + 0.5 - (kRuleRow + 0.5));
            const double diamond = Cover(dx / kWidthScale + dy - 5);
            const double line = Cover(dy - 0.5) * std::clamp(1.6 * (1 - dx / half), 0.0, 1.0);
            const double ink = std::max(diamond, line);
            if (ink <= 0) continue;
            const Colour& colour = diamond >= line ? kTitleColour : kRuleColour;
            uint8_t* pixel = picture.Pixel(x, y);
            const double behind = pixel[3] * (1 - ink);
            const double total = ink * 255 + behind;
            for (int c = 0; c < 3; ++c) pixel[c] = uint8_t(std::lround((colour[c] * ink * 255 + pixel[c] * behind) / total));
            pixel[3] = uint8_t(std::lround(total));
        }
    }
}

// Body sizes to try, largest first: the game shows the small panels at 320 x 120 pixels, so a
// short text gets the biggest letters that fit.
constexpr std::array<double, 4> kBodyEms{32, 29, 26, 23};

struct BodyLayout {
    double em = 0;
    std::vector<std::pair<int, TextLine>> lines;  // offset from the first baseline, line
    int height = 0;
    std::string problem;  // why it does not fit, if it does not
};

BodyLayout LayOutBody(const SplashSource& source, Faces& faces, double em, int room) {
    BodyLayout layout{em, {}, 0, ""};
    faces.SetSize(em, kWidthScale);
    const int step = int(std::lround(em * 1.25));
    int offset = 0;
    for (const std::string& paragraph : source.body) {
        if (paragraph.empty()) {
            offset += step / 2;
            continue;
        }
        for (TextLine& line : WrapLine(faces, paragraph, kW - 2 * kSideMargin)) {
            if (LineWidth(faces, line) > kW - 2 * kSideMargin) {
                layout.problem = "a word of '" + paragraph + "' is wider than the panel";
                return layout;
            }
            layout.lines.emplace_back(offset, std::move(line));
            offset += step;
        }
    }
    if (!layout.lines.empty()) layout.height = layout.lines.back().first + int(em);
    if (layout.height > room) layout.problem = "the text is too long for the panel";
    return layout;
}

// The body is centred in the room between the rule and the footer.
void DrawBody(const SplashSource& source, Faces& faces, TextLayers& layers, const std::string& name) {
    const int bottom = source.footer.empty() ? kH - 22 : kFooterBaseline - int(kFooterEm) - 6;
    BodyLayout layout;
    for (double em : kBodyEms) {
        layout = LayOutBody(source, faces, em, bottom - kBodyTop);
        if (layout.problem.empty()) break;
    }
    if (!layout.problem.empty()) throw MediaError(name + ": " + layout.problem);
    const int first = kBodyTop + (bottom - kBodyTop - layout.height) / 2 + int(layout.em * 0.78);
    for (const auto& [at, line] : layout.lines) {
        const int penX = source.align == SplashSource::Align::Centre ? (kW - LineWidth(faces, line)) / 2 : kSideMargin;
        DrawLine(faces, line, penX, first + at, layers.body, layers.bold);
    }
}

void DrawCentred(const Font& font, const std::string& text, int baseline, Coverage& layer, const std::string& name) {
    const int width = font.Advance(text);
    if (width > kW - 2 * kSideMargin) throw MediaError(name + ": '" + text + "' is too wide for the panel");
    font.Draw(layer, (kW - width) / 2, baseline, text);
}

}  // namespace

Picture RenderDialogue(const SplashSource& source, const SplashFonts& fonts, const std::string& name) {
    Faces faces(fonts.regular, fonts.bold);
    TextLayers layers(kW, kH);
    faces.bold.SetSize(kTitleEm, kWidthScale);
    DrawCentred(faces.bold, source.title, kTitleBaseline, layers.title, name);
    DrawBody(source, faces, layers, name);
    if (!source.footer.empty()) {
        faces.regular.SetSize(kFooterEm, kWidthScale);
        DrawCentred(faces.regular, source.footer, kFooterBaseline, layers.footer, name);
    }

    // Drawn top-down as seen on screen; the game shows the last stored row at the top.
    Picture picture(kW, kH, 4);
    DrawPanel(picture);
    DrawRule(picture);
    BlendLayers(picture, layers, {kTitleColour, kBodyColour, kBoldColour, kFooterColour});
    picture.FlipRows();
    return picture;
}

}  // namespace mediagen
