#include "tools/mediagen/dialogues.h"

#include <algorithm>
#include <cmath>

#include "tools/mediagen/media_error.h"
#include "tools/mediagen/text_layout.h"

namespace mediagen {

namespace {

constexpr int kW = kDialogueWidth;
constexpr int kH = kDialogueHeight;

// The panel: inset a little so its soft edge never touches the texture's border.
constexpr double kInset = 4;
constexpr double kCorner = 28;
constexpr double kBorder = 3;
constexpr Colour kFill{14, 22, 58};
constexpr int kFillAlpha = 200;
constexpr Colour kBorderColour{120, 160, 230};

constexpr Colour kTitleColour{255, 255, 255};
constexpr Colour kRuleColour{90, 130, 215};
constexpr Colour kBodyColour{214, 222, 242};
constexpr Colour kBoldColour{255, 236, 150};
constexpr Colour kFooterColour{150, 170, 215};

constexpr int kSideMargin = 32;
constexpr double kTitleEm = 34;
constexpr int kTitleBaseline = 58;
constexpr int kRuleTop = 72;
constexpr double kBodyEm = 22;
constexpr int kBodyStep = 30;
constexpr int kBodyTop = 86;
constexpr double kFooterEm = 18;
constexpr int kFooterBaseline = kH - 20;

// Signed distance from the panel's edge, negative inside.
double PanelDistance(double x, double y) {
    const double halfW = kW / 2.0 - kInset, halfH = kH / 2.0 - kInset;
    const double qx = std::abs(x - kW / 2.0) - (halfW - kCorner);
    const double qy = std::abs(y - kH / 2.0) - (halfH - kCorner);
    return std::hypot(std::max(qx, 0.0), std::max(qy, 0.0)) + std::min(std::max(qx, qy), 0.0) - kCorner;
}

double Cover(double distance) { return std::clamp(0.5 - distance, 0.0, 1.0); }

void DrawPanel(Picture& picture) {
    for (int y = 0; y < kH; ++y) {
        for (int x = 0; x < kW; ++x) {
            const double d = PanelDistance(x + 0.5, y + 0.5);
            const double fill = Cover(d + kBorder) * kFillAlpha;
            const double ring = (Cover(d) - Cover(d + kBorder)) * 255;
            const double alpha = fill + ring;
            uint8_t* pixel = picture.Pixel(x, y);
            if (alpha <= 0) continue;  // transparent black
            for (int c = 0; c < 3; ++c) pixel[c] = uint8_t(std::lround((kFill[c] * fill + kBorderColour[c] * ring) / alpha));
            pixel[3] = uint8_t(std::lround(alpha));
        }
    }
}

void DrawRule(Picture& picture) {
    for (int y = kRuleTop; y < kRuleTop + 2; ++y) {
        for (int x = kW / 4; x < kW * 3 / 4; ++x) {
            uint8_t* pixel = picture.Pixel(x, y);
            for (int c = 0; c < 3; ++c) pixel[c] = uint8_t(kRuleColour[c]);
            pixel[3] = 255;
        }
    }
}

// The body is centred in the room between the rule and the footer.
void DrawBody(const SplashSource& source, Faces& faces, TextLayers& layers, const std::string& name) {
    faces.SetSize(kBodyEm, 1.0);
    std::vector<std::pair<int, TextLine>> lines;  // offset from the first baseline, line
    int offset = 0;
    for (const std::string& paragraph : source.body) {
        if (paragraph.empty()) {
            offset += kBodyStep / 2;
            continue;
        }
        for (TextLine& line : WrapLine(faces, paragraph, kW - 2 * kSideMargin)) {
            if (LineWidth(faces, line) > kW - 2 * kSideMargin) {
                throw MediaError(name + ": a word of '" + paragraph + "' is wider than the panel");
            }
            lines.emplace_back(offset, std::move(line));
            offset += kBodyStep;
        }
    }
    if (lines.empty()) return;
    const int bottom = source.footer.empty() ? kH - 16 : kFooterBaseline - int(kFooterEm) - 6;
    const int height = lines.back().first + int(kBodyEm);
    if (height > bottom - kBodyTop) throw MediaError(name + ": the text is too long for the panel");
    const int first = kBodyTop + (bottom - kBodyTop - height) / 2 + int(kBodyEm * 0.78);
    for (const auto& [at, line] : lines) {
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
    faces.bold.SetSize(kTitleEm, 1.0);
    DrawCentred(faces.bold, source.title, kTitleBaseline, layers.title, name);
    DrawBody(source, faces, layers, name);
    if (!source.footer.empty()) {
        faces.regular.SetSize(kFooterEm, 1.0);
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
