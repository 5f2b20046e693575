// Collision maps of dynamic meshes and their cache files.
#include <sys/stat.h>
#include <unistd.h>

#include "physics/collision_map.h"
#include "physics/memory_streams.h"
#include "physics/pmap_cache.h"
#include "physics/triangle_mesh.h"
#include "tests/physics/physics_fixture.h"
#include "tests/support/files.h"

namespace {

namespace fs = std::filesystem;

TEST(CollisionMaps, APaddleWheelBecomesOneConvexPiecePerPaddle) {
    const TestMesh wheel = PaddleWheel();
    const phys::ConvexPieces pieces = phys::ComputeConvexPieces(
        &wheel.vertices[0].x, wheel.VertexCount(), wheel.triangles.data(), wheel.TriangleCount(), 64);
    ASSERT_EQ(pieces.size(), 4u);
    for (const auto& piece : pieces) EXPECT_EQ(piece.size(), 8u);

    // A round part with many corners is trimmed to the density but keeps its extremes.
    TestMesh bowl = TestMesh::Grid(10, 20);
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
    const TestMesh wheel = PaddleWheel();
    const float* points = &wheel.vertices[0].x;
    const uint32_t vertices = wheel.VertexCount(), triangles = wheel.TriangleCount();
    const phys::MeshIdentity mesh = phys::IdentifyMesh(points, vertices, wheel.triangles.data(), triangles);
    const auto bytes = phys::EncodeCollisionMap(
        phys::ComputeConvexPieces(points, vertices, wheel.triangles.data(), triangles, 64), mesh, 64);

    phys::ConvexPieces read;
    ASSERT_EQ(phys::DecodeCollisionMap(bytes.data(), bytes.size(), mesh, read), phys::MapCheck::Valid);
    EXPECT_EQ(read.size(), 4u);
    phys::MeshIdentity other = mesh;
    ++other.hash;
    EXPECT_EQ(phys::DecodeCollisionMap(bytes.data(), bytes.size(), other, read), phys::MapCheck::OtherMesh);
    // Every truncation and every single flipped byte is caught.
    for (size_t size = 0; size < bytes.size(); ++size)
        ASSERT_EQ(phys::DecodeCollisionMap(bytes.data(), size, mesh, read), phys::MapCheck::Corrupt) << size;
    for (size_t at = 0; at < bytes.size(); ++at) {
        auto damaged = bytes;
        damaged[at] ^= 0x40;
        ASSERT_NE(phys::DecodeCollisionMap(damaged.data(), damaged.size(), mesh, read), phys::MapCheck::Valid) << at;
    }
    EXPECT_EQ(phys::DecodeCollisionMap(nullptr, 0, mesh, read), phys::MapCheck::Corrupt);
}

// Maps with a good checksum can still be nonsense for their mesh: slow to collide with, or
// colliding with nothing. Those are refused, so the game computes the map anew.
TEST(CollisionMaps, WellFormedNonsenseIsRefused) {
    const TestMesh wheel = PaddleWheel();  // spans -4.5 to 4.5 in x and y, -1 to 1 in z
    const phys::MeshIdentity mesh =
        phys::IdentifyMesh(&wheel.vertices[0].x, wheel.VertexCount(), wheel.triangles.data(), wheel.TriangleCount());
    const std::vector<Vector3> paddle = {{0.5f, -0.25f, -1}, {4.5f, -0.25f, -1}, {4.5f, 0.25f, -1},
                                         {0.5f, 0.25f, 1},   {4.5f, 0.25f, 1},   {0.5f, -0.25f, 1}};
    std::vector<Vector3> crowd;  // 20,000 points on a circle inside the wheel
    for (int i = 0; i < 20000; ++i) crowd.emplace_back(4 * std::cos(i * 0.001f), 4 * std::sin(i * 0.001f), 0.5f);
    const struct {
        const char* what;
        phys::ConvexPieces pieces;
        uint32_t density;
    } cases[] = {
        {"a density of 0 lifting the cap on points", {crowd}, 0},
        {"more points than the density", {crowd}, 64},
        {"a density beyond the largest", {paddle}, 100000},
        {"no piece at all", {}, 64},
        {"a piece collapsed to a point", {{{1, 1, 0}, {1, 1, 0}, {1, 1, 0}, {1, 1, 0}}}, 64},
        {"a piece collapsed to a line", {{{0, 0, 0}, {1, 1, 0}, {2, 2, 0}, {3, 3, 0}}}, 64},
        {"a piece far wider than the mesh", {{{-3.4e38f, 0, 0}, {3.4e38f, 0, 0}, {0, 3.4e38f, 0}, {0, 0, 1}}}, 64},
        {"a point just outside the mesh", {{paddle[0], paddle[1], paddle[2], {4.6f, 0, 0}}}, 64},
    };
    phys::ConvexPieces read;
    for (const auto& c : cases) {
        const auto bytes = phys::EncodeCollisionMap(c.pieces, mesh, c.density);
        EXPECT_EQ(phys::DecodeCollisionMap(bytes.data(), bytes.size(), mesh, read), phys::MapCheck::Corrupt) << c.what;
    }
    const auto sane = phys::EncodeCollisionMap({paddle}, mesh, 64);
    EXPECT_EQ(phys::DecodeCollisionMap(sane.data(), sane.size(), mesh, read), phys::MapCheck::Valid);
}

class PMapCacheTest : public PhysicsTest {
protected:
    PMapCacheTest() : inside(folder.File("")) {}

