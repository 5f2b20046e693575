#include "tools/mediagen/class_models.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>

#include "level/object_kinds.h"
#include "tools/mediagen/class_sizes.h"
#include "tools/mediagen/media_error.h"
#include "tools/mediagen/mesh_builder.h"
#include "tools/mediagen/texture_noise.h"

namespace mediagen {

namespace {

using namespace sizes;
using Strand = std::vector<Point2>;

constexpr double kPi = std::numbers::pi;
constexpr double kDegree = kPi / 180;
constexpr float kTile = 2.0f;  // flat faces repeat their texture every two units

// Points on a circle in the (r, z) plane from angle `from` to `to` (radians), both included.
Strand Arc(Point2 centre, double radius, double from, double to, int steps) {
    Strand arc;
    for (int i = 0; i <= steps; ++i) {
        const double t = from + (to - from) * i / steps;
        arc.push_back({centre.x + radius * std::cos(t), centre.y + radius * std::sin(t)});
    }
    return arc;
}

// A quarter of an ellipse from its rim (r = width) up or down to the axis at `height`: a dome.
Strand Dome(double base, double width, double height, int steps) {
    Strand dome;
    for (int i = 0; i <= steps; ++i) {
        const double t = kPi / 2 * i / steps;
        dome.push_back({width * std::cos(t), base + height * std::sin(t)});
    }
    dome.back().x = 0;  // exactly on the axis
    return dome;
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

// A star: corners alternating between the outer and inner radius, the first point on +x.
std::vector<Point2> Star(int points, double outer, double inner, double start = 0) {
    std::vector<Point2> outline;
    for (int i = 0; i < 2 * points; ++i) {
        const double t = start + kPi * i / points;
        const double r = i % 2 == 0 ? outer : inner;
        outline.push_back({r * std::cos(t), r * std::sin(t)});
    }
    return outline;
}

// A gear wheel: flat-topped teeth between the root and the tip radius.
std::vector<Point2> Gear(int teeth, double root, double tip) {
    std::vector<Point2> outline;
    const double pitch = 2 * kPi / teeth;
    for (int i = 0; i < teeth; ++i) {
        for (const Point2& p : std::vector<Point2>{{-0.3, root}, {-0.16, tip}, {0.16, tip}, {0.3, root}}) {
            const double t = pitch * (i + p.x);
            outline.push_back({p.y * std::cos(t), p.y * std::sin(t)});
        }
    }
    return outline;
}

std::vector<Point2> Turned(const std::vector<Point2>& outline, double angle) {
    const double c = std::cos(angle), s = std::sin(angle);
    std::vector<Point2> turned;
    for (const Point2& p : outline) turned.push_back({p.x * c - p.y * s, p.x * s + p.y * c});
    return turned;
}

// A smooth sphere; 2 * rings segments round, so it reaches its radius on the x and y axes.
void Sphere(MeshBuilder& mesh, double radius, int rings, Vector3 centre = {0, 0, 0}) {
    Strand meridian = Arc({0, 0}, radius, -kPi / 2, kPi / 2, rings);
    meridian.front().x = meridian.back().x = 0;
    mesh.Lathe({meridian}, 2 * rings, centre);
}

// A ring round the z axis with a round tube.
void Torus(MeshBuilder& mesh, double outer, double tube, int segments, float z = 0) {
    Strand tubeRound = Arc({outer - tube, 0}, tube, 0, 2 * kPi, 16);
    tubeRound.back() = tubeRound.front();  // closed exactly, not to within rounding
    mesh.Lathe({tubeRound}, segments, {0, 0, z});
}

// The body the three bumpers share, seen from the front as a thick rubber rim round a cap: a
// flat base, a straight skirt and a round rim reaching the bumper's radius at kRimZ. Ends in the
// groove inside the rim, where the caller's cap begins.
constexpr double kRimZ = 0.6, kRimTube = 0.4, kSkirt = 1.9;

std::vector<Strand> BumperBody() {
    const double bottom = -kPostHalfDepth, rimCentre = kBumperRadius - kRimTube;
    const double meet = std::acos((kSkirt - rimCentre) / kRimTube);  // where the rim leaves the skirt
    // Through angle 0 exactly, so the rim reaches the full radius.
    Strand rim = Arc({rimCentre, kRimZ}, kRimTube, -meet, 0, 3);
    const Strand over = Arc({rimCentre, kRimZ}, kRimTube, 0, 160 * kDegree, 11);
    rim.insert(rim.end(), over.begin() + 1, over.end());
    return {{{0, bottom}, {kSkirt - 0.1, bottom}},
            {{kSkirt - 0.1, bottom}, {kSkirt, bottom + 0.1}},
            {{kSkirt, bottom + 0.1}, rim.front()},
            rim};
}

Point2 Groove(const std::vector<Strand>& body) { return body.back().back(); }

constexpr int kBumperSegments = 48;

MaxObject Ball() {
    MeshBuilder mesh("Ball");
    Sphere(mesh, kBallRadius, 16);
    return mesh.Take();
}

// A battered ball: flat facets, some corners pressed in. Its six tips stay at the radius.
MaxObject DeadBall() {
    MeshBuilder mesh("DeadBall");
    mesh.FacetedSphere({0, 0, 0}, kDeadBallRadius, 3);
    MaxObject ball = mesh.Take();
    for (Vector3& v : ball.vertices) {
        const float extreme = std::max({std::abs(v.x), std::abs(v.y), std::abs(v.z)});
        if (extreme > kDeadBallRadius * 0.9999f) continue;
        // The same position in every facet that shares it gives the same dent.
        const auto q = [](float c) { return uint32_t(int32_t(std::lround(c * 1000))); };
        const double dent = Hash(q(v.x), q(v.y), q(v.z), 5);
        const float keep = float(1 - 0.09 * dent * dent);
        v = {v.x * keep, v.y * keep, v.z * keep};
    }
    return ball;
}

// A post with a rubber rim and a low domed cap.
MaxObject Bumper() {
    MeshBuilder mesh("Bumper");
    std::vector<Strand> profile = BumperBody();
    // A spherical cap from the groove to the top, centred on the axis.
    const Point2 groove = Groove(profile);
    const double top = kPostHalfDepth;
    const double centre = (top * top - groove.x * groove.x - groove.y * groove.y) / (2 * (top - groove.y));
    Strand cap = Arc({0, centre}, top - centre, std::atan2(groove.y - centre, groove.x), kPi / 2, 10);
    cap.front() = groove;
    cap.back().x = 0;
    profile.push_back(cap);
    mesh.Lathe(profile, kBumperSegments);
    return mesh.Take();
}

// A flat seat inside the rim for what crowns the other bumpers.
constexpr double kSeat = 0.82;

std::vector<Strand> SeatedBumperBody() {
    std::vector<Strand> profile = BumperBody();
    const Point2 groove = Groove(profile);
    profile.push_back({groove, {groove.x - 0.08, kSeat}});
    profile.push_back({{groove.x - 0.08, kSeat}, {0, kSeat}});
    return profile;
}

// The rim round a bevelled double arrow standing up out of the seat, along the gravity it flips.
MaxObject ReverseGravityBumper() {
    MeshBuilder mesh("ReverseGravityBumper");
    mesh.Lathe(SeatedBumperBody(), kBumperSegments);
    const std::vector<Point2> arrows{{0, 1.55},   {0.85, 0.55},   {0.32, 0.55},  {0.32, -0.55}, {0.85, -0.55},
                                     {0, -1.55},  {-0.85, -0.55}, {-0.32, -0.55}, {-0.32, 0.55}, {-0.85, 0.55}};
    mesh.BevelledPrism(arrows, float(kSeat - 0.05), float(kPostHalfDepth), 0.1f, false, kTile);
    return mesh.Take();
}

// The rim crowned with six round knobs about a dome: the bumper that makes balls.
MaxObject SpawnerBumper() {
    MeshBuilder mesh("SpawnerBumper");
    mesh.Lathe(SeatedBumperBody(), kBumperSegments);
    mesh.Lathe({{{0, kSeat - 0.05}, {0.72, kSeat - 0.05}}, Dome(kSeat - 0.05, 0.72, kPostHalfDepth - kSeat + 0.05, 8)},
               32);
    for (const Point2& at : Regular(6, 1.32, kPi / 6)) Sphere(mesh, 0.3, 8, {float(at.x), float(at.y), 1.08f});
    return mesh.Take();
}

// A round pin: a bevelled shaft, a groove and a domed head facing the viewer.
MaxObject Peg() {
    MeshBuilder mesh("Peg");
    const double r = kPegRadius, bottom = -kPostHalfDepth, headBase = 1.05;
    mesh.Lathe({{{0, bottom}, {r - 0.06, bottom}},
                {{r - 0.06, bottom}, {r, bottom + 0.06}},
                {{r, bottom + 0.06}, {r, 0.82}},
                {{r, 0.82}, {r - 0.07, 0.9}, {r - 0.07, 0.97}, {r, headBase}},
                Dome(headBase, r, kPostHalfDepth - headBase, 8)},
               24);
    return mesh.Take();
}

// A drum with rounded edges along z, from z0 to z1, of the given radius.
std::vector<Strand> RoundedDrum(double radius, double z0, double z1, double round) {
    return {{{0, z0}, {radius - round, z0}},
            Arc({radius - round, z0 + round}, round, -kPi / 2, 0, 4),
            {{radius, z0 + round}, {radius, z1 - round}},
            Arc({radius - round, z1 - round}, round, 0, kPi / 2, 4),
            {{radius - round, z1}, {0, z1}}};
}

std::vector<MaxObject> Turbine(const std::string& name, int paddles, bool driven) {
    // The hub and each paddle are convex, chamfered, and share no corner, so the physics keeps
    // them as separate hulls; a hull of the whole wheel would be a disc.
    constexpr float kChamfer = 0.06f;
    MeshBuilder collision(name + "Collision");
    collision.BevelledPrism(Regular(8, kTurbineHubRadius, kPi / 8), -kPostHalfDepth, kPostHalfDepth, kChamfer, true, kTile);
    const double half = kPaddleThickness / 2, c = kChamfer, in = kPaddleInnerRadius, out = kTurbineRadius;
    const std::vector<Point2> paddle{{in + c, -half}, {out - c, -half}, {out, -half + c}, {out, half - c},
                                     {out - c, half},  {in + c, half},   {in, half - c},   {in, -half + c}};
    for (int i = 0; i < paddles; ++i) {
        collision.BevelledPrism(Turned(paddle, 2 * kPi * i / paddles), -kPostHalfDepth, kPostHalfDepth, kChamfer, true,
                                kTile);
    }

    // Drawn only: a drum over the hub that hides the gaps at the paddles' roots, axle caps front
    // and back, and on the driven wheel a gear.
    MeshBuilder trim(name + "Trim");
    const double drum = kPostHalfDepth + 0.12;
    trim.Lathe(RoundedDrum(1.25, -drum, drum, 0.1), 32);
    double front = drum;
    if (driven) {
        trim.BevelledPrism(Gear(10, 0.78, 1.02), float(drum - 0.02), float(drum + 0.13), 0.04f, false, kTile);
        front = drum + 0.13;
    }
    const double capTop = driven ? 1.95 : 1.8;
    trim.Lathe({{{0, front - 0.02}, {0.45, front - 0.02}}, Dome(front - 0.02, 0.45, capTop - front + 0.02, 6)}, 24);
    Strand back = Dome(-drum + 0.02, 0.45, -(1.8 - drum + 0.02), 6);
    std::reverse(back.begin(), back.end());  // out from the axis along the bottom
    trim.Lathe({back, {{0.45, -drum + 0.02}, {0, -drum + 0.02}}}, 24);
    return {collision.Take(), trim.Take()};
}

// A chamfered slab with a round barrel along its hinge, so the end it turns about is round.
MaxObject HingedDoor() {
    MeshBuilder mesh("HingedDoor");
    const float half = kDoorThickness / 2, depth = kDoorDepth / 2;
    mesh.Box({-half, half, -depth}, {half, kDoorLength, depth}, kTile, 0.12f);
    mesh.Lathe(RoundedDrum(half, -depth, depth, 0.12), 24, {0, half, 0});
    return mesh.Take();
}

// A thick ring, and set back inside it a thin one: an open gate.
MaxObject TeleporterEntrance() {
    MeshBuilder mesh("TeleporterEntrance");
    Torus(mesh, kTeleporterEntranceRadius, kTeleporterHalfDepth, 64);
    Torus(mesh, 1.9, 0.14, 48, -0.2f);
    return mesh.Take();
}

// A thinner ring round a bevelled four-pointed star.
MaxObject TeleporterExit() {
    MeshBuilder mesh("TeleporterExit");
    Torus(mesh, kTeleporterExitRadius, 0.4, 48);
    mesh.BevelledPrism(Star(4, 1.0, 0.34, kPi / 2), -0.18f, 0.18f, 0.08f, true, kTile);
    return mesh.Take();
}

// A cup open towards the viewer: a thick wall with a rounded lip round a back plate that
// carries a target ring and a boss.
MaxObject Goal() {
    MeshBuilder mesh("Goal");
    const double r = kGoalRadius, z = kGoalHalfDepth, inner = 2.2, plate = -1.2, lip = (r - inner) / 2;
    mesh.Lathe({{{0, -z}, {r - 0.15, -z}},
                Arc({r - 0.15, -z + 0.15}, 0.15, -kPi / 2, 0, 4),
                {{r, -z + 0.15}, {r, z - lip}},
                Arc({r - lip, z - lip}, lip, 0, kPi, 12),
                {{inner, z - lip}, {inner, plate + 0.25}},
                Arc({inner - 0.25, plate + 0.25}, 0.25, 0, -kPi / 2, 5),
                {{inner - 0.25, plate}, {1.55, plate}},
                {{1.55, plate}, {1.45, plate + 0.1}, {1.0, plate + 0.1}, {0.9, plate}},
                {{0.9, plate}, {0.45, plate}},
                {{0.45, plate}, {0.35, plate + 0.08}, {0, plate + 0.08}}},
               64);
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
