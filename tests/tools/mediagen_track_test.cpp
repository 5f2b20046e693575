// Track sources: outlines filled without cracks, closed prisms that match the source, and bad
// sources named by file and line.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <string>
#include <vector>

#include "formats/max_model.h"
#include "tests/support/tga_bytes.h"
#include "tests/tools/mesh_checks.h"
#include "tools/mediagen/media_error.h"
#include "tools/mediagen/polygon.h"
#include "tools/mediagen/track_source.h"

using namespace mediagen;
using namespace mesh_checks;

namespace {

double TriangleArea2(const Point2& a, const Point2& b, const Point2& c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

TEST(MediagenPolygon, FillsConcaveOutlinesWithStraightPointsAsCorners) {
    // A U shape whose long edges carry points along them.
    const std::vector<Point2> u = SplitEdges({{0, 0}, {9, 0}, {9, 6}, {7, 6}, {7, 2}, {2, 2}, {2, 6}, {0, 6}}, 2.0);
    const Triangulation fill = Triangulate(u);
    ASSERT_FALSE(fill.triangles.empty());
    double area = 0;
    std::vector<int> uses(u.size(), 0);
    for (const auto& t : fill.triangles) {
        const double a2 = TriangleArea2(fill.points[t[0]], fill.points[t[1]], fill.points[t[2]]);
        EXPECT_GT(a2, 1e-9);  // counter-clockwise, none flat
        area += a2 / 2;
        for (size_t i : t) {
            if (i < u.size()) ++uses[i];
        }
    }
    EXPECT_NEAR(area, SignedArea2(u) / 2, 1e-9);
    // Every point on the outline is a corner of some triangle, so no wall meets a cap mid-edge.
    for (size_t i = 0; i < u.size(); ++i) EXPECT_GT(uses[i], 0) << "point " << i;
}

TEST(MediagenPolygon, NamesWhatIsWrongWithAnOutline) {
    EXPECT_EQ(OutlineProblem({{0, 0}, {4, 0}, {4, 3}}), "");
    EXPECT_EQ(OutlineProblem({{0, 0}, {4, 0}}), "an outline needs at least 3 points, this one has 2");
    EXPECT_EQ(OutlineProblem({{0, 0}, {4, 4}, {4, 0}, {0, 4}}), "edges 1-2 and 3-4 cross or touch");
    EXPECT_EQ(OutlineProblem({{0, 0}, {4, 0}, {4, 0}, {0, 3}}), "edge 2-3 has no length");
    EXPECT_EQ(OutlineProblem({{0, 0}, {4, 0}, {2, 0}, {0, 3}}), "the outline turns back on itself at point 2");
    EXPECT_EQ(OutlineProblem({{0, 0}, {4, 0}, {8, 0}}), "the outline turns back on itself at point 1");
}

std::string ErrorOf(const std::string& text) {
    try {
        ParseTrack(text, "bad.track");
    } catch (const MediaError& e) {
        return e.what();
    }
    return "no error";
}

TEST(MediagenTrack, BadSourcesAreNamedByFileAndLine) {
    const std::string depth = "depth: 4\n";
    const std::string square = "piece: 0,0 4,0 4,4 0,4\n";
    EXPECT_EQ(ErrorOf(depth + "colour: red\n"), "bad.track:2: unknown key 'colour' (depth, piece)");
    EXPECT_EQ(ErrorOf(depth + "\n# a comment\npiece: 0,0 4,zero 4,4\n"),
              "bad.track:4: point 2: expected y after the comma, found 'zero'");
    EXPECT_EQ(ErrorOf(depth + "piece: 0,0 4 0 4,4\n"), "bad.track:2: point 2: expected a comma after x, found '0'");
    EXPECT_EQ(ErrorOf(depth + "piece: 0,0 4,0\n"), "bad.track:2: piece: an outline needs at least 3 points, this one has 2");
    EXPECT_EQ(ErrorOf(depth + square + "piece: 0,0 4,4 4,0 0,4\n"),
              "bad.track:3: piece: edges 1-2 and 3-4 cross or touch");
    EXPECT_EQ(ErrorOf("depth: 4m\n"), "bad.track:1: depth must be one number, not '4m'");
    EXPECT_EQ(ErrorOf("depth: 0\n"), "bad.track:1: depth must be more than 0");
    EXPECT_EQ(ErrorOf(depth + "depth: 2\n"), "bad.track:2: depth is already given on line 1");
    EXPECT_EQ(ErrorOf(square), "bad.track:1: no 'depth:' line");
    EXPECT_EQ(ErrorOf(depth), "bad.track:1: no 'piece:' line");
    EXPECT_EQ(ErrorOf(depth + "piece 0,0 1,0 1,1\n"), "bad.track:2: expected 'key: value'");
    EXPECT_EQ(ErrorOf(depth + "piece: 0,0 1e999,0 1,1\n"), "bad.track:2: point 2: expected x,y but found '1e999,0'");

    const std::filesystem::path missing = "/nonexistent/none.track";
    EXPECT_THROW(ReadTrack(missing), MediaError);
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
    WriteBytes(dir.File("t.3DS"), WriteMaxFile({BuildTrack(source, "t")}));
    MaxModel model;
    ASSERT_TRUE(model.Load(dir.File("t.3DS"))) << model.LoadError();
    ASSERT_EQ(model.subModels.size(), 1u);
    const SubModel& mesh = model.subModels[0];

    EXPECT_EQ(OpenEdges(mesh), "");
    EXPECT_EQ(Parts(mesh).size(), 2u);
    // Volume: (20 x 2 + 6 x 1 + 2 x 4) x 3.
    EXPECT_NEAR(SignedVolume(mesh), 54 * 3, 1e-3);

    Vector3 low{1e9f, 1e9f, 1e9f}, high{-1e9f, -1e9f, -1e9f};
    for (size_t i = 0; i < mesh.vertices.size(); ++i) {
        const Vector3& v = mesh.vertices[i];
        low = {std::min(low.x, v.x), std::min(low.y, v.y), std::min(low.z, v.z)};
        high = {std::max(high.x, v.x), std::max(high.y, v.y), std::max(high.z, v.z)};
    }
    EXPECT_EQ(low.x, -10);
    EXPECT_EQ(low.y, -2);
    EXPECT_EQ(low.z, -1.5f);
    EXPECT_EQ(high.x, 10);
    EXPECT_EQ(high.y, 6);
    EXPECT_EQ(high.z, 1.5f);

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
