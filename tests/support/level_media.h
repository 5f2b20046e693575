#pragma once
// A Media/ folder with what a level needs to load: the fixed textures, a floor track and the
// turbine wheels (whose models the physics collides with). Other class models are left out:
// those objects work without them, only unseen.
#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/tga_bytes.h"
#include "tools/mediagen/max_writer.h"

// A closed box as one 3DS object, faces counter-clockwise from outside.
inline mediagen::MaxObject MaxBox(const std::string& name, Vector3 low, Vector3 high) {
    mediagen::MaxObject box{.name = name};
    for (int i = 0; i < 8; ++i)
        box.vertices.emplace_back(i & 1 ? high.x : low.x, i & 2 ? high.y : low.y, i & 4 ? high.z : low.z);
    box.faces = {{0, 2, 1}, {1, 2, 3}, {4, 5, 6}, {5, 7, 6}, {0, 1, 4}, {1, 5, 4},
                 {2, 6, 3}, {3, 6, 7}, {0, 4, 2}, {2, 4, 6}, {1, 3, 5}, {3, 7, 5}};
    return box;
}

// Boxes merged into one object: each box stays a separate part of the mesh.
inline mediagen::MaxObject MaxBoxes(const std::string& name, const std::vector<std::pair<Vector3, Vector3>>& boxes) {
    mediagen::MaxObject all{.name = name};
    for (const auto& [low, high] : boxes) {
        const mediagen::MaxObject one = MaxBox(name, low, high);
        const uint16_t base = uint16_t(all.vertices.size());
        all.vertices.insert(all.vertices.end(), one.vertices.begin(), one.vertices.end());
        for (auto face : one.faces) all.faces.push_back({uint16_t(face[0] + base), uint16_t(face[1] + base), uint16_t(face[2] + base)});
    }
    return all;
}

inline void WriteLevelMedia(const std::filesystem::path& root) {
    const std::filesystem::path media = root / "Media";
    const auto grey = [](int, int) { return Bgra{128, 128, 128, 255}; };
    for (const char* face : {"posx", "negx", "posy", "negy", "posz", "negz"})
        WriteTga32(media / (std::string("sky_") + face + ".tga"), 4, 4, grey);
    for (const char* name : {"UI_dialogue", "UI_dialogue_controls", "intro_t", "smoke", "UI_dialogue_win",
                             "UI_dialogue_lose"})
        WriteTga32(media / (std::string(name) + ".tga"), 4, 4, grey);
    // A floor whose top is y = 0, from x = -100 to 100.
    WriteBytes(media / "floor.3DS", mediagen::WriteMaxFile({MaxBox("floor", {-100, -4, -3}, {100, 0, 3})}));
    // Paddle wheels of radius 4.5 around a hub, every part separate.
    std::vector<std::pair<Vector3, Vector3>> wheel = {{{-0.8f, -0.8f, -1.5f}, {0.8f, 0.8f, 1.5f}},
                                                      {{1, -0.25f, -1.5f}, {4.5f, 0.25f, 1.5f}},
                                                      {{-4.5f, -0.25f, -1.5f}, {-1, 0.25f, 1.5f}},
                                                      {{-0.25f, 1, -1.5f}, {0.25f, 4.5f, 1.5f}},
                                                      {{-0.25f, -4.5f, -1.5f}, {0.25f, -1, 1.5f}}};
    WriteBytes(media / "turbine1.3DS", mediagen::WriteMaxFile({MaxBoxes("wheel", wheel)}));
    WriteBytes(media / "turbine2.3DS", mediagen::WriteMaxFile({MaxBoxes("wheel", wheel)}));
}
