#include "tools/tool/bench_arena.h"

#include <algorithm>
#include <cmath>

#include "objects/actor_group.h"
#include "physics/actor.h"
#include "physics/joint.h"
#include "physics/physics_system.h"

namespace {

// A track: a closed outline in the plane, cut into pieces at most one unit long and drawn out
// from z = -2 to z = 2, as the game's track models are.
BenchArena::Mesh Extrude(const std::vector<std::pair<float, float>>& outline) {
    BenchArena::Mesh mesh;
    for (size_t i = 0; i < outline.size(); ++i) {
        const auto [x0, y0] = outline[i];
        const auto [x1, y1] = outline[(i + 1) % outline.size()];
        const int pieces = std::max(1, int(std::ceil(std::hypot(x1 - x0, y1 - y0))));
        for (int p = 0; p < pieces; ++p) {
            const float a = float(p) / pieces, b = float(p + 1) / pieces;
            const uint32_t base = uint32_t(mesh.vertices.size());
            for (float t : {a, b})
                for (float z : {-2.0f, 2.0f}) mesh.vertices.emplace_back(x0 + (x1 - x0) * t, y0 + (y1 - y0) * t, z);
            mesh.triangles.insert(mesh.triangles.end(), {base, base + 2, base + 1, base + 1, base + 2, base + 3});
        }
    }
    return mesh;
}

BenchArena::Mesh Slab(float left, float bottom, float right, float top) {
    return Extrude({{left, bottom}, {right, bottom}, {right, top}, {left, top}});
}

// The closed surfaces of boxes, as our physics takes a moving mesh.
BenchArena::Mesh BoxSurfaces(const std::vector<std::pair<Vector3, Vector3>>& boxes) {
    BenchArena::Mesh mesh;
    for (const auto& [lo, hi] : boxes) {
        const uint32_t base = uint32_t(mesh.vertices.size());
        for (int i = 0; i < 8; ++i)
            mesh.vertices.emplace_back(i & 1 ? hi.x : lo.x, i & 2 ? hi.y : lo.y, i & 4 ? hi.z : lo.z);
        for (uint32_t index : {0, 2, 1, 1, 2, 3, 4, 5, 6, 5, 7, 6, 0, 1, 4, 1, 5, 4,
                               2, 6, 3, 3, 6, 7, 0, 4, 2, 2, 4, 6, 1, 3, 5, 3, 7, 5})
            mesh.triangles.push_back(base + index);
    }
    return mesh;
}

// Within a door's boxes, or within the disc a driven wheel sweeps.
bool Inside(const Vector3& p, const BenchArena::Hinged& body, float margin) {
    if (body.driven) {
        float reach = 0;
        for (const auto& [lo, hi] : body.boxes)
            for (const Vector3& corner : {lo, hi}) reach = std::max(reach, std::hypot(corner.x, corner.y));
        return std::hypot(p.x - body.pivot.x, p.y - body.pivot.y) < reach + margin;
    }
    for (const auto& [lo, hi] : body.boxes) {
        const Vector3 a = body.pivot + lo, b = body.pivot + hi;
        if (p.x > a.x - margin && p.x < b.x + margin && p.y > a.y - margin && p.y < b.y + margin) return true;
    }
    return false;
}

}  // namespace

