#include "tools/mediagen/class_models.h"

#include <cmath>
#include <numbers>

#include "level/object_kinds.h"
#include "tools/mediagen/class_sizes.h"
#include "tools/mediagen/media_error.h"
#include "tools/mediagen/mesh_builder.h"

namespace mediagen {

namespace {

using namespace sizes;
using Strand = std::vector<Point2>;

constexpr double kPi = std::numbers::pi;
constexpr int kRoundSegments = 24;
constexpr float kTile = 2.0f;  // prisms repeat their texture every two units
constexpr double kWhole = 1e9;  // no need to cut the sides of small prisms

// Points on a circle in the (r, z) plane from angle `from` to `to` (radians), both included.
Strand Arc(Point2 centre, double radius, double from, double to, int steps) {
    Strand arc;
    for (int i = 0; i <= steps; ++i) {
        const double t = from + (to - from) * i / steps;
        arc.push_back({centre.x + radius * std::cos(t), centre.y + radius * std::sin(t)});
    }
    return arc;
}

// A regular polygon in the plane, its first corner on the +x side at `start` radians.
std::vector<Point2> Regular(int corners, double radius, double start = 0) {
    std::vector<Point2> outline;
    for (int i = 0; i < corners; ++i) {
        const double t = start + 2 * kPi * i / corners;
        outline.push_back({radius * std::cos(t), radius * std::sin(t)});
    }
    return outline;
}

// A star or gear: corners alternating between the outer and inner radius.
std::vector<Point2> Star(int points, double outer, double inner) {
    std::vector<Point2> outline;
    for (int i = 0; i < 2 * points; ++i) {
        const double t = kPi * i / points;
        const double r = i % 2 == 0 ? outer : inner;
        outline.push_back({r * std::cos(t), r * std::sin(t)});
    }
    return outline;
}

// A flat-bottomed post of the given radius from z = -1.5 whose top edge is rounded off by
// `round`, ending in a flat top at `top`.
void RoundedPost(MeshBuilder& mesh, double radius, double top, double round) {
    const double bottom = -kPostHalfDepth;
    Strand side{{radius, bottom}};
    for (const Point2& p : Arc({radius - round, top - round}, round, 0, kPi / 2, 4)) side.push_back(p);
    side.push_back({0, top});
    mesh.Lathe({{{0, bottom}, {radius, bottom}}, side}, kRoundSegments);
}

void Cylinder(MeshBuilder& mesh, double radius, double bottom, double top, int segments, Vector3 centre = {0, 0, 0}) {
    mesh.Lathe({{{0, bottom}, {radius, bottom}}, {{radius, bottom}, {radius, top}}, {{radius, top}, {0, top}}},
               segments, centre);
}

void Torus(MeshBuilder& mesh, double outer, double tube, int segments) {
    Strand tubeRound = Arc({outer - tube, 0}, tube, 0, 2 * kPi, 12);
    tubeRound.back() = tubeRound.front();  // closed exactly, not to within rounding
    mesh.Lathe({tubeRound}, segments);
}

MaxObject Ball() {
    MeshBuilder mesh("Ball");
    Strand meridian = Arc({0, 0}, kBallRadius, -kPi / 2, kPi / 2, 12);
    meridian.front().x = meridian.back().x = 0;  // exactly on the axis at the poles
    mesh.Lathe({meridian}, 16);
    return mesh.Take();
}

MaxObject DeadBall() {
    MeshBuilder mesh("DeadBall");
    mesh.FacetedSphere({0, 0, 0}, kDeadBallRadius, 2);
    return mesh.Take();
}

MaxObject Bumper() {
    MeshBuilder mesh("Bumper");
    RoundedPost(mesh, kBumperRadius, kPostHalfDepth, 0.6);
    return mesh.Take();
}

// A lower post with a double arrow standing on it, pointing along the gravity it flips.
MaxObject ReverseGravityBumper() {
    MeshBuilder mesh("ReverseGravityBumper");
    constexpr double kTop = 1.0;
    RoundedPost(mesh, kBumperRadius, kTop, 0.5);
    const std::vector<Point2> arrows{{0, 1.5},   {0.8, 0.6},   {0.3, 0.6},  {0.3, -0.6}, {0.8, -0.6},
                                     {0, -1.5},  {-0.8, -0.6}, {-0.3, -0.6}, {-0.3, 0.6}, {-0.8, 0.6}};
    mesh.Prism(arrows, float(kTop - 0.05), kPostHalfDepth, kTile, kWhole);
    return mesh.Take();
}

// A lower post crowned with a ring of six knobs round a dome.
MaxObject SpawnerBumper() {
    MeshBuilder mesh("SpawnerBumper");
    constexpr double kTop = 1.0;
    constexpr double kSeat = kTop - 0.05;
    RoundedPost(mesh, kBumperRadius, kTop, 0.5);
    auto dome = [&](double radius, Vector3 centre) {
        Strand cap;
        for (int i = 0; i <= 4; ++i) {
            const double t = kPi / 2 * i / 4;
            cap.push_back({radius * std::cos(t), kSeat + (kPostHalfDepth - kSeat) * std::sin(t)});
        }
        cap.back().x = 0;
        mesh.Lathe({{{0, kSeat}, {radius, kSeat}}, cap}, 12, centre);
    };
    dome(0.6, {0, 0, 0});
    for (const Point2& at : Regular(6, 1.3)) dome(0.35, {float(at.x), float(at.y), 0});
    return mesh.Take();
}

MaxObject Peg() {
    MeshBuilder mesh("Peg");
    Cylinder(mesh, kPegRadius, -kPostHalfDepth, kPostHalfDepth, 16);
    return mesh.Take();
}

std::vector<MaxObject> Turbine(const std::string& name, int paddles, bool driven) {
    MeshBuilder collision(name + "Collision");
    collision.Prism(Regular(8, kTurbineHubRadius, kPi / 8), -kPostHalfDepth, kPostHalfDepth, kTile, kWhole);
    const double half = kPaddleThickness / 2;
    for (int i = 0; i < paddles; ++i) {
        const double t = 2 * kPi * i / paddles;
        const double c = std::cos(t), s = std::sin(t);
        std::vector<Point2> paddle;
        for (const Point2& p : std::vector<Point2>{{kPaddleInnerRadius, -half},
                                                   {kTurbineRadius, -half},
                                                   {kTurbineRadius, half},
                                                   {kPaddleInnerRadius, half}}) {
            paddle.push_back({p.x * c - p.y * s, p.x * s + p.y * c});
        }
        collision.Prism(paddle, -kPostHalfDepth, kPostHalfDepth, kTile, kWhole);
    }

    // Axle caps front and back; the driven wheel also wears a gear on its front.
    MeshBuilder trim(name + "Trim");
    double front = kPostHalfDepth;
    if (driven) {
        trim.Prism(Star(8, 0.95, 0.7), kPostHalfDepth, kPostHalfDepth + 0.15f, kTile, kWhole);
        front += 0.15;
    }
    Cylinder(trim, 0.5, front, front + 0.3, 12);
    Cylinder(trim, 0.5, -kPostHalfDepth - 0.3, -kPostHalfDepth, 12);
    return {collision.Take(), trim.Take()};
}

MaxObject HingedDoor() {
    MeshBuilder mesh("HingedDoor");
    mesh.Box({-kDoorThickness / 2, 0, -kDoorDepth / 2}, {kDoorThickness / 2, kDoorLength, kDoorDepth / 2}, kTile);
    return mesh.Take();
}

MaxObject TeleporterEntrance() {
    MeshBuilder mesh("TeleporterEntrance");
    Torus(mesh, kTeleporterEntranceRadius, kTeleporterHalfDepth, 32);
    return mesh.Take();
}

// A thinner ring round a flat four-pointed star.
MaxObject TeleporterExit() {
    MeshBuilder mesh("TeleporterExit");
    Torus(mesh, kTeleporterExitRadius, 0.4, 32);
    mesh.Prism(Star(4, 0.9, 0.3), -0.1f, 0.1f, kTile, kWhole);
    return mesh.Take();
}

// A thick ring closed by a back plate: the cup's cross section, round from the axis.
MaxObject Goal() {
    MeshBuilder mesh("Goal");
    constexpr double kInner = 2.2, kPlate = 0.3;
    const double r = kGoalRadius, z = kGoalHalfDepth;
    mesh.Lathe({{{0, -z}, {r, -z}},
                {{r, -z}, {r, z}},
                {{r, z}, {kInner, z}},
                {{kInner, z}, {kInner, -z + kPlate}},
                {{kInner, -z + kPlate}, {0, -z + kPlate}}},
               32);
    return mesh.Take();
}

}  // namespace

// The model of each class, by the class name the game's object kinds give.
std::vector<MaxObject> ClassModel(const std::string& className) {
    if (className == "Ball") return {Ball()};
    if (className == "DeadBall") return {DeadBall()};
    if (className == "Bumper") return {Bumper()};
    if (className == "ReverseGravityBumper") return {ReverseGravityBumper()};
    if (className == "SpawnerBumper") return {SpawnerBumper()};
    if (className == "Peg") return {Peg()};
    if (className == "FreeTurbine") return Turbine("FreeTurbine", kFreeTurbinePaddles, false);
    if (className == "Turbine") return Turbine("Turbine", kDrivenTurbinePaddles, true);
    if (className == "HingedDoor") return {HingedDoor()};
    if (className == "TeleporterEntrance") return {TeleporterEntrance()};
    if (className == "TeleporterExit") return {TeleporterExit()};
    if (className == "Goal") return {Goal()};
    throw MediaError(std::string("no model is drawn for the object class ") + className);
}

std::vector<ModelFile> ClassModels() {
    std::vector<ModelFile> files;
    for (const ObjectKind& kind : ObjectKinds()) files.push_back({kind.model, ClassModel(kind.className)});
    return files;
}

}  // namespace mediagen
