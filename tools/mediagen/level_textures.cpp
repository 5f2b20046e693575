#include "tools/mediagen/level_textures.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>

#include "tools/mediagen/texture_noise.h"

namespace mediagen {

namespace {

constexpr int kTrackSize = 256;
constexpr int kPlateWidth = 128, kPlateHeight = 64;  // four by two world units on a track

// Light for the texture's own relief, from the upper left and in front.
constexpr std::array<double, 3> kLight{-0.45, 0.55, 0.70};

double Lit(double nx, double ny, double nz) {
    const double length = std::sqrt(nx * nx + ny * ny + nz * nz);
    return (nx * kLight[0] + ny * kLight[1] + nz * kLight[2]) / length;
}

// How the relief of a plate at (lx, ly) from its lower left corner changes the light, as a
// factor: 1 on the flat face. `seam` is set between plates.
double PlateRelief(double lx, double ly, bool& seam) {
    constexpr double kSeam = 1.5, kBevel = 6.0;
    const double left = lx, right = kPlateWidth - lx, bottom = ly, top = kPlateHeight - ly;
    const double nearest = std::min({left, right, bottom, top});
    seam = nearest < kSeam;
    const double flat = Lit(0, 0, 1);
    if (nearest >= kBevel) {
        // A domed rivet near each corner.
        constexpr double kRivet = 3.2, kInset = 9.5;
        const double rx = std::min(left, right) - kInset, ry = std::min(bottom, top) - kInset;
        const double q = rx * rx + ry * ry;
        if (q >= kRivet * kRivet) return 1;
        const double sx = left < right ? rx : -rx, sy = bottom < top ? ry : -ry;  // from the rivet's centre
        const double nz = std::sqrt(kRivet * kRivet - q);
        return 0.15 + 1.1 * std::max(0.0, Lit(sx, sy, nz)) / flat;
    }
    // The bevel slopes down towards the nearest edge.
    double nx = 0, ny = 0;
    if (nearest == left) nx = -1;
    else if (nearest == right) nx = 1;
    else if (nearest == bottom) ny = -1;
    else ny = 1;
    return std::max(0.0, Lit(nx, ny, 1.2)) / flat;
}

}  // namespace

Picture MakeTrackTexture() {
    constexpr Rgb kFace{92, 102, 124};
    constexpr Rgb kSeamColour{16, 34, 42};  // a hint of teal in the gaps
    Picture picture(kTrackSize, kTrackSize, 3);
    for (int row = 0; row < kTrackSize; ++row) {
        const int band = row / kPlateHeight;
        const int shift = (band % 2) * kPlateWidth / 2;
        for (int x = 0; x < kTrackSize; ++x) {
            const int px = (x + kTrackSize - shift) % kTrackSize;
            const double lx = px % kPlateWidth + 0.5, ly = row % kPlateHeight + 0.5;
            bool seam = false;
            const double relief = PlateRelief(lx, ly, seam);
            if (seam) {
                PutRgb(picture, x, row, kSeamColour);
                continue;
            }
            const double tone = (Hash(uint32_t(px / kPlateWidth), uint32_t(band), 0, 7) - 0.5) * 16;
            // Brushed along x: streaks long in x and a pixel high, over a soft mottle of wear.
            const double streak = (TilingNoise(x / 32.0, row, 8, kTrackSize, 3) - 0.5) * 14;
            const double wear = (TilingNoise(x / 32.0, row / 32.0, 8, 8, 5) - 0.5) * 18;
            const double grain = (Hash(uint32_t(x), uint32_t(row), 0, 9) - 0.5) * 6;
            Rgb colour = kFace;
            for (double& c : colour) c = (c + tone + streak + wear + grain) * relief;
            PutRgb(picture, x, row, colour);
        }
    }
    return picture;
}

Picture MakeSmokeAtlas() {
    constexpr double kHalf = kSmokeCell / 2.0;
    Picture picture(kSmokeCell * 4, kSmokeCell * 4, 4);
    for (int frame = 0; frame < 16; ++frame) {
        const double age = frame / 15.0;  // 1 for a new particle
        const double radius = 11 + 16 * age;
        const double brightness = 0.35 + 0.65 * age;
        const double opacity = 0.5 + 0.45 * age;
        const int x0 = (3 - frame % 4) * kSmokeCell, y0 = (frame / 4) * kSmokeCell;
        for (int y = 0; y < kSmokeCell; ++y) {
            for (int x = 0; x < kSmokeCell; ++x) {
                const double dx = x + 0.5 - kHalf, dy = y + 0.5 - kHalf;
                // A round puff with a lumpy edge (noise round the angle, so it closes up) and
                // billows inside.
                const double turn = (std::atan2(dy, dx) / (2 * std::numbers::pi) + 0.5) * 8;
                const double edge = radius * (1 + 0.18 * (TilingNoise(turn, frame * 3.0, 8, 64, 41) - 0.5));
                const double t = std::hypot(dx, dy) / edge;
                if (t >= 1) continue;  // transparent black
                const double billow = 0.75 + 0.5 * FractalNoise(dx * 3 / radius, dy * 3 / radius, frame * 1.7, 3, 43);
                const double density = std::min(1.0, std::pow(1 - t * t, 1.8) * billow * 1.15);
                const double alpha = density * opacity * 255;
                uint8_t* pixel = picture.Pixel(x0 + x, y0 + y);
                pixel[0] = pixel[1] = pixel[2] = uint8_t(std::lround(alpha * brightness));
                pixel[3] = uint8_t(std::lround(alpha));
            }
        }
    }
    return picture;
}

}  // namespace mediagen
