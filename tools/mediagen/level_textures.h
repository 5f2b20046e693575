#pragma once
#include <array>
#include <string>

#include "tools/mediagen/tga_writer.h"

namespace mediagen {

// The sky cube's faces in the order of their file suffixes: posx, negx, posy, negy, posz, negz.
inline constexpr std::array<const char*, 6> kSkyFaces{"posx", "negx", "posy", "negy", "posz", "negz"};

// 256 x 256, 24-bit. Each texel shows the sky in the direction the cube map looks it up for,
// so the faces meet without seams: blue overhead, pale at the horizon, a warm glow towards +x
// and a dim haze below.
Picture MakeSkyFace(int face);

// 256 x 256, 24-bit, tiling: four by four stones of two shades with darker joints.
Picture MakeTrackTexture();

// 256 x 256, 32-bit: a 4 x 4 atlas of white puffs on transparent black. Frame f (0..15) sits
// in the 64-pixel cell at x = (3 - f % 4) * 64, stored row (f / 4) * 64, the way the particle
// system looks it up; frame 15 is the biggest and they shrink towards frame 0.
inline constexpr int kSmokeCell = 64;
Picture MakeSmokeAtlas();

}  // namespace mediagen
