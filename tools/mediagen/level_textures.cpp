#include "tools/mediagen/level_textures.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <vector>

namespace mediagen {

namespace {

constexpr int kSize = 256;

using Rgb = std::array<double, 3>;

Rgb Mix(const Rgb& a, const Rgb& b, double t) {
    return {a[0] + (b[0] - a[0]) * t, a[1] + (b[1] - a[1]) * t, a[2] + (b[2] - a[2]) * t};
}

void Put(Picture& picture, int x, int row, const Rgb& colour) {
    uint8_t* pixel = picture.Pixel(x, row);
    for (int c = 0; c < 3; ++c) pixel[c] = uint8_t(std::clamp(std::lround(colour[c]), 0L, 255L));
}

// A fixed pseudo-random value in [0, 1) for a lattice point; the same on every machine.
double Hash(uint32_t x, uint32_t y, uint32_t seed) {
    uint32_t h = x * 0x8da6b343u ^ y * 0xd8163841u ^ seed * 0xcb1ab31fu;
    h ^= h >> 13;
    h *= 0x5bd1e995u;
    h ^= h >> 15;
    return double(h & 0xffffff) / double(0x1000000);
}

// Smooth noise in [0, 1) that repeats every 256 pixels, so the texture tiles.
double TilingNoise(int x, int y, int cell, uint32_t seed) {
    const int cells = kSize / cell;
    const int cx = x / cell, cy = y / cell;
    const double fx = double(x % cell) / cell, fy = double(y % cell) / cell;
    auto at = [&](int i, int j) { return Hash(uint32_t((cx + i) % cells), uint32_t((cy + j) % cells), seed); };
    const double sx = fx * fx * (3 - 2 * fx), sy = fy * fy * (3 - 2 * fy);
    const double top = at(0, 0) + (at(1, 0) - at(0, 0)) * sx;
    const double bottom = at(0, 1) + (at(1, 1) - at(0, 1)) * sx;
    return top + (bottom - top) * sy;
}

// Where a texel of a cube face looks: the cube-map convention, with stored row 0 at t = 0.
std::array<double, 3> FaceDirection(int face, int x, int row) {
    const double sc = 2 * (x + 0.5) / kSize - 1, tc = 2 * (row + 0.5) / kSize - 1;
    std::array<double, 3> d{};
    switch (face) {
        case 0: d = {1, -tc, -sc}; break;
        case 1: d = {-1, -tc, sc}; break;
        case 2: d = {sc, 1, tc}; break;
        case 3: d = {sc, -1, -tc}; break;
        case 4: d = {sc, -tc, 1}; break;
        default: d = {-sc, -tc, -1}; break;
    }
    const double length = std::sqrt(d[0] * d[0] + d[1] * d[1] + d[2] * d[2]);
    return {d[0] / length, d[1] / length, d[2] / length};
}

Rgb SkyColour(const std::array<double, 3>& d) {
    constexpr Rgb kZenith{48, 92, 172};
    constexpr Rgb kCoolHorizon{182, 204, 234};
    constexpr Rgb kWarmHorizon{236, 214, 186};
    constexpr Rgb kGround{62, 70, 86};
    const Rgb horizon = Mix(kCoolHorizon, kWarmHorizon, std::clamp((d[0] * 0.7 + d[2] * 0.3 + 1) / 2, 0.0, 1.0));
    Rgb colour = d[1] >= 0 ? Mix(horizon, kZenith, std::pow(d[1], 0.6)) : Mix(horizon, kGround, std::pow(-d[1], 0.5));
    // The glow of a low sun towards +x.
    const double sx = 0.92, sy = 0.3, sz = 0.25;
    const double toward = std::max(0.0, (d[0] * sx + d[1] * sy + d[2] * sz) / std::sqrt(sx * sx + sy * sy + sz * sz));
    const double glow = std::pow(toward, 12);
    for (int c = 0; c < 3; ++c) colour[c] += glow * std::array<double, 3>{70, 50, 20}[c];
    return colour;
}

}  // namespace

Picture MakeSkyFace(int face) {
    Picture picture(kSize, kSize, 3);
    for (int row = 0; row < kSize; ++row) {
        for (int x = 0; x < kSize; ++x) Put(picture, x, row, SkyColour(FaceDirection(face, x, row)));
    }
    return picture;
}

Picture MakeTrackTexture() {
    constexpr int kStone = 64;
    constexpr int kJoint = 2;  // on each side of a stone's edge
    constexpr Rgb kLight{152, 142, 126};
    constexpr Rgb kDark{130, 124, 113};
    constexpr Rgb kJointColour{86, 80, 72};
    Picture picture(kSize, kSize, 3);
    for (int row = 0; row < kSize; ++row) {
        for (int x = 0; x < kSize; ++x) {
            const int sx = x / kStone, sy = row / kStone;
            const int ex = x % kStone, ey = row % kStone;
            const bool joint = ex < kJoint || ex >= kStone - kJoint || ey < kJoint || ey >= kStone - kJoint;
            const double tone = (Hash(uint32_t(sx), uint32_t(sy), 7) - 0.5) * 14;
            const double grain = (TilingNoise(x, row, 16, 1) - 0.5) * 22 + (Hash(uint32_t(x), uint32_t(row), 3) - 0.5) * 8;
            Rgb colour = joint ? kJointColour : ((sx + sy) % 2 == 0 ? kLight : kDark);
            for (double& c : colour) c += grain + (joint ? 0 : tone);
            Put(picture, x, row, colour);
        }
    }
    return picture;
}

Picture MakeSmokeAtlas() {
    Picture picture(kSize, kSize, 4);
    for (int frame = 0; frame < 16; ++frame) {
        const int x0 = (3 - frame % 4) * kSmokeCell, y0 = (frame / 4) * kSmokeCell;
        const double radius = 9 + 19.0 * frame / 15;
        const double opacity = 0.55 + 0.4 * frame / 15;
        // A big middle blob and five lumps round it, turned a little differently per frame.
        struct Blob {
            double x, y, r;
        };
        std::vector<Blob> blobs{{0, 0, radius * 0.7}};
        for (int k = 0; k < 5; ++k) {
            const double t = 2 * std::numbers::pi * k / 5 + frame * 0.7;
            blobs.push_back({std::cos(t) * radius * 0.38, std::sin(t) * radius * 0.38, radius * 0.55});
        }
        for (int y = 0; y < kSmokeCell; ++y) {
            for (int x = 0; x < kSmokeCell; ++x) {
                const double px = x + 0.5 - kSmokeCell / 2.0, py = y + 0.5 - kSmokeCell / 2.0;
                double density = 0;
                for (const Blob& blob : blobs) {
                    const double q = (px - blob.x) * (px - blob.x) + (py - blob.y) * (py - blob.y);
                    const double f = 1 - q / (blob.r * blob.r);
                    if (f > 0) density += f * f;
                }
                // Thickest in the middle, thinning out softly to nothing at the edge.
                const long alpha = std::lround((1 - std::exp(-2 * density)) * opacity * 255);
                if (alpha <= 0) continue;  // transparent black
                uint8_t* pixel = picture.Pixel(x0 + x, y0 + y);
                pixel[0] = pixel[1] = pixel[2] = 255;
                pixel[3] = uint8_t(alpha);
            }
        }
    }
    return picture;
}

}  // namespace mediagen
