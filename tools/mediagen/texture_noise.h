#pragma once
#include <array>
#include <cstdint>

#include "tools/mediagen/tga_writer.h"

// Seeded hashes and smooth noise for the generated media: the same values on every run and
// machine, with no hidden random state.
namespace mediagen {

using Rgb = std::array<double, 3>;

Rgb Mix(const Rgb& a, const Rgb& b, double t);
double SmoothStep(double from, double to, double x);

// Writes a colour in 0..255 (clamped) into the first three channels of a pixel.
void PutRgb(Picture& picture, int x, int row, const Rgb& colour);

// A fixed pseudo-random value in [0, 1) for a lattice point and seed.
double Hash(uint32_t x, uint32_t y, uint32_t z, uint32_t seed);

// Smooth value noise in [0, 1) over 3D space, one lattice cell per unit.
double ValueNoise(double x, double y, double z, uint32_t seed);

// Octaves of ValueNoise, each twice as fine and half as strong; in [0, 1).
double FractalNoise(double x, double y, double z, int octaves, uint32_t seed);

// Smooth noise in [0, 1) over a plane that repeats every periodX lattice cells along x and
// periodY along y, so a texture built from it tiles.
double TilingNoise(double x, double y, int periodX, int periodY, uint32_t seed);

}  // namespace mediagen
