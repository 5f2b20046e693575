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

ConvexPieces ComputeConvexPieces(const float* points, uint32_t numVertices, const uint32_t* indices,
                                 uint32_t numTriangles, uint32_t density);

std::vector<uint8_t> EncodeCollisionMap(const ConvexPieces& pieces, uint32_t numVertices, uint32_t numTriangles,
                                        uint64_t meshHash, uint32_t density);

// What a map's bytes turned out to be.
enum class MapCheck { Valid, Corrupt, OtherMesh };

// Reads pieces from bytes, checking every length and value against the buffer and the mesh.
MapCheck DecodeCollisionMap(const uint8_t* data, size_t size, uint32_t numVertices, uint32_t numTriangles,
                            uint64_t meshHash, ConvexPieces& pieces);

}  // namespace phys
