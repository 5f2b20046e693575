#pragma once
#include <array>
#include <string>

#include "tools/mediagen/tga_writer.h"

namespace mediagen {

// The sky cube's faces in the order of their file suffixes: posx, negx, posy, negy, posz, negz.
inline constexpr std::array<const char*, 6> kSkyFaces{"posx", "negx", "posy", "negy", "posz", "negz"};
inline constexpr int kSkySize = 512;

// kSkySize square, 24-bit: a night sky. Each texel shows the sky in the direction the cube map
// looks it up for, so the faces meet without seams: near black-blue overhead, a violet haze at
// the horizon, dark below, a band of teal and violet clouds through -z (where the camera looks)
// and stars.
Picture MakeSkyFace(int face);

// 256 x 256, 24-bit, tiling: blue-grey metal plates of 128 x 64 pixels (4 x 2 world units on
// a track, so a wall 2 thick shows one row), every other row shifted by half a plate, with
// bevelled edges lit from the upper left, dark seams, a rivet in each corner and brushed grain.
// Stored row 0 is the bottom, as the texture lies on a track.
Picture MakeTrackTexture();

// 256 x 256, 32-bit: a 4 x 4 atlas of soft grey puffs on transparent black, their colour
// already multiplied by their alpha so they can be added to the picture. Frame f (0..15) sits
// in the 64-pixel cell at x = (3 - f % 4) * 64, stored row (f / 4) * 64, the way the particle
// system looks it up; frame 15, a particle's first, is the biggest and brightest, and they
// shrink and fade towards frame 0.
inline constexpr int kSmokeCell = 64;
Picture MakeSmokeAtlas();

}  // namespace mediagen
