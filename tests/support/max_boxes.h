#pragma once
// Boxes as 3DS objects, for tests and fuzz seeds that need a model with real geometry.
#include <string>
#include <utility>
#include <vector>

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
