// The generated 3DS models as the game loads them: class models of the sizes the level
// designers rely on, tracks that match their sources, closed outward-facing surfaces, and
// turbine collision meshes the physics splits as intended.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <string>
#include <vector>

#include "formats/max_model.h"
#include "physics/collision_map.h"
#include "tests/support/files.h"
#include "tools/mediagen/class_models.h"
#include "tools/mediagen/class_sizes.h"
#include "tools/mediagen/media_error.h"
#include "tools/mediagen/mesh_builder.h"
#include "tools/mediagen/polygon.h"
#include "tools/mediagen/track_source.h"

using namespace mediagen;

namespace {

using Key = std::array<float, 3>;
Key KeyOf(const Vector3& v) { return {v.x, v.y, v.z}; }
double Dot(const Vector3& a, const Vector3& b) { return double(a.x) * b.x + double(a.y) * b.y + double(a.z) * b.z; }
double RadiusFromZAxis(const Vector3& v) { return std::hypot(double(v.x), double(v.y)); }

// Edges, matched by corner positions, without a partner running the other way: 0 when the
// surface is closed and its faces agree on which side is out.
int OpenEdges(const SubModel& sub) {
    std::map<std::pair<Key, Key>, int> edges;
    for (const Triangle& t : sub.triangles) {
        const uint32_t corner[3] = {t.a, t.b, t.c};
        for (int k = 0; k < 3; ++k) ++edges[{KeyOf(sub.vertices[corner[k]]), KeyOf(sub.vertices[corner[(k + 1) % 3]])}];
    }
    int open = 0;
    for (const auto& [edge, count] : edges) {
        const auto back = edges.find({edge.second, edge.first});
        open += back == edges.end() || back->second != count;
    }
    return open;
}

// Positive when the faces turn counter-clockwise seen from outside.
double SignedVolume(const SubModel& sub) {
    double volume = 0;
    for (const Triangle& t : sub.triangles) volume += Dot(sub.vertices[t.a], sub.vertices[t.b].Cross(sub.vertices[t.c])) / 6;
    return volume;
}

double SmallestArea(const SubModel& sub) {
    double smallest = 1e30;
    for (const Triangle& t : sub.triangles) {
        const Vector3 n = (sub.vertices[t.b] - sub.vertices[t.a]).Cross(sub.vertices[t.c] - sub.vertices[t.a]);
        smallest = std::min(smallest, std::sqrt(Dot(n, n)) / 2);
    }
    return smallest;
}

// The convex hulls the physics makes of a dynamic mesh: one for each connected part.
phys::ConvexPieces Pieces(const SubModel& sub) {
    std::vector<float> points;
    for (const Vector3& v : sub.vertices) points.insert(points.end(), {v.x, v.y, v.z});
    std::vector<uint32_t> indices;
    for (const Triangle& t : sub.triangles) indices.insert(indices.end(), {t.a, t.b, t.c});
    return phys::ComputeConvexPieces(points.data(), uint32_t(sub.vertices.size()), indices.data(),
                                     uint32_t(sub.triangles.size()), 64);
}

struct Bounds {
    Vector3 low{1e9f, 1e9f, 1e9f};
    Vector3 high{-1e9f, -1e9f, -1e9f};
    double radius = 0;  // the largest distance from the z axis
};

Bounds BoundsOf(const std::vector<SubModel>& subs) {
    Bounds b;
    for (const SubModel& sub : subs) {
        for (const Vector3& v : sub.vertices) {
            b.low = {std::min(b.low.x, v.x), std::min(b.low.y, v.y), std::min(b.low.z, v.z)};
            b.high = {std::max(b.high.x, v.x), std::max(b.high.y, v.y), std::max(b.high.z, v.z)};
            b.radius = std::max(b.radius, RadiusFromZAxis(v));
        }
    }
    return b;
}

void ExpectNear(const Vector3& got, const Vector3& want, const std::string& what) {
    EXPECT_NEAR(got.x, want.x, 1e-4) << what;
    EXPECT_NEAR(got.y, want.y, 1e-4) << what;
    EXPECT_NEAR(got.z, want.z, 1e-4) << what;
}

// Written with the generator's 3DS writer and read back with the game's loader.
MaxModel WrittenAndLoaded(const TempDir& dir, const std::string& file, const std::vector<MaxObject>& objects) {
    WriteBytes(dir.File(file), WriteMaxFile(objects));
    MaxModel model;
    EXPECT_TRUE(model.Load(dir.File(file))) << model.LoadError();
    return model;
}

class ClassModels : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        TempDir dir;
        for (const ModelFile& file : mediagen::ClassModels()) loaded[file.file] = WrittenAndLoaded(dir, file.file, file.objects);
    }
    static void TearDownTestSuite() { loaded.clear(); }
    static inline std::map<std::string, MaxModel> loaded;
};

