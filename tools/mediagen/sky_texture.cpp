#include <algorithm>
#include <cmath>

#include "tools/mediagen/level_textures.h"
#include "tools/mediagen/texture_noise.h"

namespace mediagen {

namespace {

using Direction = std::array<double, 3>;

double Dot(const Direction& a, const Direction& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

Direction Normalised(const Direction& d) {
    const double length = std::sqrt(Dot(d, d));
    return {d[0] / length, d[1] / length, d[2] / length};
}

// Where a texel of a cube face looks: the cube-map convention, with stored row 0 at t = 0.
Direction FaceDirection(int face, int x, int row) {
    const double sc = 2 * (x + 0.5) / kSkySize - 1, tc = 2 * (row + 0.5) / kSkySize - 1;
    switch (face) {
        case 0: return Normalised({1, -tc, -sc});
        case 1: return Normalised({-1, -tc, sc});
        case 2: return Normalised({sc, 1, tc});
        case 3: return Normalised({sc, -1, -tc});
        case 4: return Normalised({sc, -tc, 1});
        default: return Normalised({-sc, -tc, -1});
    }
}

constexpr Rgb kZenith{8, 12, 40};
constexpr Rgb kHorizon{34, 30, 82};
constexpr Rgb kNadir{12, 6, 24};
constexpr Rgb kTeal{30, 150, 160};
constexpr Rgb kViolet{110, 48, 160};
constexpr Rgb kGlow{235, 170, 120};  // the warm cores of the brightest clouds

// The Milky-Way-like band of clouds runs round the great circle square to this axis, through
// -z, the way the camera looks.
const Direction kBandAxis = Normalised({0.8, 0.6, 0.0});

// Night from black-blue overhead to a violet haze at the horizon and dark below; smooth
// through the horizon, so it shows no line there.
Rgb Gradient(const Direction& d) {
    const Rgb far = Mix(kNadir, kZenith, SmoothStep(-0.5, 0.5, d[1]));
    return Mix(far, kHorizon, std::exp(-d[1] * d[1] / 0.09));
}

// Soft clouds of 3D noise, thickest along the band, teal and violet with a few warm cores.
Rgb Nebula(const Direction& d, Rgb colour) {
    const double off = Dot(d, kBandAxis);
    const double band = std::exp(-off * off / 0.12);
    const double cloud = FractalNoise(d[0] * 2.2 + 7.3, d[1] * 2.2 - 1.9, d[2] * 2.2 + 3.1, 5, 11);
    const double hue = FractalNoise(d[0] * 1.3 - 4.0, d[1] * 1.3 + 2.2, d[2] * 1.3 + 8.5, 3, 23);
    const double dust = FractalNoise(d[0] * 4.0 + 1.7, d[1] * 4.0 + 5.1, d[2] * 4.0 - 2.6, 4, 37);
    const double density = SmoothStep(0.36, 0.78, cloud) * (0.25 + 0.75 * band);
    const Rgb tint = Mix(kViolet, kTeal, SmoothStep(0.38, 0.62, hue));
    const double core = SmoothStep(0.62, 0.85, cloud) * band;
    const double clear = 1 - 0.55 * SmoothStep(0.5, 0.72, dust) * band;  // dark lanes in the band
    for (int c = 0; c < 3; ++c) colour[c] = (colour[c] + tint[c] * density * 0.6 + kGlow[c] * core * 0.22) * clear;
    return colour;
}

// Stars as small round spots: each cell of a 3D lattice of `cells` per unit holds at most one,
// at a point of its own; a star shows where that point lies near the sphere the texel looks
// along, so the same star is drawn on whichever faces it spans.
Rgb Stars(const Direction& d, double cells, double chance, double size, double brightness, uint32_t seed) {
    const double p[3] = {d[0] * cells, d[1] * cells, d[2] * cells};
    Rgb light{0, 0, 0};
    int low[3];
    for (int a = 0; a < 3; ++a) low[a] = int(std::floor(p[a] - 0.5));
    for (int i = 0; i < 8; ++i) {
        const int c[3] = {low[0] + (i & 1), low[1] + ((i >> 1) & 1), low[2] + ((i >> 2) & 1)};
        const uint32_t x = uint32_t(c[0]), y = uint32_t(c[1]), z = uint32_t(c[2]);
        if (Hash(x, y, z, seed) >= chance) continue;
        const double s[3] = {c[0] + Hash(x, y, z, seed + 1), c[1] + Hash(x, y, z, seed + 2), c[2] + Hash(x, y, z, seed + 3)};
        const double q = (p[0] - s[0]) * (p[0] - s[0]) + (p[1] - s[1]) * (p[1] - s[1]) + (p[2] - s[2]) * (p[2] - s[2]);
        const double bright = std::pow(Hash(x, y, z, seed + 4), 5);
        const double sigma = size * (1 + 1.2 * bright);
        if (q >= 0.25) continue;  // the next cell over draws what lies further out
        const double glow = brightness * (0.25 + 0.9 * bright) * std::exp(-q / (2 * sigma * sigma)) * SmoothStep(0.25, 0.12, q);
        const Rgb tint = Mix({190, 210, 255}, {255, 228, 180}, Hash(x, y, z, seed + 5));
        for (int k = 0; k < 3; ++k) light[k] += tint[k] * glow;
    }
    return light;
}

Rgb SkyColour(const Direction& d) {
    Rgb colour = Nebula(d, Gradient(d));
    const double off = Dot(d, kBandAxis);
    const double band = std::exp(-off * off / 0.12);
    const Rgb bright = Stars(d, 48, 0.3, 0.09, 1.0, 101);
    const Rgb faint = Stars(d, 120, 0.12 + 0.3 * band, 0.1, 0.45, 211);
    for (int c = 0; c < 3; ++c) colour[c] += bright[c] + faint[c];
    return colour;
}

}  // namespace

Picture MakeSkyFace(int face) {
    Picture picture(kSkySize, kSkySize, 3);
    for (int row = 0; row < kSkySize; ++row) {
        for (int x = 0; x < kSkySize; ++x) PutRgb(picture, x, row, SkyColour(FaceDirection(face, x, row)));
    }
    return picture;
}

}  // namespace mediagen
