// The class models as the game loads them: sizes the level designers rely on, closed
// outward-facing surfaces, and turbine collision meshes the physics splits as intended.
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <string>
#include <vector>

#include "formats/max_model.h"
#include "physics/collision_map.h"
#include "tests/support/tga_bytes.h"
#include "tests/tools/mesh_checks.h"
#include "tools/mediagen/class_models.h"
#include "tools/mediagen/class_sizes.h"

using namespace mesh_checks;
namespace sizes = mediagen::sizes;

namespace {

struct Bounds {
    Vector3 low{1e9f, 1e9f, 1e9f};
    Vector3 high{-1e9f, -1e9f, -1e9f};
    double radius = 0;  // the largest distance from the z axis
};

Bounds BoundsOf(const SubModel& sub) {
    Bounds b;
    for (const Vector3& v : sub.vertices) {
        b.low = {std::min(b.low.x, v.x), std::min(b.low.y, v.y), std::min(b.low.z, v.z)};
        b.high = {std::max(b.high.x, v.x), std::max(b.high.y, v.y), std::max(b.high.z, v.z)};
        b.radius = std::max(b.radius, RadiusFromZAxis(v));
    }
    return b;
}

Bounds BoundsOf(const Model& model) {
    Bounds all;
    for (const SubModel& sub : model.subModels) {
        const Bounds b = BoundsOf(sub);
        all.low = {std::min(all.low.x, b.low.x), std::min(all.low.y, b.low.y), std::min(all.low.z, b.low.z)};
        all.high = {std::max(all.high.x, b.high.x), std::max(all.high.y, b.high.y), std::max(all.high.z, b.high.z)};
        all.radius = std::max(all.radius, b.radius);
    }
    return all;
}

// Written with the generator's 3DS writer and read back with the game's loader.
class ClassModels : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        TempDir dir;
        for (const mediagen::ModelFile& file : mediagen::ClassModels()) {
            WriteBytes(dir.File(file.file), mediagen::WriteMaxFile(file.objects));
            MaxModel& model = loaded[file.file];
            ASSERT_TRUE(model.Load(dir.File(file.file))) << model.LoadError();
        }
    }
    static void TearDownTestSuite() { loaded.clear(); }
    static inline std::map<std::string, MaxModel> loaded;
};

void ExpectNear(const Vector3& got, const Vector3& want, const std::string& what) {
    EXPECT_NEAR(got.x, want.x, 1e-4) << what;
    EXPECT_NEAR(got.y, want.y, 1e-4) << what;
    EXPECT_NEAR(got.z, want.z, 1e-4) << what;
}

TEST_F(ClassModels, HaveTheDocumentedSizes) {
    struct Size {
        const char* file;
        Vector3 low, high;
    };
    const float r = sizes::kBumperRadius, h = sizes::kPostHalfDepth;
    const std::vector<Size> expected = {
        {"ball.3DS", {-1, -1, -1}, {1, 1, 1}},
        {"DeadBall.3DS", {-1, -1, -1}, {1, 1, 1}},
        {"Bumper.3DS", {-r, -r, -h}, {r, r, h}},
        {"ReverseGravityBumper.3DS", {-r, -r, -h}, {r, r, h}},
        {"SpawnerBumper.3DS", {-r, -r, -h}, {r, r, h}},
        {"Peg.3DS", {-0.5f, -0.5f, -h}, {0.5f, 0.5f, h}},
        {"HingedDoor.3DS", {-0.5f, 0, -5}, {0.5f, 6, 5}},
        {"TeleporterEntrance.3DS", {-3, -3, -0.5f}, {3, 3, 0.5f}},
        {"goal.3DS", {-3, -3, -1.5f}, {3, 3, 1.5f}},
    };
    ASSERT_EQ(loaded.size(), 12u);
    for (const Size& size : expected) {
        const Bounds b = BoundsOf(loaded.at(size.file));
        ExpectNear(b.low, size.low, size.file);
        ExpectNear(b.high, size.high, size.file);
    }
    // Round models reach their radius and no further, so the game's bodies fit them.
    const std::map<std::string, double> radii = {{"ball.3DS", 1},           {"DeadBall.3DS", 1},
                                                 {"Bumper.3DS", r},         {"ReverseGravityBumper.3DS", r},
                                                 {"SpawnerBumper.3DS", r},  {"Peg.3DS", 0.5},
                                                 {"TeleporterEntrance.3DS", 3}, {"TeleporterExit.3DS", 2},
                                                 {"goal.3DS", 3}};
    for (const auto& [file, radius] : radii) EXPECT_NEAR(BoundsOf(loaded.at(file)).radius, radius, 1e-4) << file;
}

