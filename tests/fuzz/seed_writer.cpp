// fuzz_seed_writer DIR: writes seeds that the game's own writers make into DIR/<target>/, so
// the fuzzers start from files that pass every check of the current formats: collision maps of
// the collision-map target's wheel, small models and small pictures. Exit 0, or 1 when a file
// cannot be made or written, or 2 on a usage error.
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "physics/triangle_mesh.h"
#include "tests/fuzz/wheel_mesh.h"
#include "tests/support/max_boxes.h"
#include "tools/mediagen/max_writer.h"
#include "tools/mediagen/tga_writer.h"

namespace fs = std::filesystem;

namespace {

bool Write(const fs::path& path, const std::vector<uint8_t>& bytes) {
    fs::create_directories(path.parent_path());
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
    if (!out.good()) std::fprintf(stderr, "fuzz_seed_writer: cannot write %s\n", path.c_str());
    return out.good();
}

bool WriteMaps(const fs::path& folder) {
    const WheelMesh wheel = MakeWheelMesh();
    // 64 is the game's density; 4 trims every box to fewer points than it has corners.
    for (uint32_t density : {64u, 4u}) {
        phys::TriangleMesh mesh(wheel.points, wheel.indices);
        phys::PMap map;
        if (!phys::CreatePMap(map, mesh, density)) {
            std::fprintf(stderr, "fuzz_seed_writer: the wheel has no collision map at density %u\n", density);
            return false;
        }
        const std::vector<uint8_t> bytes(map.data, map.data + map.dataSize);
        phys::ReleasePMap(map);
        if (!Write(folder / ("wheel-density-" + std::to_string(density) + ".pmap"), bytes)) return false;
    }
    return true;
}

bool WriteModels(const fs::path& folder) {
    mediagen::MaxObject square{.name = "square"};
    square.vertices = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
    square.faces = {{0, 1, 2}, {0, 2, 3}};
    square.texCoords = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
    // A chunk the reader does not know, inside the mesh, to be skipped.
    square.meshChunks = {{.id = 0x4160, .body = std::vector<uint8_t>(48, 0)}};
    const std::vector<std::pair<std::string, std::vector<mediagen::MaxObject>>> models = {
        {"box.3DS", {MaxBox("box", {-1, -1, -1}, {1, 1, 1})}},
        {"textured-square.3DS", {square}},
        {"light-then-boxes.3DS",
         {mediagen::MaxLight("sun", {0, 10, 0}), MaxBox("a", {0, 0, 0}, {1, 1, 1}), MaxBox("b", {2, 0, 0}, {3, 1, 1})}},
    };
    for (const auto& [name, objects] : models)
        if (!Write(folder / name, mediagen::WriteMaxFile(objects))) return false;
    return true;
}

bool WritePictures(const fs::path& folder) {
    const struct {
        int width, height, channels;
    } sizes[] = {{1, 1, 3}, {2, 2, 4}, {4, 2, 4}, {8, 8, 3}};
    for (const auto& size : sizes) {
        mediagen::Picture picture(size.width, size.height, size.channels);
        for (size_t i = 0; i < picture.pixels.size(); ++i) picture.pixels[i] = uint8_t(i * 37);
        const std::string name = std::to_string(size.width) + "x" + std::to_string(size.height) + "-" +
                                 std::to_string(size.channels * 8) + "bit.tga";
        if (!Write(folder / name, mediagen::EncodeTga(picture))) return false;
    }
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2 || std::string(argv[1]) == "--help") {
        std::fprintf(stderr, "usage: fuzz_seed_writer DIR   (writes DIR/fuzz_collision_map, fuzz_3ds, fuzz_tga)\n");
        return argc == 2 ? 0 : 2;
    }
    const fs::path root = argv[1];
    try {
        const bool written = WriteMaps(root / "fuzz_collision_map") && WriteModels(root / "fuzz_3ds") &&
                             WritePictures(root / "fuzz_tga");
        return written ? 0 : 1;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "fuzz_seed_writer: %s\n", e.what());
        return 1;
    }
}