BenchArena MakeBenchArena(int count, bool joints) {
    BenchArena arena;
    // Walls and floor, and two ramps that throw falling balls towards the middle.
    const float half = std::max(20.0f, std::ceil(std::sqrt(float(count)) * 1.6f));
    const float roof = -half + 3.0f * (float(count) / (half - 2)) + 30;
    arena.tracks = {Slab(-half - 2, -half - 2, half + 2, -half), Slab(-half - 2, -half, -half, roof),
                    Slab(half, -half, half + 2, roof),
                    Extrude({{-half, 0}, {-half * 0.4f, -half * 0.3f}, {-half * 0.4f, -half * 0.3f - 1}, {-half, -1}}),
                    Extrude({{half, -1}, {half * 0.4f, -half * 0.3f - 1}, {half * 0.4f, -half * 0.3f}, {half, 0}})};
    if (joints) {
        // Paddles of radius 4.5 round a hub, turning in the pile; a door hanging from its top edge.
        const std::vector<std::pair<Vector3, Vector3>> wheel = {{{-0.8f, -0.8f, -1.5f}, {0.8f, 0.8f, 1.5f}},
                                                                {{1, -0.25f, -1.5f}, {4.5f, 0.25f, 1.5f}},
                                                                {{-4.5f, -0.25f, -1.5f}, {-1, 0.25f, 1.5f}},
                                                                {{-0.25f, 1, -1.5f}, {0.25f, 4.5f, 1.5f}},
                                                                {{-0.25f, -4.5f, -1.5f}, {0.25f, -1, 1.5f}}};
        arena.hinged.push_back({wheel, 1.0f, Vector3(-half * 0.5f, -half + 7, 0), true});
        arena.hinged.push_back({{{{-0.5f, -6, -5}, {0.5f, 0, 5}}}, 5.0f, Vector3(half * 0.5f, -half + 8, 0), false});
    }

    // Balls on a loose grid above the floor, nudged sideways so that they do not stack; none
    // starts inside a wheel or door.
    const int perRow = int((2 * half - 4) / 2.4f);
    uint32_t seed = 12345;
    for (int slot = 0; int(arena.balls.size()) < count; ++slot) {
        seed = seed * 1103515245u + 12345u;
        const float jitter = float((seed >> 16) % 100) / 250.0f;
        const Vector3 place(-half + 2 + 2.4f * float(slot % perRow) + jitter, -half + 3 + 2.4f * float(slot / perRow), 0);
        if (std::any_of(arena.hinged.begin(), arena.hinged.end(),
                        [&](const BenchArena::Hinged& body) { return Inside(place, body, 1.2f); }))
            continue;
        arena.balls.push_back(place);
    }
    return arena;
}

std::vector<phys::Actor*> BuildArena(const BenchArena& arena, PhysicsSystem& physics) {
    for (const BenchArena::Mesh& track : arena.tracks) {
        phys::Actor* actor = physics.CreateMeshActor(uint32_t(track.vertices.size()), track.vertices.data(),
                                                     uint32_t(track.triangles.size() / 3), track.triangles.data(), 0,
                                                     false, 0);
        if (actor) actor->SetGroup(GroupTrack);
    }
    for (const BenchArena::Hinged& body : arena.hinged) {
        // As the game makes them: a wheel is a moving mesh held in place, a door a box that
        // stays in the plane; both turn on a hinge through their origin.
        phys::Actor* actor = nullptr;
        if (body.driven) {
            const BenchArena::Mesh mesh = BoxSurfaces(body.boxes);
            actor = physics.CreateMeshActor(uint32_t(mesh.vertices.size()), mesh.vertices.data(),
                                            uint32_t(mesh.triangles.size() / 3), mesh.triangles.data(), body.mass,
                                            false, 0);
        } else {
            const auto& [lo, hi] = body.boxes.at(0);
            const Vector3 size = hi - lo, centre = (lo + hi) * 0.5f;
            actor = physics.CreateBoxActor(size.x, size.y, size.z, centre.x, centre.y, centre.z, body.mass, 0);
        }
        if (!actor) continue;
        actor->SetGroup(GroupProp);
        actor->SetGlobalPosition(body.pivot);
        if (body.driven) {
            actor->RaiseBodyFlag(phys::FrozenPos);
        } else {
            physics.CreatePlaneJoint(actor);
        }
        phys::RevoluteJoint* hinge = physics.CreateRevoluteJoint(actor, body.pivot.x, body.pivot.y, 0, 0);
        if (hinge && body.driven)
            hinge->SetMotor({.velTarget = kBenchMotorSpeed, .maxForce = kBenchMotorForce, .freeSpin = false});
    }
    std::vector<phys::Actor*> balls;
    for (const Vector3& place : arena.balls) {
        phys::Actor* ball = physics.CreateSphereActor(1, 1, 0);
        ball->RaiseBodyFlag(phys::FrozenPosZ);
        ball->SetGlobalPosition(place);
        ball->SetGroup(GroupBall);
        balls.push_back(ball);
    }
    return balls;
}

std::unique_ptr<phys::PlainScene> BuildPlainArena(const BenchArena& arena, const Vector3& gravity) {
    auto plain = std::make_unique<phys::PlainScene>(gravity);
    for (const BenchArena::Mesh& track : arena.tracks) plain->AddStaticMesh(track.vertices, track.triangles);
    for (const BenchArena::Hinged& body : arena.hinged) {
        std::optional<phys::PlainScene::Motor> motor;
        if (body.driven) motor = phys::PlainScene::Motor{kBenchMotorSpeed, kBenchMotorForce};
        plain->AddHingedBoxes(body.boxes, body.mass, body.pivot, motor);
    }
    for (const Vector3& place : arena.balls) plain->AddBall(1, 1, place);
    return plain;
}