TEST_F(ClassModels, AreClosedWithEveryFaceTurnedOutwards) {
    for (const auto& [file, model] : loaded) {
        for (size_t i = 0; i < model.subModels.size(); ++i) {
            const SubModel& sub = model.subModels[i];
            const std::string what = file + " sub-model " + std::to_string(i);
            EXPECT_EQ(OpenEdges(sub), "") << what;
            EXPECT_GT(SignedVolume(sub), 0) << what;
            EXPECT_GT(SmallestArea(sub), 1e-6) << what;
            EXPECT_EQ(sub.texCoords.size(), sub.vertices.size()) << what;
        }
    }
}

TEST_F(ClassModels, GoalIsACupOpenTowardsTheViewer) {
    const SubModel& cup = loaded.at("goal.3DS").subModels.at(0);
    bool backPlate = false;
    for (const Vector3& v : cup.vertices) {
        if (RadiusFromZAxis(v) < 1e-6 && std::abs(v.z + 1.5f) < 1e-6) backPlate = true;
        // Inside the ring nothing stands in front of the plate.
        if (RadiusFromZAxis(v) < 2.1) {
            EXPECT_LT(v.z, -1.0f);
        }
    }
    EXPECT_TRUE(backPlate);
}

TEST_F(ClassModels, TurbineCollisionMeshesAreAHubAndSeparateConvexPaddles) {
    for (const auto& [file, paddles] : std::map<std::string, int>{{"turbine1.3DS", sizes::kFreeTurbinePaddles},
                                                                   {"turbine2.3DS", sizes::kDrivenTurbinePaddles}}) {
        SCOPED_TRACE(file);
        const MaxModel& model = loaded.at(file);
        ASSERT_GE(model.subModels.size(), 2u);  // the collision mesh, then decoration
        const SubModel& collision = model.subModels[0];
        const Bounds b = BoundsOf(collision);
        EXPECT_NEAR(b.low.z, -1.5, 1e-6);
        EXPECT_NEAR(b.high.z, 1.5, 1e-6);
        EXPECT_NEAR(b.high.x, sizes::kTurbineRadius, 1e-4);  // the first paddle points along +x

        const auto parts = Parts(collision);
        ASSERT_EQ(parts.size(), size_t(1 + paddles));
        int hubs = 0;
        for (const auto& part : parts) {
            EXPECT_TRUE(IsConvex(collision, part));
            double nearest = 1e9, farthest = 0;
            for (uint32_t v : part) {
                nearest = std::min(nearest, RadiusFromZAxis(collision.vertices[v]));
                farthest = std::max(farthest, RadiusFromZAxis(collision.vertices[v]));
            }
            if (farthest <= sizes::kTurbineHubRadius + 1e-4) {
                ++hubs;
            } else {
                EXPECT_NEAR(nearest, sizes::kPaddleInnerRadius, 0.05);
                EXPECT_NEAR(farthest, std::hypot(4.5, 0.25), 1e-4);
            }
        }
        EXPECT_EQ(hubs, 1);

        // What the physics makes of it: one hull per part.
        std::vector<float> points;
        for (const Vector3& v : collision.vertices) points.insert(points.end(), {v.x, v.y, v.z});
        std::vector<uint32_t> indices;
        for (const Triangle& t : collision.triangles) indices.insert(indices.end(), {t.a, t.b, t.c});
        const phys::ConvexPieces pieces =
            phys::ComputeConvexPieces(points.data(), uint32_t(collision.vertices.size()), indices.data(),
                                      uint32_t(collision.triangles.size()), 64);
        EXPECT_EQ(pieces.size(), size_t(1 + paddles));
    }
}

}  // namespace