TEST_F(ClassModels, HaveTheDocumentedSizes) {
    struct Size {
        const char* file;
        Vector3 low, high;
    };
    const float r = sizes::kBumperRadius, h = sizes::kPostHalfDepth;
    ASSERT_EQ(loaded.size(), 12u);
    for (const Size& size : std::vector<Size>{{"ball.3DS", {-1, -1, -1}, {1, 1, 1}},
                                              {"DeadBall.3DS", {-1, -1, -1}, {1, 1, 1}},
                                              {"Bumper.3DS", {-r, -r, -h}, {r, r, h}},
                                              {"ReverseGravityBumper.3DS", {-r, -r, -h}, {r, r, h}},
                                              {"SpawnerBumper.3DS", {-r, -r, -h}, {r, r, h}},
                                              {"Peg.3DS", {-0.5f, -0.5f, -h}, {0.5f, 0.5f, h}},
                                              {"HingedDoor.3DS", {-0.5f, 0, -5}, {0.5f, 6, 5}},
                                              {"TeleporterEntrance.3DS", {-3, -3, -0.5f}, {3, 3, 0.5f}},
                                              {"goal.3DS", {-3, -3, -1.5f}, {3, 3, 1.5f}}}) {
        const Bounds b = BoundsOf(loaded.at(size.file).subModels);
        ExpectNear(b.low, size.low, size.file);
        ExpectNear(b.high, size.high, size.file);
    }
    // Round models reach their radius and no further, so the game's bodies fit them.
    for (const auto& [file, radius] : std::map<std::string, double>{
             {"ball.3DS", 1}, {"DeadBall.3DS", 1}, {"Bumper.3DS", r}, {"ReverseGravityBumper.3DS", r},
             {"SpawnerBumper.3DS", r}, {"Peg.3DS", 0.5}, {"TeleporterEntrance.3DS", 3}, {"TeleporterExit.3DS", 2},
             {"goal.3DS", 3}})
        EXPECT_NEAR(BoundsOf(loaded.at(file).subModels).radius, radius, 1e-4) << file;
}

