#pragma once
// The physics bench's scene, described once and built into either world: our scene and the
// plain library it is measured against.
#include <memory>
#include <utility>
#include <vector>

#include "core/vector3.h"
#include "physics/plain_scene.h"

class PhysicsSystem;
namespace phys {
class Actor;
}

struct BenchArena {
    struct Mesh {
        std::vector<Vector3> vertices;
        std::vector<uint32_t> triangles;
    };
    struct Hinged {
        std::vector<std::pair<Vector3, Vector3>> boxes;  // corners in the body's frame
        float mass;
        Vector3 pivot;
        bool driven;
    };
    std::vector<Mesh> tracks;
    std::vector<Vector3> balls;
    std::vector<Hinged> hinged;  // a driven wheel and a door, when asked for
};

constexpr float kBenchMotorSpeed = 1.5f;  // rad/s
constexpr float kBenchMotorForce = 99.0f;

// `count` balls of radius 1 dropped from a loose grid into a walled arena with two ramps; with
// joints, a driven paddle wheel and a hanging door stand in the pile.
BenchArena MakeBenchArena(int count, bool joints);

// Builds the arena into our physics; returns the balls.
std::vector<phys::Actor*> BuildArena(const BenchArena& arena, PhysicsSystem& physics);
std::unique_ptr<phys::PlainScene> BuildPlainArena(const BenchArena& arena, const Vector3& gravity);
