// Cooking streams, collision maps and their cache files.
#include <sys/stat.h>
#include <unistd.h>

#include <cstring>
#include <fstream>
#include <iterator>

#include "physics/collision_map.h"
#include "physics/memory_streams.h"
#include "physics/pmap_cache.h"
#include "physics/triangle_mesh.h"
#include "physics/user_stream.h"
#include "tests/physics/physics_fixture.h"
#include "tests/support/tga_bytes.h"

namespace {

std::vector<uint8_t> FileBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

bool Exists(const std::string& path) { return std::filesystem::exists(path); }

TEST(MemoryStreams, WriteBufferGrowsByWhatIsNeededPlus4096) {
    MemoryWriteBuffer buffer;
    EXPECT_EQ(buffer.data, nullptr);
    const std::vector<uint8_t> bytes(4096, 0xAB);
    buffer.storeBuffer(bytes.data(), 10);
    EXPECT_EQ(buffer.currentSize, 10u);
    EXPECT_EQ(buffer.maxSize, 4106u);
    const uint8_t* first = buffer.data;
    buffer.storeBuffer(bytes.data(), 4096);
    EXPECT_EQ(buffer.currentSize, 4106u);
    EXPECT_EQ(buffer.maxSize, 4106u);
    EXPECT_EQ(buffer.data, first) << "no reallocation while the bytes fit";
    buffer.storeByte(7);
    EXPECT_EQ(buffer.maxSize, 8203u);
    EXPECT_EQ(buffer.data[4106], 7);
    EXPECT_EQ(buffer.data[4105], 0xAB);
    EXPECT_EQ(buffer.readDword(), 0u);
}

TEST(MemoryStreams, ReadBufferReturnsWhatTheWriterStoredInOrder) {
    const uint8_t one[] = {1, 0, 0, 0};
    MemoryReadBuffer reader(one);
    EXPECT_EQ(reader.readDword(), 1u);
    EXPECT_EQ(reader.buffer, one + 4);

    MemoryWriteBuffer writer;
    writer.storeByte(9).storeWord(300).storeDword(70000).storeFloat(1.5f).storeDouble(-2.25);
    MemoryReadBuffer back(writer.data);
    EXPECT_EQ(back.readByte(), 9);
    EXPECT_EQ(back.readWord(), 300);
    EXPECT_EQ(back.readDword(), 70000u);
    EXPECT_EQ(back.readFloat(), 1.5f);
    EXPECT_EQ(back.readDouble(), -2.25);
    EXPECT_EQ(writer.currentSize, 1u + 2 + 4 + 4 + 8);
}

TEST(MemoryStreams, UserStreamRoundTripsThroughAFileAndReadsZeroPastItsEnd) {
    TempDir folder;
    const std::string path = folder.File("values.bin");
    {
        UserStream out(path.c_str(), false);
        out.storeDword(0xDEADBEEF).storeFloat(3.0f);
    }
    EXPECT_EQ(FileBytes(path).size(), 8u);
    UserStream in(path.c_str(), true);
    EXPECT_EQ(in.readDword(), 0xDEADBEEFu);
    EXPECT_EQ(in.readFloat(), 3.0f);
    EXPECT_EQ(in.readDword(), 0u);
    UserStream missing(folder.File("none").c_str(), true);
    EXPECT_EQ(missing.fp, nullptr);
    EXPECT_EQ(missing.readByte(), 0);
}

TEST(PMapNames, FollowTheCountsWithWrapAround) {
    EXPECT_EQ(PMapFileName(100, 50), "1109400.pmap");
    EXPECT_EQ(PMapFileName(5000, 9000), "-1322339072.pmap");
    EXPECT_EQ(PMapFileName(77, 77), "0.pmap");
    EXPECT_EQ(PMapFileName(8, 12), "12320.pmap");
}

TEST(CollisionMaps, APaddleWheelBecomesOneConvexPiecePerPaddle) {
    const BoxesMesh wheel = PaddleWheel();
    const phys::ConvexPieces pieces = phys::ComputeConvexPieces(
        &wheel.vertices[0].x, wheel.VertexCount(), wheel.triangles.data(), wheel.TriangleCount(), 64);
    ASSERT_EQ(pieces.size(), 4u);
    for (const auto& piece : pieces) EXPECT_EQ(piece.size(), 8u);

    // A round part with many corners is trimmed to the density but keeps its extremes.
    GridMesh bowl(10, 20);
    for (Vector3& v : bowl.vertices) v.y = 0.05f * (v.x * v.x + v.z * v.z);
    const auto trimmed = phys::ComputeConvexPieces(&bowl.vertices[0].x, bowl.VertexCount(), bowl.triangles.data(),
                                                   bowl.TriangleCount(), 16);
    ASSERT_EQ(trimmed.size(), 1u);
    EXPECT_LE(trimmed[0].size(), 16u);
    float highest = 0;
    for (const Vector3& p : trimmed[0]) highest = std::max(highest, p.y);
    EXPECT_FLOAT_EQ(highest, 10.0f);
}

TEST(CollisionMaps, AreTrustedOnlyForTheirOwnMeshAndIntact) {
    const BoxesMesh wheel = PaddleWheel();
    const float* points = &wheel.vertices[0].x;
    const uint64_t hash = phys::HashMeshGeometry(points, wheel.VertexCount(), wheel.triangles.data(),
                                                 wheel.TriangleCount());
    const auto pieces =
        phys::ComputeConvexPieces(points, wheel.VertexCount(), wheel.triangles.data(), wheel.TriangleCount(), 64);
    const auto bytes = phys::EncodeCollisionMap(pieces, wheel.VertexCount(), wheel.TriangleCount(), hash, 64);

    phys::ConvexPieces read;
    ASSERT_EQ(phys::DecodeCollisionMap(bytes.data(), bytes.size(), wheel.VertexCount(), wheel.TriangleCount(), hash,
                                       read),
              phys::MapCheck::Valid);
    EXPECT_EQ(read.size(), 4u);
    EXPECT_EQ(phys::DecodeCollisionMap(bytes.data(), bytes.size(), wheel.VertexCount(), wheel.TriangleCount(),
                                       hash + 1, read),
              phys::MapCheck::OtherMesh);
    // Every truncation and every single flipped byte is caught.
    for (size_t size = 0; size < bytes.size(); ++size)
        ASSERT_EQ(phys::DecodeCollisionMap(bytes.data(), size, wheel.VertexCount(), wheel.TriangleCount(), hash, read),
                  phys::MapCheck::Corrupt)
            << size;
    for (size_t at = 0; at < bytes.size(); ++at) {
        auto damaged = bytes;
        damaged[at] ^= 0x40;
        ASSERT_NE(phys::DecodeCollisionMap(damaged.data(), damaged.size(), wheel.VertexCount(), wheel.TriangleCount(),
                                           hash, read),
                  phys::MapCheck::Valid)
            << at;
    }
    EXPECT_EQ(phys::DecodeCollisionMap(nullptr, 0, 1, 1, hash, read), phys::MapCheck::Corrupt);
}

class PMapCacheTest : public PhysicsTest {
protected:
    PMapCacheTest() : inside(folder.File("")) {}