TEST_F(ClassModels, AreClosedWithEveryFaceTurnedOutwards) {
    for (const auto& [file, model] : loaded) {
        for (size_t i = 0; i < model.subModels.size(); ++i) {
            const SubModel& sub = model.subModels[i];
            const std::string what = file + " sub-model " + std::to_string(i);
            EXPECT_EQ(OpenEdges(sub), 0) << what;
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

TEST_F(ClassModels, TurbineCollisionMeshesBecomeAHubAndSeparatePaddlesInThePhysics) {
    for (const auto& [file, paddles] : std::map<std::string, int>{{"turbine1.3DS", sizes::kFreeTurbinePaddles},
                                                                   {"turbine2.3DS", sizes::kDrivenTurbinePaddles}}) {
        SCOPED_TRACE(file);
        const MaxModel& model = loaded.at(file);
        ASSERT_GE(model.subModels.size(), 2u);  // the collision mesh, then decoration
        const SubModel& collision = model.subModels[0];
        const Bounds b = BoundsOf({collision});
        EXPECT_NEAR(b.low.z, -1.5, 1e-6);
        EXPECT_NEAR(b.high.z, 1.5, 1e-6);
        EXPECT_NEAR(b.high.x, sizes::kTurbineRadius, 1e-4);  // the first paddle points along +x

        const phys::ConvexPieces pieces = Pieces(collision);
        ASSERT_EQ(pieces.size(), size_t(1 + paddles));
        int hubs = 0;
        for (const auto& piece : pieces) {
            double nearest = 1e9, farthest = 0;
            for (const Vector3& p : piece) {
                nearest = std::min(nearest, RadiusFromZAxis(p));
                farthest = std::max(farthest, RadiusFromZAxis(p));
            }
            if (farthest <= sizes::kTurbineHubRadius + 1e-4) {
                ++hubs;
            } else {
                // Chamfered corners bring a paddle's reach in a little, never out.
                EXPECT_NEAR(nearest, sizes::kPaddleInnerRadius, 0.05);
                EXPECT_LE(farthest, std::hypot(4.5, 0.25) + 1e-4);
                EXPECT_GE(farthest, 4.5 - 1e-4);
            }
        }
        EXPECT_EQ(hubs, 1);
    }
}

// The loader's normals (the sum of the face normals round each vertex) are how the game lights
// a model: a round one must have no crease along its lathe's seam or round its poles.
TEST_F(ClassModels, RoundModelsAreSmoothAllRound) {
    const SubModel& ball = loaded.at("ball.3DS").subModels.at(0);
    ASSERT_EQ(ball.normals.size(), ball.vertices.size());
    for (size_t i = 0; i < ball.vertices.size(); ++i) {
        Vector3 out = ball.vertices[i];
        out.Normalize();
        EXPECT_GT(Dot(ball.normals[i], out), 0.999) << "vertex " << i;
    }
    // The entrance's ring: every normal points away from the middle of its tube.
    const SubModel& ring = loaded.at("TeleporterEntrance.3DS").subModels.at(0);
    const double tubeCentre = sizes::kTeleporterEntranceRadius - sizes::kTeleporterHalfDepth;
    int onTube = 0;
    for (size_t i = 0; i < ring.vertices.size(); ++i) {
        const Vector3& v = ring.vertices[i];
        const double r = RadiusFromZAxis(v);
        Vector3 out(float(v.x * (1 - tubeCentre / r)), float(v.y * (1 - tubeCentre / r)), v.z);
        if (std::abs(std::sqrt(Dot(out, out)) - sizes::kTeleporterHalfDepth) > 1e-4) continue;  // the inner ring
        ++onTube;
        out.Normalize();
        EXPECT_GT(Dot(ring.normals[i], out), 0.995) << "vertex " << i;
    }
    EXPECT_GT(onTube, 500);
}

TEST(MediagenMeshBuilder, BevelledPrismsAreClosedSolidsWithinTheirOutline) {
    // A concave double arrow, bevelled in front only and on both sides, and a bevelled box.
    const std::vector<Point2> arrows{{0, 1.5},  {0.8, 0.6},   {0.3, 0.6},   {0.3, -0.6}, {0.8, -0.6},
                                     {0, -1.5}, {-0.8, -0.6}, {-0.3, -0.6}, {-0.3, 0.6}, {-0.8, 0.6}};
    const double area = std::abs(SignedArea2(arrows)) / 2;  // written clockwise
    for (const bool both : {false, true}) {
        MeshBuilder mesh("arrows");
        mesh.BevelledPrism(arrows, -0.5f, 0.5f, 0.1f, both, 2.0f);
        TempDir dir;
        const SubModel sub = WrittenAndLoaded(dir, "a.3DS", {mesh.Take()}).subModels.at(0);
        EXPECT_EQ(OpenEdges(sub), 0) << both;
        EXPECT_EQ(sub.texCoords.size(), sub.vertices.size());
        // Less than the sharp prism by about a chamfer's cross section along the perimeter.
        const double volume = SignedVolume(sub);
        EXPECT_LT(volume, area);
        EXPECT_GT(volume, area - (both ? 2 : 1) * 0.1 * 0.1 * 10);
        const Bounds b = BoundsOf({sub});
        ExpectNear(b.low, {-0.8f, -1.5f, -0.5f}, "low");
        ExpectNear(b.high, {0.8f, 1.5f, 0.5f}, "high");
    }

    MeshBuilder box("box");
    box.Box({-1, 0, -2}, {1, 3, 2}, 2.0f, 0.2f);
    TempDir dir;
    const SubModel sub = WrittenAndLoaded(dir, "b.3DS", {box.Take()}).subModels.at(0);
    EXPECT_EQ(OpenEdges(sub), 0);
    EXPECT_EQ(Pieces(sub).size(), 1u);
    EXPECT_LT(SignedVolume(sub), 2 * 3 * 4);
    EXPECT_GT(SignedVolume(sub), 2 * 3 * 4 - 0.2 * 0.2 / 2 * (4 * 2 + 4 * 3 + 4 * 4));
    const Bounds b = BoundsOf({sub});
    ExpectNear(b.low, {-1, 0, -2}, "low");
    ExpectNear(b.high, {1, 3, 2}, "high");
}

TEST(MediagenPolygon, FillsConcaveOutlinesWithStraightPointsAsCornersAndNamesBadOnes) {
    // A U shape whose long edges carry points along them.
    const std::vector<Point2> u = SplitEdges({{0, 0}, {9, 0}, {9, 6}, {7, 6}, {7, 2}, {2, 2}, {2, 6}, {0, 6}}, 2.0);
    const Triangulation fill = Triangulate(u);
    ASSERT_FALSE(fill.triangles.empty());
    double area = 0;
    std::vector<int> uses(u.size(), 0);
    for (const auto& t : fill.triangles) {
        const Point2 &a = fill.points[t[0]], &b = fill.points[t[1]], &c = fill.points[t[2]];
        const double a2 = (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
        EXPECT_GT(a2, 1e-9);  // counter-clockwise, none flat
        area += a2 / 2;
        for (size_t i : t) {
            if (i < u.size()) ++uses[i];
        }
    }
    EXPECT_NEAR(area, SignedArea2(u) / 2, 1e-9);
    // Every point on the outline is a corner of some triangle, so no wall meets a cap mid-edge.
    for (size_t i = 0; i < u.size(); ++i) EXPECT_GT(uses[i], 0) << "point " << i;

    EXPECT_EQ(OutlineProblem({{0, 0}, {4, 0}, {4, 3}}), "");
    EXPECT_EQ(OutlineProblem({{0, 0}, {4, 0}}), "an outline needs at least 3 points, this one has 2");
    EXPECT_EQ(OutlineProblem({{0, 0}, {4, 4}, {4, 0}, {0, 4}}), "edges 1-2 and 3-4 cross or touch");
    EXPECT_EQ(OutlineProblem({{0, 0}, {4, 0}, {4, 0}, {0, 3}}), "edge 2-3 has no length");
    EXPECT_EQ(OutlineProblem({{0, 0}, {4, 0}, {2, 0}, {0, 3}}), "the outline turns back on itself at point 2");
    EXPECT_EQ(OutlineProblem({{0, 0}, {4, 0}, {8, 0}}), "the outline turns back on itself at point 1");
}

TEST(MediagenTrack, BadSourcesAreNamedByFileAndLine) {
    auto errorOf = [](const std::string& text) {
        try {
            ParseTrack(text, "bad.track");
        } catch (const MediaError& e) {
            return std::string(e.what());
        }
        return std::string("no error");
    };
    const std::string depth = "depth: 4\n", square = "piece: 0,0 4,0 4,4 0,4\n";
    EXPECT_EQ(errorOf(depth + "colour: red\n"), "bad.track:2: unknown key 'colour' (depth, piece)");
    EXPECT_EQ(errorOf(depth + "\n# a comment\npiece: 0,0 4,zero 4,4\n"),
              "bad.track:4: point 2: expected y after the comma, found 'zero'");
    EXPECT_EQ(errorOf(depth + "piece: 0,0 4 0 4,4\n"), "bad.track:2: point 2: expected a comma after x, found '0'");
    EXPECT_EQ(errorOf(depth + square + "piece: 0,0 4,4 4,0 0,4\n"),
              "bad.track:3: piece: edges 1-2 and 3-4 cross or touch");
    EXPECT_EQ(errorOf("depth: 4m\n"), "bad.track:1: depth must be one number, not '4m'");
    EXPECT_EQ(errorOf(depth + "depth: 2\n"), "bad.track:2: depth is already given on line 1");
    EXPECT_EQ(errorOf(square), "bad.track:1: no 'depth:' line");
    EXPECT_EQ(errorOf(depth + "piece 0,0 1,0 1,1\n"), "bad.track:2: expected 'key: value'");
    EXPECT_EQ(errorOf(depth + "piece: 0,0 1e999,0 1,1\n"), "bad.track:2: point 2: expected x,y but found '1e999,0'");
    EXPECT_THROW(ReadTrack("/nonexistent/none.track"), MediaError);
}

TEST(MediagenTrack, PiecesBecomeClosedPrismsThatMatchTheSource) {
    // A long floor, written clockwise, and a concave step above it, with comments and spacing.
    const TrackSource source = ParseTrack(
        "# test\n"
        "depth: 3\n"
        "piece: -10,-2  -10,0  10,0  10,-2   # floor\n"
        "piece: 0, 1  6,1  6,6  4,6  4,2  0,2\n",
        "t.track");
    ASSERT_EQ(source.pieces.size(), 2u);
    EXPECT_GT(SignedArea2(source.pieces[0]), 0);  // turned counter-clockwise

    TempDir dir;
    const MaxModel model = WrittenAndLoaded(dir, "t.3DS", {BuildTrack(source, "t")});
    ASSERT_EQ(model.subModels.size(), 1u);
    const SubModel& mesh = model.subModels[0];
    EXPECT_EQ(OpenEdges(mesh), 0);
    EXPECT_EQ(Pieces(mesh).size(), 2u);
    // Volume: (20 x 2 + 6 x 1 + 2 x 4) x 3.
    EXPECT_NEAR(SignedVolume(mesh), 54 * 3, 1e-3);
    const Bounds b = BoundsOf(model.subModels);
    ExpectNear(b.low, {-10, -2, -1.5f}, "low");
    ExpectNear(b.high, {10, 6, 1.5f}, "high");

    for (const Triangle& t : mesh.triangles) {
        const Vector3 a = mesh.vertices[t.a], b = mesh.vertices[t.b], c = mesh.vertices[t.c];
        if (a.z == b.z && b.z == c.z) {
            // Front and back: the texture laid flat, tiling every 8 units.
            for (uint32_t i : {t.a, t.b, t.c}) {
                EXPECT_FLOAT_EQ(mesh.texCoords[i].u, mesh.vertices[i].x / 8);
                EXPECT_FLOAT_EQ(mesh.texCoords[i].v, mesh.vertices[i].y / 8);
            }
        } else {
            // Side walls come in pieces no longer than 2.
            const float spanX = std::max({a.x, b.x, c.x}) - std::min({a.x, b.x, c.x});
            const float spanY = std::max({a.y, b.y, c.y}) - std::min({a.y, b.y, c.y});
            EXPECT_LE(std::hypot(spanX, spanY), 2.0f + 1e-5f);
        }
    }
}

}  // namespace
