#include "physics/collision_map.h"

#include <LinearMath/btConvexHullComputer.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <numeric>
#include <unordered_map>

namespace phys {

namespace {

constexpr uint32_t kMagic = 0x314D5056;  // "VPM1"
constexpr uint32_t kVersion = 1;

uint64_t Fnv(uint64_t hash, const void* bytes, size_t size) {
    const auto* p = static_cast<const uint8_t*>(bytes);
    for (size_t i = 0; i < size; ++i) hash = (hash ^ p[i]) * 1099511628211ull;
    return hash;
}

constexpr uint64_t kFnvStart = 14695981039346656037ull;

// Joins corner positions that are bit-for-bit the same (-0 and 0 count as one).
struct PositionKey {
    uint32_t bits[3];
    bool operator==(const PositionKey& o) const { return std::memcmp(bits, o.bits, sizeof bits) == 0; }
};
struct PositionKeyHash {
    size_t operator()(const PositionKey& k) const { return size_t(Fnv(kFnvStart, k.bits, sizeof k.bits)); }
};

PositionKey KeyOf(const float* p) {
    PositionKey key;
    for (int i = 0; i < 3; ++i) {
        const float value = p[i] + 0.0f;
        std::memcpy(&key.bits[i], &value, 4);
    }
    return key;
}

uint32_t Find(std::vector<uint32_t>& parent, uint32_t i) {
    while (parent[i] != i) {
        parent[i] = parent[parent[i]];
        i = parent[i];
    }
    return i;
}

// Keeps the hull points that lie furthest along `density` directions spread evenly over the
// sphere, so a trimmed piece still reaches the hull's extremes.
std::vector<Vector3> Trim(const std::vector<Vector3>& hull, uint32_t density) {
    if (density == 0 || hull.size() <= density) return hull;
    std::vector<bool> taken(hull.size(), false);
    std::vector<Vector3> kept;
    const double golden = 3.14159265358979323846 * (3.0 - std::sqrt(5.0));
    for (uint32_t d = 0; d < density; ++d) {
        const double y = 1.0 - 2.0 * (d + 0.5) / density;
        const double r = std::sqrt(1.0 - y * y);
        const double theta = golden * d;
        const double dx = r * std::cos(theta), dz = r * std::sin(theta);
        size_t best = 0;
        double bestDot = -1e300;
        for (size_t i = 0; i < hull.size(); ++i) {
            const double dot = dx * hull[i].x + y * hull[i].y + dz * hull[i].z;
            if (dot > bestDot) {
                bestDot = dot;
                best = i;
            }
        }
        if (!taken[best]) {
            taken[best] = true;
            kept.push_back(hull[best]);
        }
    }
    return kept;
}

class ByteWriter {
public:
    template <class T>
    void Put(T value) {
        const auto* p = reinterpret_cast<const uint8_t*>(&value);
        bytes.insert(bytes.end(), p, p + sizeof value);
    }
    std::vector<uint8_t> bytes;
};

class ByteReader {
public:
    ByteReader(const uint8_t* data, size_t size) : data(data), size(size) {}
    template <class T>
    bool Get(T& value) {
        if (size - position < sizeof value) return false;
        std::memcpy(&value, data + position, sizeof value);
        position += sizeof value;
        return true;
    }
    size_t Position() const { return position; }
    size_t Remaining() const { return size - position; }

private:
    const uint8_t* data;
    size_t size;
    size_t position = 0;
};

}  // namespace

uint64_t HashMeshGeometry(const float* points, uint32_t numVertices, const uint32_t* indices,
                          uint32_t numTriangles) {
    uint64_t hash = Fnv(kFnvStart, &numVertices, sizeof numVertices);
    hash = Fnv(hash, &numTriangles, sizeof numTriangles);
    hash = Fnv(hash, points, size_t(numVertices) * 12);
    return Fnv(hash, indices, size_t(numTriangles) * 12);
}

ConvexPieces ComputeConvexPieces(const float* points, uint32_t numVertices, const uint32_t* indices,
                                 uint32_t numTriangles, uint32_t density) {
    // Weld corners by position, then join the welded corners of every triangle.
    std::unordered_map<PositionKey, uint32_t, PositionKeyHash> welded;
    std::vector<uint32_t> canonical(numVertices);
    std::vector<uint32_t> firstVertex;
    for (uint32_t v = 0; v < numVertices; ++v) {
        auto [it, added] = welded.try_emplace(KeyOf(points + 3 * v), uint32_t(firstVertex.size()));
        if (added) firstVertex.push_back(v);
        canonical[v] = it->second;
    }
    std::vector<uint32_t> parent(firstVertex.size());
    std::iota(parent.begin(), parent.end(), 0u);
    for (uint32_t t = 0; t < numTriangles; ++t) {
        const uint32_t a = Find(parent, canonical[indices[3 * t]]);
        for (int corner = 1; corner < 3; ++corner) {
            const uint32_t b = Find(parent, canonical[indices[3 * t + corner]]);
            if (a != b) parent[b] = a;
        }
    }

    // Parts in the order of their first triangle; each gathers its distinct positions.
    std::unordered_map<uint32_t, size_t> partOfRoot;
    std::vector<std::vector<float>> partPoints;
    std::vector<bool> used(firstVertex.size(), false);
    for (uint32_t t = 0; t < numTriangles; ++t) {
        for (int corner = 0; corner < 3; ++corner) {
            const uint32_t c = canonical[indices[3 * t + corner]];
            if (used[c]) continue;
            used[c] = true;
            auto [it, added] = partOfRoot.try_emplace(Find(parent, c), partPoints.size());
            if (added) partPoints.emplace_back();
            const float* p = points + 3 * firstVertex[c];
            partPoints[it->second].insert(partPoints[it->second].end(), p, p + 3);
        }
    }

    ConvexPieces pieces;
    for (const auto& coords : partPoints) {
        const int count = int(coords.size() / 3);
        if (count < 3) continue;
        btConvexHullComputer computer;
        if (computer.compute(coords.data(), 12, count, 0, 0) < 0) continue;
        std::vector<Vector3> hull;
        for (int i = 0; i < computer.vertices.size(); ++i) {
            const btVector3& v = computer.vertices[i];
            hull.emplace_back(v.x(), v.y(), v.z());
        }
        if (hull.size() < 3) continue;
        pieces.push_back(Trim(hull, density));
    }
    return pieces;
}

MeshIdentity IdentifyMesh(const float* points, uint32_t numVertices, const uint32_t* indices, uint32_t numTriangles) {
    MeshIdentity mesh{numVertices, numTriangles, HashMeshGeometry(points, numVertices, indices, numTriangles)};
    for (uint32_t v = 0; v < numVertices; ++v) {
        const Vector3 p(points[3 * v], points[3 * v + 1], points[3 * v + 2]);
        mesh.low = v ? Vector3(std::min(mesh.low.x, p.x), std::min(mesh.low.y, p.y), std::min(mesh.low.z, p.z)) : p;
        mesh.high = v ? Vector3(std::max(mesh.high.x, p.x), std::max(mesh.high.y, p.y), std::max(mesh.high.z, p.z)) : p;
    }
    return mesh;
}

std::vector<uint8_t> EncodeCollisionMap(const ConvexPieces& pieces, const MeshIdentity& mesh, uint32_t density) {
    ByteWriter out;
    out.Put(kMagic);
    out.Put(kVersion);
    out.Put(mesh.numVertices);
    out.Put(mesh.numTriangles);
    out.Put(mesh.hash);
    out.Put(density);
    out.Put(uint32_t(pieces.size()));
    for (const auto& piece : pieces) {
        out.Put(uint32_t(piece.size()));
        for (const Vector3& p : piece) {
            out.Put(p.x);
            out.Put(p.y);
            out.Put(p.z);
        }
    }
    out.Put(Fnv(kFnvStart, out.bytes.data(), out.bytes.size()));
    return out.bytes;
}

namespace {

// Hull corners are the mesh's own corners, give or take the rounding of the hull computation.
bool WithinBounds(const Vector3& p, const MeshIdentity& mesh, double slack) {
    return p.x >= mesh.low.x - slack && p.x <= mesh.high.x + slack && p.y >= mesh.low.y - slack &&
           p.y <= mesh.high.y + slack && p.z >= mesh.low.z - slack && p.z <= mesh.high.z + slack;
}

// A piece whose points all lie on one line (or at one point) has no area: nothing collides with it.
bool Collapsed(const std::vector<Vector3>& piece, double slack) {
    const auto along = [](const Vector3& from, const Vector3& to, double d[3]) {
        d[0] = double(to.x) - from.x, d[1] = double(to.y) - from.y, d[2] = double(to.z) - from.z;
        return std::sqrt(d[0] * d[0] + d[1] * d[1] + d[2] * d[2]);
    };
    const Vector3& a = piece[0];
    double axis[3] = {0, 0, 0}, longest = 0, d[3];
    for (const Vector3& p : piece) {
        if (const double length = along(a, p, d); length > longest) {
            longest = length;
            for (int i = 0; i < 3; ++i) axis[i] = d[i] / length;
        }
    }
    if (longest <= slack) return true;
    for (const Vector3& p : piece) {
        along(a, p, d);
        const double t = d[0] * axis[0] + d[1] * axis[1] + d[2] * axis[2];
        const double off[3] = {d[0] - t * axis[0], d[1] - t * axis[1], d[2] - t * axis[2]};
        if (std::sqrt(off[0] * off[0] + off[1] * off[1] + off[2] * off[2]) > slack) return false;
    }
    return true;
}

}  // namespace

MapCheck DecodeCollisionMap(const uint8_t* data, size_t size, const MeshIdentity& mesh, ConvexPieces& pieces) {
    pieces.clear();
    if (!data || size < sizeof(uint64_t)) return MapCheck::Corrupt;
    const size_t body = size - sizeof(uint64_t);
    uint64_t checksum;
    std::memcpy(&checksum, data + body, sizeof checksum);
    if (checksum != Fnv(kFnvStart, data, body)) return MapCheck::Corrupt;

    ByteReader in(data, body);
    uint32_t magic, version, vertices, triangles, density, count;
    uint64_t hash;
    if (!in.Get(magic) || !in.Get(version) || !in.Get(vertices) || !in.Get(triangles) || !in.Get(hash) ||
        !in.Get(density) || !in.Get(count))
        return MapCheck::Corrupt;
    if (magic != kMagic || version != kVersion) return MapCheck::Corrupt;
    if (vertices != mesh.numVertices || triangles != mesh.numTriangles || hash != mesh.hash)
        return MapCheck::OtherMesh;
    if (density < kMinDensity || density > kMaxDensity) return MapCheck::Corrupt;
    // Every piece takes at least 4 bytes, and no mesh has more parts than triangles.
    if (count == 0 || count > mesh.numTriangles || count > in.Remaining() / 4) return MapCheck::Corrupt;

    const Vector3 size3 = mesh.high - mesh.low;
    const double extent = std::max({double(size3.x), double(size3.y), double(size3.z)});
    const double slack = 1e-4 * extent + 1e-6;
    ConvexPieces read(count);
    for (auto& piece : read) {
        uint32_t points;
        if (!in.Get(points) || points < 3 || points > density || points > in.Remaining() / 12) return MapCheck::Corrupt;
        piece.resize(points);
        for (Vector3& p : piece) {
            if (!in.Get(p.x) || !in.Get(p.y) || !in.Get(p.z)) return MapCheck::Corrupt;
            if (!WithinBounds(p, mesh, slack)) return MapCheck::Corrupt;  // also every NaN
        }
        if (Collapsed(piece, slack)) return MapCheck::Corrupt;
    }
    if (in.Remaining() != 0) return MapCheck::Corrupt;
    pieces = std::move(read);
    return MapCheck::Valid;
}

}  // namespace phys
