// Where track meshes cut the plane of play.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "physics/plane_profile.h"
#include "tests/physics/physics_fixture.h"

namespace {

using phys::PlaneProfile;

std::unique_ptr<PlaneProfile> ProfileOf(const TestMesh& mesh) {
    std::vector<float> points;
    for (const Vector3& v : mesh.vertices) points.insert(points.end(), {v.x, v.y, v.z});
    return PlaneProfile::Build(points, mesh.triangles);
}

// A wall along x from 0 to `length` at y = 0..1, z = -2..2, cut into `pieces` quads.
TestMesh LongWall(float length, int pieces) {
    TestMesh wall;
    for (int i = 0; i <= pieces; ++i)
        for (float z : {-2.0f, 2.0f}) wall.vertices.emplace_back(length * float(i) / float(pieces), 0.0f, z);
    for (uint32_t i = 0; i < uint32_t(pieces); ++i) {
        const uint32_t a = 2 * i, b = a + 1, c = a + 2, d = a + 3;
        wall.triangles.insert(wall.triangles.end(), {a, c, b, b, c, d});
    }
    return wall;
}

TEST(PlaneProfile, AnOutlineDrawnOutAlongZBecomesWholeSegments) {
    const auto box = ProfileOf(TestMesh().AddBox({0, 0, 0}, {5, 1, 2}));
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->Segments().size(), 4u) << "each side one segment, though made of two triangles";
    EXPECT_EQ(box->Clearance(), 2.0f) << "the caps lie at z = +-2";

    const auto wall = ProfileOf(LongWall(40, 25));
    ASSERT_NE(wall, nullptr);
    ASSERT_EQ(wall->Segments().size(), 1u) << "no seams where the pieces meet";
    const PlaneProfile::Segment& s = wall->Segments()[0];
    EXPECT_NEAR(std::abs(s.bx - s.ax), 40.0f, 1e-3f);
    EXPECT_EQ(wall->Clearance(), std::numeric_limits<float>::max()) << "nothing but walls";

    // Two boxes side by side keep their own sides, and a query finds each segment once.
    const auto two = ProfileOf(TestMesh().AddBox({0, 0, 0}, {1, 1, 3}).AddBox({10, 0, 0}, {1, 1, 3}));
    ASSERT_NE(two, nullptr);
    EXPECT_EQ(two->Segments().size(), 8u);
    std::vector<uint32_t> found;
    two->Near(-5, -5, 5, 5, found);
    EXPECT_EQ(found.size(), 4u);
    EXPECT_TRUE(std::is_sorted(found.begin(), found.end()));
    two->Near(-100, -100, 100, 100, found);
    EXPECT_EQ(found.size(), 8u);
    two->Near(50, 50, 60, 60, found);
    EXPECT_TRUE(found.empty());
    const float nan = std::numeric_limits<float>::quiet_NaN(), huge = 1e30f;
    two->Near(nan, nan, nan, nan, found);
    EXPECT_TRUE(found.empty());
    two->Near(-huge, -huge, huge, huge, found);
    EXPECT_EQ(found.size(), 8u);
}

TEST(PlaneProfile, MeshesABallCouldTouchOffThePlaneHaveNone) {
    // A ramp sloping through the plane.
    TestMesh ramp;
    ramp.vertices = {{0, 0, -2}, {10, 0, -2}, {0, 1, 2}};
    ramp.triangles = {0, 1, 2};
    EXPECT_EQ(ProfileOf(ramp), nullptr);

    // A wall that is longer at the back than where it cuts the plane.
    TestMesh tapered;
    tapered.vertices = {{0, 0, -2}, {10, 0, -2}, {0, 0, 2}, {4, 0, 2}};
    tapered.triangles = {0, 1, 2, 1, 3, 2};
    EXPECT_EQ(ProfileOf(tapered), nullptr);

    // The grid of the other tests: a floor lying in y = 0 across z is a wall along x, fine;
    // a floor lying in z = 0 is no outline at all.
    EXPECT_NE(ProfileOf(TestMesh::Grid(10, 4)), nullptr);
    TestMesh flat;
    flat.vertices = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    flat.triangles = {0, 1, 2};
    EXPECT_EQ(ProfileOf(flat), nullptr);

    TestMesh broken;
    broken.vertices = {{0, 0, -1}, {1, 0, 1}};
    broken.triangles = {0, 1, 7};
    EXPECT_EQ(ProfileOf(broken), nullptr) << "an index past the points";
}

}  // namespace
