#include "tools/mediagen/texture_noise.h"

#include <algorithm>
#include <cmath>

namespace mediagen {

namespace {

double Fade(double t) { return t * t * (3 - 2 * t); }

double Lerp(double a, double b, double t) { return a + (b - a) * t; }

}  // namespace

Rgb Mix(const Rgb& a, const Rgb& b, double t) {
    return {Lerp(a[0], b[0], t), Lerp(a[1], b[1], t), Lerp(a[2], b[2], t)};
}

double SmoothStep(double from, double to, double x) { return Fade(std::clamp((x - from) / (to - from), 0.0, 1.0)); }

void PutRgb(Picture& picture, int x, int row, const Rgb& colour) {
    uint8_t* pixel = picture.Pixel(x, row);
    for (int c = 0; c < 3; ++c) pixel[c] = uint8_t(std::clamp(std::lround(colour[c]), 0L, 255L));
}

double Hash(uint32_t x, uint32_t y, uint32_t z, uint32_t seed) {
    uint32_t h = x * 0x8da6b343u ^ y * 0xd8163841u ^ z * 0xcb1ab31fu ^ seed * 0x9e3779b1u;
    h ^= h >> 16;
    h *= 0x7feb352du;
    h ^= h >> 15;
    h *= 0x846ca68bu;
    h ^= h >> 16;
    return double(h & 0xffffff) / double(0x1000000);
}

double ValueNoise(double x, double y, double z, uint32_t seed) {
    const double fx = std::floor(x), fy = std::floor(y), fz = std::floor(z);
    const uint32_t ix = uint32_t(int32_t(fx)), iy = uint32_t(int32_t(fy)), iz = uint32_t(int32_t(fz));
    const double tx = Fade(x - fx), ty = Fade(y - fy), tz = Fade(z - fz);
    auto at = [&](uint32_t i, uint32_t j, uint32_t k) { return Hash(ix + i, iy + j, iz + k, seed); };
    const double near = Lerp(Lerp(at(0, 0, 0), at(1, 0, 0), tx), Lerp(at(0, 1, 0), at(1, 1, 0), tx), ty);
    const double far = Lerp(Lerp(at(0, 0, 1), at(1, 0, 1), tx), Lerp(at(0, 1, 1), at(1, 1, 1), tx), ty);
    return Lerp(near, far, tz);
}

double FractalNoise(double x, double y, double z, int octaves, uint32_t seed) {
    double sum = 0, weight = 0, amplitude = 1, scale = 1;
    for (int octave = 0; octave < octaves; ++octave) {
        sum += amplitude * ValueNoise(x * scale, y * scale, z * scale, seed + uint32_t(octave));
        weight += amplitude;
        amplitude *= 0.5;
        scale *= 2;
    }
    return sum / weight;
}

double TilingNoise(double x, double y, int periodX, int periodY, uint32_t seed) {
    const double fx = std::floor(x), fy = std::floor(y);
    const int ix = int(fx), iy = int(fy);
    const double tx = Fade(x - fx), ty = Fade(y - fy);
    auto at = [&](int i, int j) {
        const int wx = ((ix + i) % periodX + periodX) % periodX, wy = ((iy + j) % periodY + periodY) % periodY;
        return Hash(uint32_t(wx), uint32_t(wy), 0, seed);
    };
    return Lerp(Lerp(at(0, 0), at(1, 0), tx), Lerp(at(0, 1), at(1, 1), tx), ty);
}

}  // namespace mediagen