    phys::Actor* Wheel(const BoxesMesh& mesh, bool usePMap = true, float mass = 1.0f) {
        return physics.CreateMeshActor(mesh.VertexCount(), mesh.vertices.data(), mesh.TriangleCount(),
                                       mesh.triangles.data(), mass, usePMap, 0);
    }

    TempDir folder;
    InTempFolder inside;
};

TEST_F(PMapCacheTest, TheFirstDynamicMeshWritesItsMapAndLaterOnesReadIt) {
    const BoxesMesh wheel = PaddleWheel();  // 32 vertices, 48 triangles
    const std::string name = PMapFileName(32, 48);
    ASSERT_NE(Wheel(wheel), nullptr);
    ASSERT_TRUE(Exists(name));
    const auto written = FileBytes(name);

    // A later run reads the file: making it unreadable as a map shows that it is read.
    ASSERT_NE(Wheel(wheel), nullptr);
    EXPECT_EQ(FileBytes(name), written);

    MemoryWriteBuffer cooked;
    phys::TriangleMeshDesc desc;
    desc.numVertices = wheel.VertexCount();
    desc.numTriangles = wheel.TriangleCount();
    desc.points = wheel.vertices.data();
    desc.triangles = wheel.triangles.data();
    ASSERT_TRUE(phys::CookTriangleMesh(desc, cooked));
    phys::TriangleMesh* mesh = physics.GetScene()->CreateTriangleMesh(MemoryReadBuffer(cooked.data));
    ASSERT_NE(mesh, nullptr);
    EXPECT_EQ(AttachCachedPMap(*mesh), PMapSource::File);
    EXPECT_TRUE(mesh->HasPMap());
    EXPECT_EQ(mesh->GetPieces().size(), 4u);

    // Deleted, it is computed and written again.
    std::filesystem::remove(name);
    EXPECT_EQ(AttachCachedPMap(*mesh), PMapSource::Computed);
    EXPECT_EQ(FileBytes(name), written);
}

TEST_F(PMapCacheTest, DamagedFilesAreReplacedAndOtherMeshesFilesKept) {
    BoxesMesh wheel = PaddleWheel();
    const std::string name = PMapFileName(wheel.VertexCount(), wheel.TriangleCount());
    std::ofstream(name, std::ios::binary) << "not a map at all";
    ASSERT_NE(Wheel(wheel), nullptr);
    const auto repaired = FileBytes(name);
    EXPECT_GT(repaired.size(), 100u);

    // Same counts, other geometry: its own map is computed; the file stays the first mesh's.
    BoxesMesh wider = PaddleWheel();
    for (Vector3& v : wider.vertices) v.x *= 2;
    phys::Actor* second = Wheel(wider);
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(FileBytes(name), repaired);

    // An empty file is damaged too.
    std::ofstream(name, std::ios::binary | std::ios::trunc).close();
    ASSERT_NE(Wheel(wheel), nullptr);
    EXPECT_EQ(FileBytes(name), repaired);
}

TEST_F(PMapCacheTest, StaticMeshesWithoutAMapTouchNoFileAndReadOnlyFoldersAreSkipped) {
    GridMesh floor(5, 2);
    ASSERT_NE(physics.CreateMeshActor(floor.VertexCount(), floor.vertices.data(), floor.TriangleCount(),
                                      floor.triangles.data(), 0, false, 0),
              nullptr);
    EXPECT_TRUE(std::filesystem::is_empty(std::filesystem::current_path()));

    // Where the cache cannot be written, the map is computed and used all the same. (A folder
    // in the file's place stands in for a read-only folder, which root could write anyway.)
    const BoxesMesh wheel = PaddleWheel();
    const std::string name = PMapFileName(wheel.VertexCount(), wheel.TriangleCount());
    std::filesystem::create_directory(name);
    phys::Actor* turbine = Wheel(wheel);
    ASSERT_NE(turbine, nullptr);
    EXPECT_TRUE(std::filesystem::is_directory(name));
    if (geteuid() != 0) {
        std::filesystem::remove(name);
        chmod(".", 0555);
        EXPECT_NE(Wheel(wheel), nullptr);
        chmod(".", 0755);
        EXPECT_FALSE(Exists(name));
    }
}

TEST_F(PMapCacheTest, AFlatMeshHasNothingForADynamicActorToCollideWith) {
    // A single line of corners has no hull; a dynamic actor cannot be made of it.
    BoxesMesh line;
    line.vertices = {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}};
    line.triangles = {0, 1, 2};
    EXPECT_EQ(Wheel(line), nullptr);
    EXPECT_EQ(physics.GetScene()->GetMeshCount(), 0u) << "the mesh that made nothing is not kept";
    EXPECT_NE(Wheel(line, false, 0), nullptr);  // as a static mesh it is fine
}

