// The same scene and the same calls give bit-identical results, run after run.
#include <cmath>
#include <cstring>

#include "tests/physics/physics_fixture.h"
#include "tests/support/tga_bytes.h"

namespace {

struct Outcome {
    std::vector<float> state;  // every actor's pose and velocities, in order
    std::vector<ReportedContact> sounds;
    std::vector<char> triggers;
};

// A walled box with a turbine, a door, pegs, a trigger, balls and dead balls, under a
// gravity that keeps swinging, so nothing ever settles.
Outcome RunBusyScene(int steps) {
    PhysicsSystem physics;
    EXPECT_TRUE(physics.Startup());
    RecordingContacts sounds;
    SetUpTestWorld(physics, sounds);
    RecordingTrigger owner;

    BoxesMesh arena;
    arena.Add({0, -21, 0}, {22, 1, 2});
    arena.Add({0, 21, 0}, {22, 1, 2});
    arena.Add({-21, 0, 0}, {1, 22, 2});
    arena.Add({21, 0, 0}, {1, 22, 2});
    phys::Actor* walls = physics.CreateMeshActor(arena.VertexCount(), arena.vertices.data(), arena.TriangleCount(),
                                                 arena.triangles.data(), 0, false, 0);
    walls->SetGroup(GroupTrack);

    std::vector<phys::Actor*> actors;
    const BoxesMesh wheel = PaddleWheel();
    phys::Actor* turbine = physics.CreateMeshActor(wheel.VertexCount(), wheel.vertices.data(), wheel.TriangleCount(),
                                                   wheel.triangles.data(), 1, true, 0);
    turbine->SetGroup(GroupProp);
    physics.CreateRevoluteJoint(turbine, 8, 8, 0, 0)->SetMotor({.velTarget = 1.5f, .maxForce = 99, .freeSpin = false});
    turbine->SetGlobalPosition({8, 8, 0});
    turbine->RaiseBodyFlag(phys::FrozenPos);
    actors.push_back(turbine);

    phys::Actor* door = physics.CreateBoxActor(1, 6, 10, 0, 3, 0, 1, 0);
    door->SetGroup(GroupProp);
    physics.CreatePlaneJoint(door);
    physics.CreateRevoluteJoint(door, -8, -10, 0, 0);
    door->SetGlobalPosition({-8, -10, 0});
    actors.push_back(door);

    for (int i = 0; i < 3; ++i) {
        phys::Actor* peg = physics.CreateSphereActor(0.5f, 0, 0);
        peg->SetGlobalPosition({-10.0f + 10 * i, 0, 0});
        peg->SetGroup(GroupPeg);
    }
    physics.CreateSphereTrigger(3, &owner)->SetGlobalPosition({0, -15, 0});

    for (int i = 0; i < 40; ++i) {
        const bool dead = i % 8 == 0;
        phys::Actor* ball = physics.CreateSphereActor(1, 1, dead ? 1 : 0);
        ball->RaiseBodyFlag(phys::FrozenPosZ);
        ball->SetGlobalPosition({-16.0f + 4 * (i % 9), -16.0f + 4 * (i / 9), 0});
        ball->SetGroup(dead ? GroupProp : GroupBall);
        actors.push_back(ball);
    }

    for (int step = 0; step < steps; ++step) {
        const float angle = 1.5f * std::sin(step * 0.004f);
        physics.SetGravity({60 * std::sin(angle), -60 * std::cos(angle), 0});
        if (step % 500 == 0) actors[2 + step / 500 % 40]->AddForce({0, 40, 0}, phys::ForceMode::Impulse);
        physics.Step(1.0f / 60.0f);
    }

    Outcome outcome;
    for (phys::Actor* actor : actors) {
        const Matrix4 pose = actor->GetGlobalPose();
        outcome.state.insert(outcome.state.end(), pose.m, pose.m + 12);
        for (const Vector3& v : {actor->GetLinearVelocity(), actor->GetAngularVelocity()})
            outcome.state.insert(outcome.state.end(), {v.x, v.y, v.z});
    }
    outcome.sounds = sounds.played;
    for (const auto& [kind, actor] : owner.log) outcome.triggers.push_back(kind);
    return outcome;
}

TEST(Determinism, TwoRunsOfABusySceneAreBitIdentical) {
    TempDir folder;
    InTempFolder inside(folder.File(""));
    const Outcome first = RunBusyScene(10000);
    const Outcome second = RunBusyScene(10000);

    ASSERT_EQ(first.state.size(), second.state.size());
    EXPECT_EQ(std::memcmp(first.state.data(), second.state.data(), first.state.size() * sizeof(float)), 0);
    ASSERT_EQ(first.sounds.size(), second.sounds.size());
    for (size_t i = 0; i < first.sounds.size(); ++i) {
        EXPECT_EQ(first.sounds[i].otherGroup, second.sounds[i].otherGroup);
        EXPECT_EQ(std::memcmp(&first.sounds[i].force, &second.sounds[i].force, sizeof(float)), 0);
        EXPECT_EQ(std::memcmp(&first.sounds[i].position, &second.sounds[i].position, sizeof(Vector3)), 0);
    }
    EXPECT_EQ(first.triggers, second.triggers);

    // The scene really was busy: many collisions, and balls passing the trigger.
    EXPECT_GT(first.sounds.size(), 100u);
    EXPECT_GT(first.triggers.size(), 10u);
    for (float value : first.state) ASSERT_TRUE(std::isfinite(value));
}

}  // namespace