    phys::Actor* Wheel(const TestMesh& mesh, bool usePMap = true, float mass = 1.0f) {
        return MakeMeshActor(physics, mesh, mass, usePMap);
    }
    // A mesh cooked and read into the scene, as a mesh actor makes it.
    phys::TriangleMesh* Cooked(const TestMesh& source) {
        MemoryWriteBuffer cooked;
        phys::TriangleMeshDesc desc;
        desc.numVertices = source.VertexCount();
        desc.numTriangles = source.TriangleCount();
        desc.points = source.vertices.data();
        desc.triangles = source.triangles.data();
        EXPECT_TRUE(phys::CookTriangleMesh(desc, cooked));
        return physics.GetScene()->CreateTriangleMesh(MemoryReadBuffer(cooked.data));
    }

    TempDir folder;
    InTempFolder inside;
};

TEST_F(PMapCacheTest, TheFirstDynamicMeshWritesItsMapAndLaterOnesReadIt) {
    const TestMesh wheel = PaddleWheel();
    const std::string name = PMapFileName(wheel.VertexCount(), wheel.TriangleCount());
    ASSERT_NE(Wheel(wheel), nullptr);
    const auto written = ReadBytes(name);
    ASSERT_FALSE(written.empty());
    ASSERT_NE(Wheel(wheel), nullptr);
    EXPECT_EQ(ReadBytes(name), written);

    phys::TriangleMesh* mesh = Cooked(wheel);
    ASSERT_NE(mesh, nullptr);
    EXPECT_EQ(AttachCachedPMap(*mesh), PMapSource::File);
    EXPECT_TRUE(mesh->HasPMap());
    EXPECT_EQ(mesh->GetPieces().size(), 4u);

    // Deleted, it is computed and written again.
    fs::remove(name);
    EXPECT_EQ(AttachCachedPMap(*mesh), PMapSource::Computed);
    EXPECT_EQ(ReadBytes(name), written);
}

TEST_F(PMapCacheTest, DamagedFilesAreReplacedAndOtherMeshesFilesKept) {
    const TestMesh wheel = PaddleWheel();
    const std::string name = PMapFileName(wheel.VertexCount(), wheel.TriangleCount());
    WriteText(name, "not a map at all");
    ASSERT_NE(Wheel(wheel), nullptr);
    const auto repaired = ReadBytes(name);
    EXPECT_GT(repaired.size(), 100u);

    // Same counts, other geometry: its own map is computed; the file stays the first mesh's.
    TestMesh wider = PaddleWheel();
    for (Vector3& v : wider.vertices) v.x *= 2;
    ASSERT_NE(Wheel(wider), nullptr);
    EXPECT_EQ(ReadBytes(name), repaired);

    // An empty file is damaged too.
    WriteText(name, "");
    ASSERT_NE(Wheel(wheel), nullptr);
    EXPECT_EQ(ReadBytes(name), repaired);
}

TEST_F(PMapCacheTest, StaticMeshesWithoutAMapTouchNoFileAndReadOnlyFoldersAreSkipped) {
    ASSERT_NE(MakeMeshActor(physics, TestMesh::Grid(5, 2), 0), nullptr);
    EXPECT_TRUE(fs::is_empty(fs::current_path()));

    // Where the cache cannot be written, the map is computed and used all the same. (A folder
    // in the file's place stands in for a read-only folder, which root could write anyway.)
    const TestMesh wheel = PaddleWheel();
    const std::string name = PMapFileName(wheel.VertexCount(), wheel.TriangleCount());
    fs::create_directory(name);
    ASSERT_NE(Wheel(wheel), nullptr);
    EXPECT_TRUE(fs::is_directory(name));
    if (geteuid() != 0) {
        fs::remove(name);
        chmod(".", 0555);
        EXPECT_NE(Wheel(wheel), nullptr);
        chmod(".", 0755);
        EXPECT_FALSE(fs::exists(name));
    }
}

TEST_F(PMapCacheTest, AMeshGoesWithTheLastActorThatUsesItAndOneThatMadeNoneIsNotKept) {
    // A single line of corners has no hull; a dynamic actor cannot be made of it.
    TestMesh line;
    line.vertices = {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}};
    line.triangles = {0, 1, 2};
    EXPECT_EQ(Wheel(line), nullptr);
    EXPECT_EQ(physics.GetScene()->GetMeshCount(), 0u);
    phys::Actor* flat = Wheel(line, false, 0);  // as a static mesh it is fine
    ASSERT_NE(flat, nullptr);
    EXPECT_EQ(physics.GetScene()->GetMeshCount(), 1u);
    physics.ReleaseActor(flat);
    EXPECT_EQ(physics.GetScene()->GetMeshCount(), 0u);

    // Levels loaded one after another must not pile up the meshes of their tracks.
    phys::Scene& scene = *physics.GetScene();
    phys::ActorDesc shared;
    shared.kind = phys::ShapeKind::Mesh;
    shared.mesh = Cooked(TestMesh::Grid(5, 2));
    phys::Actor* first = scene.CreateActor(shared);
    phys::Actor* second = scene.CreateActor(shared);
    scene.ReleaseActor(first);
    EXPECT_EQ(scene.GetMeshCount(), 1u) << "still in use";
    Steps(2);
    scene.ReleaseActor(second);
    EXPECT_EQ(scene.GetMeshCount(), 0u);
}

}  // namespace
