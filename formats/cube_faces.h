#pragma once
#include <array>
#include <cstdint>
#include <string>

#include "formats/tga_reader.h"

// A cube map is six TGA files named by the path of any face: the last nine characters
// ("_posx.tga") are replaced by each face's suffix, in this order.
inline constexpr std::array<const char*, 6> kCubeFaceSuffixes = {"_posx.tga", "_negx.tga", "_posy.tga",
                                                                  "_negy.tga", "_posz.tga", "_negz.tga"};

// The six face paths for the path of any one face; false with `error` set (naming the path)
// when it is too short to end in a face suffix.
bool CubeFacePaths(const std::string& anyFace, std::array<std::string, 6>& faces, std::string& error);

// Reads and checks all six faces, in order; false with `error` naming the first face that
// fails, or the cube when the six together are too large to account for. `bytes` is the
// pixel bytes of all six.
bool ReadTgaCube(const std::string& anyFace, std::array<TgaImage, 6>& faces, int32_t& bytes, std::string& error);
