#pragma once
// A started physics world and small helpers to build scenes in a few lines.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include <cmath>

#include "physics/actor.h"
#include "physics/joint.h"
#include "physics/physics_system.h"
#include "physics/scene.h"
#include "physics/trigger_listener.h"

// The groups these tests give their actors; to the physics they are only numbers.
enum TestGroup : uint16_t { GroupBall = 1, GroupTrack = 2, GroupBumper = 3, GroupPeg = 4, GroupProp = 5 };

// A reported start of touch: what the ball struck, where the ball was, how hard.
struct ReportedContact {
    uint16_t otherGroup;
    Vector3 position;
    float force;  // the length of the summed normal force
};

// Records the contacts of balls as the step reports them.
class RecordingContacts : public phys::UserContactReport {
public:
    void OnContactNotify(const phys::ContactPair& pair, uint32_t) override {
        const int ball = pair.actors[0]->GetGroup() == GroupBall ? 0 : 1;
        const Vector3 f = pair.sumNormalForce;
        played.push_back({pair.actors[1 - ball]->GetGroup(), pair.actors[ball]->GetGlobalPosition(),
                          std::sqrt(f.x * f.x + f.y * f.y + f.z * f.z)});
    }
    std::vector<ReportedContact> played;
};

// The game's surfaces and reported pairs, as a scene of these tests uses them.
inline void SetUpTestWorld(PhysicsSystem& physics, RecordingContacts& contacts) {
    physics.SetMaterial(0, {.staticFriction = 0.6f, .dynamicFriction = 0.1f, .restitution = 0.3f});
    physics.SetMaterial(1, {.staticFriction = 0.8f, .dynamicFriction = 0.7f, .restitution = 0.0f});
    for (uint16_t group : {GroupTrack, GroupBumper, GroupProp, GroupPeg}) physics.ReportContacts(GroupBall, group);
    physics.SetContactListener(&contacts);
}

class RecordingTrigger : public phys::TriggerListener {
public:
    void OnTriggerEnter(phys::Actor* other) override { log.push_back({'E', other}); }
    void OnTriggerStay(phys::Actor* other) override { log.push_back({'S', other}); }
    void OnTriggerLeave(phys::Actor* other) override { log.push_back({'L', other}); }
    int Count(char kind) const {
        int n = 0;
        for (const auto& entry : log) n += entry.first == kind;
        return n;
    }
    std::vector<std::pair<char, phys::Actor*>> log;
};

// Vertices, and triangles as three vertex indices each, for mesh actors.
struct TestMesh {
    // A flat square grid in the plane y = top, spanning x and z from -half to half.
    static TestMesh Grid(float half, int cells, float top = 0.0f) {
        TestMesh grid;
        const float step = 2 * half / cells;
        for (int i = 0; i <= cells; ++i)
            for (int j = 0; j <= cells; ++j) grid.vertices.emplace_back(-half + i * step, top, -half + j * step);
        for (int i = 0; i < cells; ++i)
            for (int j = 0; j < cells; ++j) {
                const uint32_t a = i * (cells + 1) + j, b = a + 1, c = a + cells + 1, d = c + 1;
                grid.triangles.insert(grid.triangles.end(), {a, b, c, b, d, c});
            }
        return grid;
    }
    // Adds a closed box of 12 triangles around the centre c, a connected part of its own.
    TestMesh& AddBox(Vector3 c, Vector3 h) {
        const uint32_t base = uint32_t(vertices.size());
        for (int i = 0; i < 8; ++i)
            vertices.emplace_back(c.x + (i & 1 ? h.x : -h.x), c.y + (i & 2 ? h.y : -h.y), c.z + (i & 4 ? h.z : -h.z));
        const uint32_t faces[12][3] = {{0, 2, 1}, {1, 2, 3}, {4, 5, 6}, {5, 7, 6}, {0, 1, 4}, {1, 5, 4},
                                       {2, 6, 3}, {3, 6, 7}, {0, 4, 2}, {2, 4, 6}, {1, 3, 5}, {3, 7, 5}};
        for (const auto& f : faces) triangles.insert(triangles.end(), {base + f[0], base + f[1], base + f[2]});
        return *this;
    }
    uint32_t VertexCount() const { return uint32_t(vertices.size()); }
    uint32_t TriangleCount() const { return uint32_t(triangles.size() / 3); }
    std::vector<Vector3> vertices;
    std::vector<uint32_t> triangles;
};

inline phys::Actor* MakeMeshActor(PhysicsSystem& physics, const TestMesh& mesh, float mass, bool usePMap = false) {
    return physics.CreateMeshActor(mesh.VertexCount(), mesh.vertices.data(), mesh.TriangleCount(), mesh.triangles.data(),
                                   mass, usePMap, 0);
}

// Four paddles around the origin in the plane z = 0: a turbine wheel of four separate parts.
inline TestMesh PaddleWheel() {
    return TestMesh()
        .AddBox({2.5f, 0, 0}, {2, 0.25f, 1})
        .AddBox({-2.5f, 0, 0}, {2, 0.25f, 1})
        .AddBox({0, 2.5f, 0}, {0.25f, 2, 1})
        .AddBox({0, -2.5f, 0}, {0.25f, 2, 1});
}

class PhysicsTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(physics.Startup());
        SetUpTestWorld(physics, sounds);
    }

    void Steps(int count) {
        for (int i = 0; i < count; ++i) physics.Step(kFrame);
    }

    // A ball as the game makes one: frozen in z, group 1.
    phys::Actor* Ball(Vector3 at, float radius = 1.0f) {
        phys::Actor* ball = physics.CreateSphereActor(radius, 1.0f, 0);
        ball->RaiseBodyFlag(phys::FrozenPosZ);
        ball->SetGlobalPosition(at);
        ball->SetGroup(GroupBall);
        return ball;
    }

    // A static floor at y = top, in the track group; the finer the grid, the more seams.
    phys::Actor* Floor(float top = 0.0f, int cells = 10) {
        phys::Actor* floor = MakeMeshActor(physics, TestMesh::Grid(50, cells, top), 0);
        floor->SetGroup(GroupTrack);
        return floor;
    }

    static constexpr float kFrame = 1.0f / 60.0f;
    PhysicsSystem physics;
    RecordingContacts sounds;
};

// Runs the test inside a fresh folder, where mesh caches are written, and returns after.
class InTempFolder {
public:
    explicit InTempFolder(const std::string& folder) : previous(std::filesystem::current_path()) {
        std::filesystem::current_path(folder);
    }
    ~InTempFolder() { std::filesystem::current_path(previous); }

private:
    std::filesystem::path previous;
};
