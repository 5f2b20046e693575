#pragma once
// The mesh that collision maps are checked against: a paddle wheel like the game's turbines,
// a hub and four paddles, every box a separate part, so a valid map of it holds five pieces.
#include <cstdint>
#include <vector>

struct WheelMesh {
    std::vector<float> points;      // x, y, z per vertex
    std::vector<uint32_t> indices;  // three per triangle, counter-clockwise from outside
    uint32_t VertexCount() const { return uint32_t(points.size() / 3); }
    uint32_t TriangleCount() const { return uint32_t(indices.size() / 3); }
};

inline WheelMesh MakeWheelMesh() {
    // Low and high corners of each box.
    const float boxes[5][6] = {{-0.8f, -0.8f, -1.5f, 0.8f, 0.8f, 1.5f},
                               {1.0f, -0.25f, -1.5f, 4.5f, 0.25f, 1.5f},
                               {-4.5f, -0.25f, -1.5f, -1.0f, 0.25f, 1.5f},
                               {-0.25f, 1.0f, -1.5f, 0.25f, 4.5f, 1.5f},
                               {-0.25f, -4.5f, -1.5f, 0.25f, -1.0f, 1.5f}};
    // Corner i of a box is high in x when bit 0 is set, in y for bit 1, in z for bit 2.
    const uint32_t faces[12][3] = {{0, 2, 1}, {1, 2, 3}, {4, 5, 6}, {5, 7, 6}, {0, 1, 4}, {1, 5, 4},
                                   {2, 6, 3}, {3, 6, 7}, {0, 4, 2}, {2, 4, 6}, {1, 3, 5}, {3, 7, 5}};
    WheelMesh mesh;
    for (const auto& box : boxes) {
        const uint32_t base = mesh.VertexCount();
        for (int i = 0; i < 8; ++i) {
            mesh.points.push_back(box[i & 1 ? 3 : 0]);
            mesh.points.push_back(box[i & 2 ? 4 : 1]);
            mesh.points.push_back(box[i & 4 ? 5 : 2]);
        }
        for (const auto& face : faces)
            for (uint32_t corner : face) mesh.indices.push_back(base + corner);
    }
    return mesh;
}
