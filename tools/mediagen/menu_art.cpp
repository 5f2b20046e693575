#include "tools/mediagen/menu_art.h"

#include <algorithm>
#include <cmath>

#include "tools/mediagen/media_error.h"
#include "tools/mediagen/palette.h"
#include "tools/mediagen/text_layout.h"
#include "tools/mediagen/texture_noise.h"

namespace mediagen {

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kWindowWidth = 800, kWindowHeight = 600;

using palette::kDeepTeal;
using palette::kGold;
using palette::kPaleGold;
using palette::kTeal;
using palette::kViolet;
constexpr Colour kLabel = palette::kText;

double Cover(double distance) { return std::clamp(0.5 - distance, 0.0, 1.0); }

// Lays a colour over a pixel with the given opacity, alpha and all (straight, not premultiplied).
void Over(Picture& picture, int x, int y, const Colour& colour, double opacity) {
    if (opacity <= 0) return;
    opacity = std::min(opacity, 1.0);
    uint8_t* pixel = picture.Pixel(x, y);
    const double behind = picture.channels == 4 ? pixel[3] / 255.0 * (1 - opacity) : 1 - opacity;
    const double total = opacity + behind;
    for (int c = 0; c < 3; ++c)
        pixel[c] = uint8_t(std::lround(std::clamp((colour[c] * opacity + pixel[c] * behind) / total, 0.0, 255.0)));
    if (picture.channels == 4) pixel[3] = uint8_t(std::lround(total * 255));
}

// ---- UI_back -------------------------------------------------------------------------------

// The picture is square but covers the 4:3 window: these turn its pixels into window pixels.
double WindowX(int x) { return (x + 0.5) * kWindowWidth / kMenuBackSize; }
double WindowY(int y) { return (y + 0.5) * kWindowHeight / kMenuBackSize; }

void DrawWindowAndRim(Picture& picture) {
    const double cx = kMenuWindowX * kWindowWidth, cy = kMenuWindowY * kWindowHeight;
    const double radius = kMenuWindowRadius * kWindowHeight;
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            const double dx = WindowX(x) - cx, dy = WindowY(y) - cy;
            const double d = std::hypot(dx, dy) - radius;  // window pixels, negative inside
            if (d > 40) continue;
            uint8_t* pixel = picture.Pixel(x, y);
            // See-through inside, with an edge soft over a pixel and a half.
            pixel[3] = uint8_t(std::lround(255 * std::clamp((d + 1.5) / 3, 0.0, 1.0)));
            // A teal glow outside a gold rim, and gold notches every 15 degrees.
            if (d > 0) Over(picture, x, y, kDeepTeal, 0.45 * std::exp(-d / 9));
            Over(picture, x, y, kGold, Cover(std::abs(d - 1.5) - 1.5));
            const double angle = std::atan2(dy, dx) * 180 / kPi + 360;
            const double fromNotch = std::abs(std::fmod(angle + 7.5, 15.0) - 7.5) * kPi / 180 * (radius + d);
            if (d > 3 && d < 11) Over(picture, x, y, kPaleGold, 0.8 * Cover(fromNotch - 1));
        }
    }
}

// Darker towards the window's corners, so the eye goes to the buttons and the window.
void Vignette(Picture& picture) {
    for (int y = 0; y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x) {
            const double u = WindowX(x) / kWindowWidth - 0.5, v = WindowY(y) / kWindowHeight - 0.5;
            const double shade = 1 - 0.45 * SmoothStep(0.25, 0.75, std::hypot(u, v) * 1.2);
            uint8_t* pixel = picture.Pixel(x, y);
            for (int c = 0; c < 3; ++c) pixel[c] = uint8_t(std::lround(pixel[c] * shade));
        }
}

// ---- UI_bg_rings ---------------------------------------------------------------------------

struct Ring {
    double radius, width;
    Colour colour;
    double opacity;
    int dashes = 0;        // 0: whole; else this many dashes round the ring
    double dashShare = 0;  // of each dash's period that is lit
};

