#include "physics/triangle_mesh.h"

#include <BulletCollision/CollisionDispatch/btInternalEdgeUtility.h>
#include <BulletCollision/CollisionShapes/btTriangleInfoMap.h>

#include <cmath>
#include <cstring>

#include "physics/bullet_convert.h"
#include "physics/collision_map.h"
#include "physics/plane_profile.h"
#include "physics/stream.h"

namespace phys {

namespace {

constexpr uint32_t kCookedMagic = 0x314D4356;  // "VCM1"
// Far beyond any model of the game; keeps a corrupt count from asking for gigabytes.
constexpr uint32_t kMaxElements = 1u << 24;

}  // namespace

TriangleMesh::TriangleMesh(std::vector<float> pointsIn, std::vector<uint32_t> indicesIn)
    : points(std::move(pointsIn)), indices(std::move(indicesIn)) {
    identity = IdentifyMesh(points.data(), GetVertexCount(), indices.data(), GetTriangleCount());
}

TriangleMesh::~TriangleMesh() = default;

MapCheck TriangleMesh::LoadPMap(const PMap& map) {
    ConvexPieces read;
    const MapCheck check = DecodeCollisionMap(map.data, map.dataSize, identity, read);
    if (check != MapCheck::Valid) return check;
    mapLoaded = true;
    // Actors already made keep the pieces they collide with.
    if (dynamicShape) return MapCheck::Valid;
    pieces = std::move(read);
    piecesComputed = true;
    return MapCheck::Valid;
}

const std::vector<std::vector<Vector3>>& TriangleMesh::GetPieces() {
    if (!piecesComputed) {
        pieces = ComputeConvexPieces(points.data(), GetVertexCount(), indices.data(), GetTriangleCount(), 64);
        piecesComputed = true;
    }
    return pieces;
}

btCollisionShape* TriangleMesh::GetStaticShape(float margin) {
    if (!staticShape) {
        vertexArray = std::make_unique<btTriangleIndexVertexArray>(
            int(GetTriangleCount()), reinterpret_cast<int*>(indices.data()), 12, int(GetVertexCount()),
            points.data(), 12);
        staticShape = std::make_unique<btBvhTriangleMeshShape>(vertexArray.get(), true, true);
        staticShape->setMargin(margin);
        // Lets balls roll across the seams between triangles without bumping on inner edges.
        edgeInfo = std::make_unique<btTriangleInfoMap>();
        btGenerateInternalEdgeInfo(staticShape.get(), edgeInfo.get());
        profile = PlaneProfile::Build(points, indices);
        staticShape->setUserPointer(profile.get());
    }
    return staticShape.get();
}

btCollisionShape* TriangleMesh::GetDynamicShape(float margin) {
    if (!dynamicShape) BuildDynamicShape(margin);
    return dynamicShape && dynamicShape->getNumChildShapes() > 0 ? dynamicShape.get() : nullptr;
}

void TriangleMesh::BuildDynamicShape(float margin) {
    dynamicShape = std::make_unique<btCompoundShape>();
    btTransform identity;
    identity.setIdentity();
    for (const auto& piece : GetPieces()) {
        auto hull = std::make_unique<btConvexHullShape>();
        for (const Vector3& p : piece) hull->addPoint(ToBt(p), false);
        hull->recalcLocalAabb();
        hull->setMargin(margin);
        dynamicShape->addChildShape(identity, hull.get());
        pieceShapes.push_back(std::move(hull));
    }
}

bool CookTriangleMesh(const TriangleMeshDesc& desc, Stream& stream) {
    if (!desc.points || !desc.triangles || desc.numVertices == 0 || desc.numTriangles == 0) return false;
    if (desc.numVertices > kMaxElements || desc.numTriangles > kMaxElements) return false;
    if (desc.pointStrideBytes < 12 || desc.triangleStrideBytes < 12) return false;

    std::vector<float> points(size_t(desc.numVertices) * 3);
    const auto* pointBytes = static_cast<const uint8_t*>(desc.points);
    for (uint32_t v = 0; v < desc.numVertices; ++v) {
        std::memcpy(&points[3 * v], pointBytes + size_t(v) * desc.pointStrideBytes, 12);
        for (int i = 0; i < 3; ++i)
            if (!std::isfinite(points[3 * v + i])) return false;
    }
    std::vector<uint32_t> indices(size_t(desc.numTriangles) * 3);
    const auto* triangleBytes = static_cast<const uint8_t*>(desc.triangles);
    for (uint32_t t = 0; t < desc.numTriangles; ++t) {
        std::memcpy(&indices[3 * t], triangleBytes + size_t(t) * desc.triangleStrideBytes, 12);
        for (int i = 0; i < 3; ++i)
            if (indices[3 * t + i] >= desc.numVertices) return false;
    }

    stream.storeDword(kCookedMagic);
    stream.storeDword(desc.numVertices);
    stream.storeDword(desc.numTriangles);
    stream.storeBuffer(points.data(), uint32_t(points.size() * 4));
    stream.storeBuffer(indices.data(), uint32_t(indices.size() * 4));
    return true;
}

// Reads what CookTriangleMesh wrote. The stream holds no length, so the header is checked
// before anything else is read.
std::unique_ptr<TriangleMesh> ReadCookedMesh(const Stream& stream) {
    if (stream.readDword() != kCookedMagic) return nullptr;
    const uint32_t numVertices = stream.readDword();
    const uint32_t numTriangles = stream.readDword();
    if (numVertices == 0 || numTriangles == 0 || numVertices > kMaxElements || numTriangles > kMaxElements)
        return nullptr;
    std::vector<float> points(size_t(numVertices) * 3);
    std::vector<uint32_t> indices(size_t(numTriangles) * 3);
    stream.readBuffer(points.data(), uint32_t(points.size() * 4));
    stream.readBuffer(indices.data(), uint32_t(indices.size() * 4));
    for (uint32_t index : indices)
        if (index >= numVertices) return nullptr;
    return std::make_unique<TriangleMesh>(std::move(points), std::move(indices));
}

bool CreatePMap(PMap& map, TriangleMesh& mesh, uint32_t density, Stream* stream) {
    map = PMap{};
    if (density < kMinDensity || density > kMaxDensity) return false;
    const ConvexPieces pieces = ComputeConvexPieces(mesh.GetPoints().data(), mesh.GetVertexCount(),
                                                    mesh.GetIndices().data(), mesh.GetTriangleCount(), density);
    if (pieces.empty()) return false;
    const std::vector<uint8_t> bytes = EncodeCollisionMap(pieces, mesh.GetIdentity(), density);
    map.dataSize = uint32_t(bytes.size());
    map.data = new uint8_t[bytes.size()];
    std::memcpy(map.data, bytes.data(), bytes.size());
    if (stream) stream->storeBuffer(map.data, map.dataSize);
    return true;
}

void ReleasePMap(PMap& map) {
    delete[] map.data;
    map = PMap{};
}

}  // namespace phys