TEST_F(PMapCacheTest, AMeshGoesWithTheLastActorThatUsesIt) {
    // Levels loaded one after another must not pile up the meshes of their tracks.
    phys::Actor* wheel = Wheel(PaddleWheel());
    ASSERT_EQ(physics.GetScene()->GetMeshCount(), 1u);
    physics.ReleaseActor(wheel);
    EXPECT_EQ(physics.GetScene()->GetMeshCount(), 0u);

    GridMesh floor(5, 2);
    MemoryWriteBuffer cooked;
    phys::TriangleMeshDesc desc;
    desc.numVertices = floor.VertexCount();
    desc.numTriangles = floor.TriangleCount();
    desc.points = floor.vertices.data();
    desc.triangles = floor.triangles.data();
    ASSERT_TRUE(phys::CookTriangleMesh(desc, cooked));
    phys::Scene& scene = *physics.GetScene();
    phys::ActorDesc shared;
    shared.kind = phys::ShapeKind::Mesh;
    shared.mesh = scene.CreateTriangleMesh(MemoryReadBuffer(cooked.data));
    phys::Actor* first = scene.CreateActor(shared);
    phys::Actor* second = scene.CreateActor(shared);
    scene.ReleaseActor(first);
    EXPECT_EQ(scene.GetMeshCount(), 1u) << "still in use";
    Steps(2);
    scene.ReleaseActor(second);
    EXPECT_EQ(scene.GetMeshCount(), 0u);
}

}  // namespace