// The ball covers about 113 pixels of radius at the centre and the window shows up to about
// 175 across its height: the detail is in between. Wider rings show only as the picture turns.
constexpr Ring kRings[] = {
    {118, 1.5, kTeal, 0.75},          {126, 5, kDeepTeal, 0.35, 90, 0.5}, {136, 14, kTeal, 0.55, 72, 0.12},
    {150, 4, kGold, 0.85, 24, 0.55},  {160, 1.2, kViolet, 0.7},           {168, 9, kViolet, 0.45, 3, 0.62},
    {182, 2, kTeal, 0.6},             {196, 3, kGold, 0.5, 8, 0.3},       {215, 1.5, kViolet, 0.5},
    {240, 18, kDeepTeal, 0.25, 5, 0.4}, {280, 1.5, kTeal, 0.4},           {330, 6, kViolet, 0.3, 12, 0.5},
    {400, 1.5, kTeal, 0.3},
};

// ---- buttons -------------------------------------------------------------------------------

struct ButtonShape {
    int width;          // texels
    double widthScale;  // texels across per texel down, for the glyphs and the corners
};

// The picture's width is the power of two nearest the button's shape, and what is drawn in it
// is squeezed or stretched to look right at the button's size on the 800 x 600 window.
ButtonShape ShapeOf(const MenuButtonSource& button) {
    const double shownWidth = button.width * kWindowWidth, shownHeight = 0.15 * kWindowHeight;
    const double wanted = kMenuButtonHeight * shownWidth / shownHeight;
    int width = 64;
    while (width < 2048 && std::abs(std::log(width * 2 / wanted)) < std::abs(std::log(width / wanted))) width *= 2;
    return {width, (width / shownWidth) / (kMenuButtonHeight / shownHeight)};
}

constexpr double kInset = 9, kCorner = 24, kBorder = 2.5;
constexpr double kPadding = 24;     // from the plate's left edge to the marker, unsqueezed
constexpr double kMarkerSize = 9;   // the diamond before the label
constexpr double kLabelGap = 16;    // from the marker to the label

// Signed distance from the plate's rounded edge, in unsqueezed texels, negative inside.
double PlateDistance(double x, double y, const ButtonShape& shape) {
    const double w = shape.width / shape.widthScale, h = kMenuButtonHeight;
    const double qx = std::abs(x / shape.widthScale - w / 2) - (w / 2 - kInset - kCorner);
    const double qy = std::abs(y - h / 2) - (h / 2 - kInset - kCorner);
    return std::hypot(std::max(qx, 0.0), std::max(qy, 0.0)) + std::min(std::max(qx, qy), 0.0) - kCorner;
}

void DrawPlate(Picture& picture, const ButtonShape& shape, bool hover) {
    const Colour top = hover ? Colour{40, 86, 112} : Colour{26, 26, 70};
    const Colour bottom = hover ? Colour{18, 44, 70} : Colour{10, 10, 34};
    const Colour& rim = hover ? kGold : kTeal;
    const double markerX = kInset + kPadding, markerY = kMenuButtonHeight / 2.0;
    for (int y = 0; y < picture.height; ++y) {
        const double down = double(y) / (picture.height - 1);
        const Colour fill{int(top[0] + (bottom[0] - top[0]) * down), int(top[1] + (bottom[1] - top[1]) * down),
                          int(top[2] + (bottom[2] - top[2]) * down)};
        for (int x = 0; x < picture.width; ++x) {
            const double d = PlateDistance(x + 0.5, y + 0.5, shape);
            if (d > 0) Over(picture, x, y, rim, (hover ? 0.6 : 0.25) * std::exp(-d / 3.5) * (1 - Cover(d)));
            Over(picture, x, y, fill, Cover(d + kBorder) * (hover ? 0.9 : 0.78));
            Over(picture, x, y, rim, (Cover(d) - Cover(d + kBorder)) * (hover ? 1.0 : 0.85));
            const double mx = std::abs((x + 0.5) / shape.widthScale - markerX), my = std::abs(y + 0.5 - markerY);
            Over(picture, x, y, hover ? kGold : kDeepTeal, Cover(mx + my - kMarkerSize));
        }
    }
}

double LabelLeft() { return kInset + kPadding + kMarkerSize + kLabelGap; }

