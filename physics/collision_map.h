#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "core/vector3.h"

// A collision map is what a dynamic triangle mesh collides with: one convex hull for every
// connected part of the mesh (parts joined by shared corner positions), each trimmed to at
// most `density` points. Computing it takes hull construction over every part, so the game
// keeps maps on disk.
//
// Layout (little-endian): "VPM1", version, vertex count, triangle count, a 64-bit hash of the
// mesh's exact geometry, density, piece count, then for every piece its point count and
// points (x, y, z floats), and last a 64-bit checksum of everything before it. A map is only
// trusted for the mesh it was made from.
namespace phys {

using ConvexPieces = std::vector<std::vector<Vector3>>;

uint64_t HashMeshGeometry(const float* points, uint32_t numVertices, const uint32_t* indices,
                          uint32_t numTriangles);

// What a map is checked against: the mesh's counts, its geometry's hash and its bounds.
struct MeshIdentity {
    uint32_t numVertices = 0, numTriangles = 0;
    uint64_t hash = 0;
    Vector3 low{0, 0, 0}, high{0, 0, 0};
};
MeshIdentity IdentifyMesh(const float* points, uint32_t numVertices, const uint32_t* indices, uint32_t numTriangles);

// The densities a map may have been made with; the game makes its maps at 64.
constexpr uint32_t kMinDensity = 4, kMaxDensity = 256;

ConvexPieces ComputeConvexPieces(const float* points, uint32_t numVertices, const uint32_t* indices,
                                 uint32_t numTriangles, uint32_t density);

std::vector<uint8_t> EncodeCollisionMap(const ConvexPieces& pieces, const MeshIdentity& mesh, uint32_t density);

// What a map's bytes turned out to be.
enum class MapCheck { Valid, Corrupt, OtherMesh };

// Reads pieces from bytes, checking every length and value against the buffer and the mesh. A
// map of this mesh is still Corrupt when its density is outside kMinDensity..kMaxDensity, a
// piece has more points than the density or fewer than 3, a point lies outside the mesh's
// bounds, a piece has collapsed to a point or a line, or there is no piece at all: such a
// map would make collision slow or silently absent.
MapCheck DecodeCollisionMap(const uint8_t* data, size_t size, const MeshIdentity& mesh, ConvexPieces& pieces);

}  // namespace phys
