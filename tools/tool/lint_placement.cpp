#include "tools/tool/lint_placement.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <string>

#include "tools/tool/lint_geometry.h"

namespace lint {
namespace {

// Things may overlap by this share of the smaller radius: resting on something is touching it.
constexpr double kOverlapTolerance = 0.01;
// A ball's overlaps are reported one by one up to this many, the rest counted in one warning.
constexpr size_t kOverlapsShown = 3;
// The balls spawners make have radius 1 (objects/bumpers.cpp). A spawner whose post is closer
// than two of their diameters to another bumper's can pass the current ball back and forth.
constexpr double kStandardBallRadius = 1;
constexpr double kChainGap = 4 * kStandardBallRadius;

bool IsBall(const LevelObject& object) { return object.kind == "Ball" || object.kind == "DeadBall"; }
bool IsBumper(const LevelObject& object) {
    return object.kind == "Bumper" || object.kind == "RevGravBumper" || object.kind == "SpawnerBumper";
}
// Fixed spheres of their radius at (x, y, 0).
bool IsPost(const LevelObject& object) { return object.kind == "Peg" || IsBumper(object); }

// The physics makes no sphere without a radius above 0, and no ball without a mass above 0.
bool HasBody(const LevelObject& object) {
    const bool finite = std::isfinite(object.x) && std::isfinite(object.y) && std::isfinite(object.radius);
    return finite && object.radius > 0 && (!IsBall(object) || object.mass > 0);
}

PlaneBox Around(const LevelObject& object, double margin) {
    const double reach = double(object.radius) + margin;
    return {object.x - reach, object.x + reach, object.y - reach, object.y + reach};
}

double CentreDistance(const LevelObject& a, const LevelObject& b) {
    return std::hypot(double(a.x) - b.x, double(a.y) - b.y);
}

std::string At(const std::string& who, int line) { return who + " on line " + std::to_string(line); }

// Depths and gaps to three figures, enough to find the object and not so many as to read as noise.
std::string Length(double length) {
    char text[32];
    std::snprintf(text, sizeof text, "%.3g", length);
    return text;
}

// Each ball's overlaps, the first few in full.
class Overlaps {
public:
    explicit Overlaps(const std::vector<const LevelObject*>& balls) : balls_(balls), found_(balls.size()) {}

    void Add(size_t ball, double depth, const LevelObject& other, const char* consequence) {
        if (Counted(ball)) return;
        Show(ball, depth, At(Describe(other), other.line), consequence);
    }
    void Add(size_t ball, double depth, const LevelTrack& track, const char* consequence) {
        if (Counted(ball)) return;
        Show(ball, depth, At(Describe(track), track.line), consequence);
    }

    void Report(std::vector<Problem>& problems) const {
        for (size_t i = 0; i < balls_.size(); ++i) {
            const LevelObject& ball = *balls_[i];
            for (const std::string& message : found_[i].shown) {
                problems.push_back({false, ball.line, ball.kind, message});
            }
            if (found_[i].more > 0) {
                problems.push_back({false, ball.line, ball.kind,
                                    At(Describe(ball), ball.line) + " also starts inside " +
                                        std::to_string(found_[i].more) + " more objects or tracks"});
            }
        }
    }

private:
    struct Found {
        std::vector<std::string> shown;
        size_t more = 0;
    };

    // Past the first few, a ball's overlaps are only counted: a pile of balls dropped on one
    // spot would otherwise make a warning for every pair.
    bool Counted(size_t ball) {
        Found& found = found_[ball];
        if (found.shown.size() < kOverlapsShown) return false;
        ++found.more;
        return true;
    }

    void Show(size_t ball, double depth, const std::string& other, const char* consequence) {
        const LevelObject& b = *balls_[ball];
        found_[ball].shown.push_back(At(Describe(b), b.line) + " starts " + Length(depth) + " deep inside " + other +
                                     ": " + consequence);
    }