// The largest size at which every label fits its plate, with the padding on the right too.
double LabelEm(const MenuSource& source, Font& font, const std::string& name) {
    for (double em = 56; em >= 24; em -= 2) {
        bool fits = true;
        for (const MenuButtonSource& button : source.buttons) {
            const ButtonShape shape = ShapeOf(button);
            font.SetSize(em, shape.widthScale);
            const double room = (shape.width / shape.widthScale - LabelLeft() - kInset - kPadding) * shape.widthScale;
            fits = fits && font.Advance(button.label) <= room;
        }
        if (fits) return em;
    }
    throw MediaError(name + ": a button's label is too long for its button");
}

Picture RenderButton(const MenuButtonSource& button, bool hover, Font& font, double em) {
    const ButtonShape shape = ShapeOf(button);
    Picture picture(shape.width, kMenuButtonHeight, 4);
    DrawPlate(picture, shape, hover);
    font.SetSize(em, shape.widthScale);
    Coverage ink(shape.width, kMenuButtonHeight);
    const int baseline = int(std::lround(kMenuButtonHeight / 2.0 + em * 0.36));
    font.Draw(ink, int(std::lround(LabelLeft() * shape.widthScale)), baseline, button.label);
    Blend(picture, ink, hover ? kGold : kLabel);
    picture.FlipRows();
    return picture;
}

}  // namespace

Picture RenderMenuBack(const MenuSource& source, const SplashFonts& fonts, const std::string& name) {
    Picture picture(kMenuBackSize, kMenuBackSize, 4);
    FillNightSky(picture);
    for (int y = 0; y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x) picture.Pixel(x, y)[3] = 255;
    Vignette(picture);
    DrawWindowAndRim(picture);

    // The title, centred over the window and clear of its rim.
    Font bold(fonts.bold);
    bold.SetSize(120, kWindowHeight / kWindowWidth);
    const int width = bold.Advance(source.title);
    const int centre = int(kMenuWindowX * kMenuBackSize);
    if (width > 2 * (kMenuBackSize - centre) - 20) throw MediaError(name + ": the title '" + source.title + "' is too wide");
    Coverage ink(kMenuBackSize, kMenuBackSize);
    const int baseline = int((kMenuWindowY - kMenuWindowRadius) * kMenuBackSize) - 48;
    bold.Draw(ink, centre - width / 2, baseline, source.title);
    Blend(picture, ink, kGold);
    picture.FlipRows();
    return picture;
}

Picture RenderMenuRings() {
    Picture picture(kMenuRingsSize, kMenuRingsSize, 4);
    const double centre = kMenuRingsSize / 2.0;
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            const double dx = x + 0.5 - centre, dy = y + 0.5 - centre;
            const double r = std::hypot(dx, dy);
            const double turn = (std::atan2(dy, dx) + kPi) / (2 * kPi);  // 0..1 round the ring
            const double fade = 1 - SmoothStep(380, 500, r);
            // Opaque: the picture covers the whole window while it turns, clear colour and all.
            const double glow = std::exp(-r / 160);
            Over(picture, x, y, {int(8 + 40 * glow), int(8 + 26 * glow), int(24 + 80 * glow)}, 1.0);
            for (const Ring& ring : kRings) {
                double lit = Cover(std::abs(r - ring.radius) - ring.width / 2);
                if (ring.dashes > 0) {
                    const double phase = std::fmod(turn * ring.dashes, 1.0);
                    const double along = std::min(phase, ring.dashShare - phase) * 2 * kPi * r / ring.dashes;
                    lit *= phase < ring.dashShare ? Cover(0.5 - along) : 0;
                }
                Over(picture, x, y, ring.colour, lit * ring.opacity * fade);
            }
        }
    }
    return picture;
}

std::vector<NamedPicture> RenderMenuButtons(const MenuSource& source, const SplashFonts& fonts,
                                            const std::string& name) {
    Font bold(fonts.bold);
    const double em = LabelEm(source, bold, name);
    std::vector<NamedPicture> pictures;
    for (const MenuButtonSource& button : source.buttons) {
        pictures.push_back({button.name, RenderButton(button, false, bold, em)});
        pictures.push_back({button.name + "_hover", RenderButton(button, true, bold, em)});
    }
    return pictures;
}

}  // namespace mediagen
