#include "formats/cube_faces.h"

#include <limits>

namespace {

constexpr size_t kSuffixLength = 9;  // "_posx.tga" and friends

}  // namespace

bool CubeFacePaths(const std::string& anyFace, std::array<std::string, 6>& faces, std::string& error) {
    if (anyFace.size() < kSuffixLength) {
        error = anyFace + ": too short to name a cube-map face (expected a name ending in _posx.tga)";
        return false;
    }
    const std::string base = anyFace.substr(0, anyFace.size() - kSuffixLength);
    for (size_t i = 0; i < faces.size(); ++i) faces[i] = base + kCubeFaceSuffixes[i];
    return true;
}

bool ReadTgaCube(const std::string& anyFace, std::array<TgaImage, 6>& faces, int32_t& bytes, std::string& error) {
    std::array<std::string, 6> paths;
    if (!CubeFacePaths(anyFace, paths, error)) return false;
    int64_t total = 0;
    for (size_t i = 0; i < paths.size(); ++i) {
        if (!ReadTga(paths[i], faces[i], error)) return false;
        total += faces[i].PixelBytes();
    }
    // Each face fits an int32 but six together may not.
    if (total > std::numeric_limits<int32_t>::max()) {
        error = anyFace + ": the six faces together are too large to load";
        return false;
    }
    bytes = int32_t(total);
    return true;
}