    const std::vector<const LevelObject*>& balls_;
    std::vector<Found> found_;
};

std::vector<PlaneBox> Boxes(const std::vector<const LevelObject*>& objects, double margin) {
    std::vector<PlaneBox> boxes;
    boxes.reserve(objects.size());
    for (const LevelObject* object : objects) boxes.push_back(Around(*object, margin));
    return boxes;
}

// Two spheres overlap when their centres are closer than their radii together, less the tolerance.
double SphereDepth(const LevelObject& a, const LevelObject& b) {
    const double depth = double(a.radius) + b.radius - CentreDistance(a, b);
    return depth > kOverlapTolerance * std::min(a.radius, b.radius) ? depth : 0;
}

// A ball in another is reported on the later one, which the writer placed into the first.
void BallsInBalls(const std::vector<const LevelObject*>& balls, Overlaps& overlaps) {
    const std::vector<PlaneBox> boxes = Boxes(balls, 0);
    ForEachOverlap(boxes, boxes, [&](size_t first, size_t later) {
        if (first >= later) return;
        const double depth = SphereDepth(*balls[first], *balls[later]);
        if (depth > 0) overlaps.Add(later, depth, *balls[first], "the physics shoves them apart at its first step");
    });
}

void BallsInPosts(const std::vector<const LevelObject*>& balls, const std::vector<const LevelObject*>& posts,
                  Overlaps& overlaps) {
    ForEachOverlap(Boxes(balls, 0), Boxes(posts, 0), [&](size_t ball, size_t post) {
        const double depth = SphereDepth(*balls[ball], *posts[post]);
        if (depth > 0) overlaps.Add(ball, depth, *posts[post], "the physics shoves it out at its first step");
    });
}

bool Finite(const Point& p) { return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z); }

// The ball's sphere against every triangle of the track's mesh, placed as the game places it.
void BallsInTrack(const std::vector<const LevelObject*>& balls, const TrackMesh& track, Overlaps& overlaps) {
    const SubModel& mesh = *track.mesh;
    const double dx = track.track->x, dy = track.track->y;
    std::vector<std::array<Point, 3>> triangles;
    std::vector<PlaneBox> boxes;
    for (const Triangle& t : mesh.triangles) {
        if (std::max({t.a, t.b, t.c}) >= mesh.vertices.size()) continue;
        std::array<Point, 3> corners;
        const uint32_t indices[3] = {t.a, t.b, t.c};
        for (int i = 0; i < 3; ++i) {
            const Vector3& v = mesh.vertices[indices[i]];
            corners[i] = {v.x + dx, v.y + dy, v.z};
        }
        if (!std::all_of(corners.begin(), corners.end(), Finite)) continue;
        triangles.push_back(corners);
        const auto [left, right] = std::minmax({corners[0].x, corners[1].x, corners[2].x});
        const auto [bottom, top] = std::minmax({corners[0].y, corners[1].y, corners[2].y});
        boxes.push_back({left, right, bottom, top});
    }
    std::vector<double> nearest(balls.size(), std::numeric_limits<double>::infinity());
    ForEachOverlap(Boxes(balls, 0), boxes, [&](size_t ball, size_t triangle) {
        const LevelObject& b = *balls[ball];
        const std::array<Point, 3>& t = triangles[triangle];
        nearest[ball] = std::min(nearest[ball], TriangleDistance({b.x, b.y, 0}, t[0], t[1], t[2]));
    });
    for (size_t i = 0; i < balls.size(); ++i) {
        const double depth = balls[i]->radius - nearest[i];
        if (depth <= kOverlapTolerance * balls[i]->radius) continue;
        overlaps.Add(i, depth, *track.track,
                     "the physics shoves it out at its first step, perhaps through to the far side");
    }
}

// Only the current ball makes a spawner spawn, and every bumper kicks it away: between two
// bumpers this close it can bounce to and fro, and the spawner makes balls on every visit.
void SpawnerChains(const std::vector<const LevelObject*>& bumpers, std::vector<Problem>& problems) {
    std::vector<const LevelObject*> spawners;
    for (const LevelObject* bumper : bumpers) {
        if (bumper->kind == "SpawnerBumper") spawners.push_back(bumper);
    }
    const double margin = kChainGap / 2;
    ForEachOverlap(Boxes(spawners, margin), Boxes(bumpers, margin), [&](size_t s, size_t b) {
        const LevelObject& spawner = *spawners[s];
        const LevelObject& other = *bumpers[b];
        // Two spawners meet twice; the later one reports.
        if (other.kind == "SpawnerBumper" && &other >= &spawner) return;
        const double gap = CentreDistance(spawner, other) - spawner.radius - other.radius;
        if (gap >= kChainGap) return;
        const std::string apart = gap > 0 ? "are " + Length(gap) + " apart" : "meet";
        problems.push_back({false, spawner.line, spawner.kind,
                            At(Describe(spawner), spawner.line) + " and " + At(Describe(other), other.line) +
                                ": their posts " + apart + ", less than two ball diameters (" + Number(kChainGap) +
                                "), so the current ball can bounce between them, making new balls on every hit"});
    });
}

}  // namespace

void CheckPlacement(const LevelFile& file, const std::vector<TrackMesh>& tracks, std::vector<Problem>& problems) {
    std::vector<const LevelObject*> balls, posts, bumpers;
    for (const LevelObject& object : file.objects) {
        if (!HasBody(object)) continue;
        if (IsBall(object)) balls.push_back(&object);
        if (IsPost(object)) posts.push_back(&object);
        // A bumper with no force has no trigger: it neither kicks nor spawns.
        if (IsBumper(object) && object.force > 0) bumpers.push_back(&object);
    }
    Overlaps overlaps(balls);
    BallsInBalls(balls, overlaps);
    BallsInPosts(balls, posts, overlaps);
    for (const TrackMesh& track : tracks) BallsInTrack(balls, track, overlaps);
    overlaps.Report(problems);
    SpawnerChains(bumpers, problems);
}

}  // namespace lint
