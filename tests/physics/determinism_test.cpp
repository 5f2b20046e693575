// The same scene and the same calls give bit-identical results, run after run.
#include <cmath>
#include <cstring>

#include "tests/physics/physics_fixture.h"
#include "tests/support/files.h"

namespace {

struct Outcome {
    std::vector<float> state;  // every actor's pose and velocities, then every contact reported
    size_t sounds = 0;
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

    const TestMesh arena = TestMesh()
                               .AddBox({0, -21, 0}, {22, 1, 2})
                               .AddBox({0, 21, 0}, {22, 1, 2})
                               .AddBox({-21, 0, 0}, {1, 22, 2})
                               .AddBox({21, 0, 0}, {1, 22, 2});
    MakeMeshActor(physics, arena, 0)->SetGroup(GroupTrack);

    std::vector<phys::Actor*> actors;
    phys::Actor* turbine = MakeMeshActor(physics, PaddleWheel(), 1, true);
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
    for (const ReportedContact& c : sounds.played)
        outcome.state.insert(outcome.state.end(), {float(c.otherGroup), c.position.x, c.position.y, c.position.z, c.force});
    outcome.sounds = sounds.played.size();
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
    EXPECT_EQ(first.triggers, second.triggers);

    // The scene really was busy: many collisions, and balls passing the trigger.
    EXPECT_GT(first.sounds, 100u);
    EXPECT_GT(first.triggers.size(), 10u);
    for (float value : first.state) ASSERT_TRUE(std::isfinite(value));
}

}  // namespace
