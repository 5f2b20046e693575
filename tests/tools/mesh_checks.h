#pragma once
// Geometric checks on loaded sub-models, shared by the mediagen model and track tests.
#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <numeric>
#include <string>
#include <vector>

#include "formats/model.h"

namespace mesh_checks {

using Key = std::array<float, 3>;
inline Key KeyOf(const Vector3& v) { return {v.x, v.y, v.z}; }

inline double Dot(const Vector3& a, const Vector3& b) { return double(a.x) * b.x + double(a.y) * b.y + double(a.z) * b.z; }

// "" when every edge, matched by corner positions, is met once in each direction, so the
// surface is closed and its faces agree on which side is out.
inline std::string OpenEdges(const SubModel& sub) {
    std::map<std::pair<Key, Key>, int> edges;
    for (const Triangle& t : sub.triangles) {
        const uint32_t corner[3] = {t.a, t.b, t.c};
        for (int k = 0; k < 3; ++k) {
            ++edges[{KeyOf(sub.vertices[corner[k]]), KeyOf(sub.vertices[corner[(k + 1) % 3]])}];
        }
    }
    for (const auto& [edge, count] : edges) {
        const auto back = edges.find({edge.second, edge.first});
        if (back == edges.end() || back->second != count) {
            const Key& a = edge.first;
            return "edge from (" + std::to_string(a[0]) + ", " + std::to_string(a[1]) + ", " + std::to_string(a[2]) +
                   ") has no partner running the other way";
        }
    }
    return "";
}

// Positive when the faces turn counter-clockwise seen from outside.
inline double SignedVolume(const SubModel& sub) {
    double volume = 0;
    for (const Triangle& t : sub.triangles) {
        volume += Dot(sub.vertices[t.a], sub.vertices[t.b].Cross(sub.vertices[t.c])) / 6;
    }
    return volume;
}

inline double SmallestArea(const SubModel& sub) {
    double smallest = 1e30;
    for (const Triangle& t : sub.triangles) {
        const Vector3 n = (sub.vertices[t.b] - sub.vertices[t.a]).Cross(sub.vertices[t.c] - sub.vertices[t.a]);
        smallest = std::min(smallest, std::sqrt(Dot(n, n)) / 2);
    }
    return smallest;
}

// Vertex indices grouped into parts joined by shared corner positions, the way the physics
// splits a dynamic mesh.
inline std::vector<std::vector<uint32_t>> Parts(const SubModel& sub) {
    std::vector<uint32_t> parent(sub.vertices.size());
    std::iota(parent.begin(), parent.end(), 0u);
    auto find = [&](uint32_t v) {
        while (parent[v] != v) v = parent[v] = parent[parent[v]];
        return v;
    };
    auto join = [&](uint32_t a, uint32_t b) { parent[find(a)] = find(b); };
    std::map<Key, uint32_t> first;
    for (uint32_t v = 0; v < sub.vertices.size(); ++v) {
        const auto [at, added] = first.emplace(KeyOf(sub.vertices[v]), v);
        if (!added) join(v, at->second);
    }
    for (const Triangle& t : sub.triangles) {
        join(t.a, t.b);
        join(t.b, t.c);
    }
    std::map<uint32_t, std::vector<uint32_t>> groups;
    for (uint32_t v = 0; v < sub.vertices.size(); ++v) groups[find(v)].push_back(v);
    std::vector<std::vector<uint32_t>> parts;
    for (auto& [root, members] : groups) parts.push_back(std::move(members));
    return parts;
}

// Whether every vertex of the part lies on the inner side of every face of the part.
inline bool IsConvex(const SubModel& sub, const std::vector<uint32_t>& part) {
    for (const Triangle& t : sub.triangles) {
        if (!std::binary_search(part.begin(), part.end(), t.a)) continue;
        const Vector3 a = sub.vertices[t.a];
        const Vector3 n = (sub.vertices[t.b] - a).Cross(sub.vertices[t.c] - a);
        for (uint32_t v : part) {
            if (Dot(n, sub.vertices[v] - a) > 1e-4) return false;
        }
    }
    return true;
}

inline double RadiusFromZAxis(const Vector3& v) { return std::hypot(double(v.x), double(v.y)); }

}  // namespace mesh_checks
