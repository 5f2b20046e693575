#pragma once
#include <cstdint>
#include <memory>
#include <vector>

#include "core/vector3.h"
#include "physics/collision_map.h"

class btCollisionShape;
class btCompoundShape;
class btTriangleIndexVertexArray;
class btBvhTriangleMeshShape;
struct btTriangleInfoMap;

namespace phys {

class PlaneProfile;
class Stream;

// Vertex and triangle arrays to cook; owned by the caller and only read.
struct TriangleMeshDesc {
    uint32_t numVertices = 0;
    uint32_t numTriangles = 0;
    uint32_t pointStrideBytes = 12;
    uint32_t triangleStrideBytes = 12;
    const void* points = nullptr;     // x, y, z floats
    const void* triangles = nullptr;  // three 32-bit vertex indices
};

// A collision map of a mesh, as bytes (see collision_map.h for what it holds).
struct PMap {
    uint32_t dataSize = 0;
    uint8_t* data = nullptr;
};

// A triangle mesh ready for collision. Static actors collide with its triangles; dynamic ones
// with its convex pieces, which come from an attached collision map or are computed on first
// use. Owned by the scene that read it.
class TriangleMesh {
public:
    explicit TriangleMesh(std::vector<float> points, std::vector<uint32_t> indices);
    ~TriangleMesh();
    TriangleMesh(const TriangleMesh&) = delete;
    TriangleMesh& operator=(const TriangleMesh&) = delete;

    uint32_t GetVertexCount() const { return uint32_t(points.size() / 3); }
    uint32_t GetTriangleCount() const { return uint32_t(indices.size() / 3); }
    const std::vector<float>& GetPoints() const { return points; }
    const std::vector<uint32_t>& GetIndices() const { return indices; }
    // Identifies the mesh's exact geometry, so a map made for another mesh is recognised.
    uint64_t GetHash() const { return identity.hash; }
    const MeshIdentity& GetIdentity() const { return identity; }

    // Attaches a map when the bytes are a valid map of this very mesh; otherwise attaches
    // nothing and says whether the bytes were damaged or belong to another mesh.
    MapCheck LoadPMap(const PMap& map);
    bool HasPMap() const { return mapLoaded; }
    // The convex pieces that dynamic actors of this mesh collide with.
    const std::vector<std::vector<Vector3>>& GetPieces();

    // Shapes for the scene's actors, with the given collision margin when first made; the
    // mesh owns them.
    btCollisionShape* GetStaticShape(float margin);
    btCollisionShape* GetDynamicShape(float margin);  // null when the mesh has no piece

private:
    void BuildDynamicShape(float margin);

    std::vector<float> points;
    std::vector<uint32_t> indices;
    MeshIdentity identity;
    bool mapLoaded = false;
    bool piecesComputed = false;
    std::vector<std::vector<Vector3>> pieces;

    std::unique_ptr<btTriangleIndexVertexArray> vertexArray;
    std::unique_ptr<btBvhTriangleMeshShape> staticShape;
    std::unique_ptr<PlaneProfile> profile;  // when the mesh is an outline drawn out along z
    std::unique_ptr<btTriangleInfoMap> edgeInfo;
    std::unique_ptr<btCompoundShape> dynamicShape;
    std::vector<std::unique_ptr<btCollisionShape>> pieceShapes;
};

// Writes the cooked form of the arrays into the stream. False, and nothing written, when the
// arrays are empty, too large, hold a non-finite coordinate or an index out of range.
bool CookTriangleMesh(const TriangleMeshDesc& desc, Stream& stream);

// Reads what CookTriangleMesh wrote; null when the stream does not start with a cooked mesh.
std::unique_ptr<TriangleMesh> ReadCookedMesh(const Stream& stream);

// Computes the mesh's collision map at the given density (the most points a convex piece may
// keep, kMinDensity to kMaxDensity). The bytes are allocated for the caller, who frees them with ReleasePMap. Also stores
// them into the stream when one is given.
bool CreatePMap(PMap& map, TriangleMesh& mesh, uint32_t density, Stream* stream = nullptr);
void ReleasePMap(PMap& map);

}  // namespace phys
