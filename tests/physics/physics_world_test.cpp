// Actors, joints and stepping, as the game's objects use them.
#include <cmath>
#include <cstring>
#include <limits>

#include "tests/physics/physics_fixture.h"
#include "tests/support/files.h"

namespace {

using WorldTest = PhysicsTest;

TEST_F(WorldTest, MassDecidesStaticOrDynamicAndBadValuesMakeNothing) {
    physics.SetGravity({0, -60, 0});
    phys::Actor* fixed = physics.CreateSphereActor(1, 0, 0);
    phys::Actor* loose = physics.CreateSphereActor(1, 2, 0);
    fixed->SetGlobalPosition({0, 10, 0});
    loose->SetGlobalPosition({10, 10, 0});
    Steps(30);
    EXPECT_FALSE(fixed->IsDynamic());
    EXPECT_EQ(fixed->GetGlobalPosition().y, 10.0f);
    EXPECT_TRUE(loose->IsDynamic());
    EXPECT_EQ(loose->GetMass(), 2.0f);
    EXPECT_LT(loose->GetGlobalPosition().y, 10.0f);

    EXPECT_EQ(physics.CreateSphereActor(0, 1, 0), nullptr);
    EXPECT_EQ(physics.CreateSphereActor(-1, 1, 0), nullptr);
    EXPECT_EQ(physics.CreateSphereActor(1, -1, 0), nullptr);
    EXPECT_EQ(physics.CreateSphereActor(1, std::nanf(""), 0), nullptr);
    EXPECT_EQ(physics.CreateBoxActor(1, 0, 1, 0, 0, 0, 1, 0), nullptr);
    const uint32_t outOfRange[] = {0, 1, 7};
    const Vector3 three[] = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    EXPECT_EQ(physics.CreateMeshActor(3, three, 1, outOfRange, 0, false, 0), nullptr);
    EXPECT_EQ(physics.CreateMeshActor(0, three, 0, outOfRange, 0, false, 0), nullptr);

    // Values whose inverse, inertia or bounds overflow single precision make nothing either.
    for (const float mass : {1e38f, 3e38f, 1e-40f, 1e-45f, 2e9f})
        EXPECT_EQ(physics.CreateSphereActor(1, mass, 0), nullptr) << mass;
    for (const float radius : {3e38f, 1e6f, 1e-30f})
        EXPECT_EQ(physics.CreateSphereActor(radius, 1, 0), nullptr) << radius;
    EXPECT_EQ(physics.CreateBoxActor(1, 1e30f, 1, 0, 0, 0, 1, 0), nullptr);
    const Vector3 huge[] = {{0, 0, 0}, {1e25f, 0, 0}, {0, 1e25f, 0}, {0, 0, 1e25f}};
    const uint32_t tetrahedron[] = {0, 2, 1, 0, 1, 3, 0, 3, 2, 1, 2, 3};
    EXPECT_EQ(physics.CreateMeshActor(4, huge, 4, tetrahedron, 1e6f, false, 0), nullptr) << "inertia overflows";
    EXPECT_NE(physics.CreateSphereActor(1e4f, 1e9f, 0), nullptr) << "the edges of the ranges are fine";
    EXPECT_NE(physics.CreateSphereActor(1e-4f, 1e-6f, 0), nullptr);
}

bool Same(const Vector3& a, const Vector3& b) { return a.x == b.x && a.y == b.y && a.z == b.z; }

// Records the actors the world switches off.
struct RecordingFaults : phys::UserFaultReport {
    void OnActorSwitchedOff(phys::Actor* actor, phys::Fault fault) override { log.emplace_back(actor, fault); }
    std::vector<std::pair<phys::Actor*, phys::Fault>> log;
};

// A body kicked to infinity is stopped at the step that makes it so, before its NaN reaches
// what it touches; everything else plays on.
TEST_F(WorldTest, ABodyWhoseMotionStopsBeingFiniteIsSwitchedOffAndReported) {
    RecordingFaults faults;
    physics.SetFaultListener(&faults);
    physics.SetGravity({0, -60, 0});
    Floor();
    phys::Actor* runaway = Ball({0, 1, 0});
    phys::Actor* neighbour = Ball({2.5f, 1, 0});
    phys::Actor* door = physics.CreateBoxActor(1, 6, 1, 0, 3, 0, 1, 0);
    door->SetGlobalPosition({-20, 10, 0});
    phys::Joint* hinge = physics.CreateRevoluteJoint(door, -20, 10, 0, 0);
    ASSERT_NE(hinge, nullptr);
    Steps(30);
    const Vector3 before = runaway->GetGlobalPosition();

    runaway->AddForce({3e38f, 0, 0}, phys::ForceMode::Impulse);
    runaway->AddForce({3e38f, 0, 0}, phys::ForceMode::Impulse);  // infinite velocity
    door->SetAngularVelocity({0, 0, std::numeric_limits<float>::infinity()});
    Steps(1);
    ASSERT_EQ(faults.log.size(), 2u);
    EXPECT_EQ(faults.log[0], std::make_pair(runaway, phys::Fault::NotFinite));
    EXPECT_EQ(faults.log[1], std::make_pair(door, phys::Fault::NotFinite));
    EXPECT_TRUE(runaway->IsSwitchedOff());
    EXPECT_TRUE(Same(runaway->GetGlobalPosition(), before)) << "put back where the step began";
    EXPECT_TRUE(Same(runaway->GetLinearVelocity(), {0, 0, 0}));

    const float y = neighbour->GetGlobalPosition().y;
    Steps(60);
    EXPECT_EQ(faults.log.size(), 2u) << "reported once";
    EXPECT_TRUE(Same(runaway->GetGlobalPosition(), before)) << "out of the world, nothing moves it";
    runaway->AddForce({10, 0, 0}, phys::ForceMode::Impulse);
    EXPECT_TRUE(Same(runaway->GetLinearVelocity(), {0, 0, 0}));
    EXPECT_TRUE(std::isfinite(neighbour->GetGlobalPosition().x));
    EXPECT_NEAR(neighbour->GetGlobalPosition().y, y, 0.05f) << "the neighbour still rests on the floor";

    physics.ReleaseJoint(hinge);
    physics.ReleaseActor(door);
    physics.ReleaseActor(runaway);
    neighbour->SetGlobalPosition({std::nanf(""), 0, 0});
    EXPECT_TRUE(std::isfinite(neighbour->GetGlobalPosition().x)) << "a position that is no number is ignored";
    Steps(1);
    physics.RemoveFaultListener(&faults);
}

TEST_F(WorldTest, ABoxRestsOnItsOffsetOrigin) {
    physics.SetGravity({0, -60, 0});
    Floor(0);
    phys::Actor* box = physics.CreateBoxActor(1, 2, 4, 0, 1, 0, 1, 0);  // edges, then the offset
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->GetGlobalPosition().y, 0.0f) << "made at the origin, not at its centre";
    // Dropped, it comes to rest with its bottom, which is its origin, on the floor.
    box->SetGlobalPosition({0, 5, 0});
    Steps(180);
    EXPECT_NEAR(box->GetGlobalPosition().y, 0.0f, 0.05f);
    EXPECT_NEAR(box->GetGlobalPose().at(1, 1), 1.0f, 1e-3f) << "still upright";
}

TEST_F(WorldTest, EveryStepIsFiveTicksOfA300thOfASecond) {
    physics.SetGravity({0, -60, 0});
    phys::Actor* ball = physics.CreateSphereActor(1, 1, 0);
    for (int i = 0; i < 600; ++i) {
        physics.Step(1.0f / 60.0f);
        ASSERT_EQ(physics.GetScene()->GetLastTickCount(), 5) << "step " << i;
    }
    // Ten seconds of free fall in exact ticks: v = g t.
    EXPECT_NEAR(ball->GetLinearVelocity().y, -600.0f, 0.05f);
    physics.Step(1.0f / 30.0f);
    EXPECT_EQ(physics.GetScene()->GetLastTickCount(), 10);
    physics.Step(1.0f);  // a long frame slows the game down instead of taking longer ticks
    EXPECT_EQ(physics.GetScene()->GetLastTickCount(), 10);
}

TEST_F(WorldTest, FrozenAxesAndThePlaneJointHoldZWhateverActsOnThem) {
    physics.SetGravity({0, -60, 0});
    Floor(-10);
    phys::Actor* ball = Ball({0, 0, 0});
    ball->SetLinearVelocity({1, 2, 3});
    EXPECT_EQ(ball->GetLinearVelocity().z, 0.0f);
    ball->AddForce({0, 0, 50}, phys::ForceMode::Impulse);
    ball->AddForce({0, 0, 50}, phys::ForceMode::VelocityChange);
    ball->SetAngularVelocity({4, 5, 6});  // spinning about any axis is allowed

    // A plane joint on a sphere is as exact as a frozen axis.
    phys::Actor* rolling = physics.CreateSphereActor(1, 1, 0);
    phys::Joint* held = physics.CreatePlaneJoint(rolling);
    ASSERT_NE(held, nullptr);
    rolling->SetGlobalPosition({-4, 0, 0});
    rolling->AddForce({0, 3, 40}, phys::ForceMode::Impulse);

    // On a slab whose origin is not its centre the origin is held, tumbling and all.
    phys::Actor* slab = physics.CreateBoxActor(1, 6, 10, 0, 3, 0, 2, 0);
    ASSERT_NE(physics.CreatePlaneJoint(slab), nullptr);
    slab->SetGlobalPosition({4, 0, 0});
    slab->AddForce({3, 5, 40}, phys::ForceMode::Impulse);
    slab->SetAngularVelocity({1, 2, 3});
    for (int i = 0; i < 240; ++i) {
        physics.Step(kFrame);
        ASSERT_EQ(ball->GetGlobalPosition().z, 0.0f);
        ASSERT_EQ(rolling->GetGlobalPosition().z, 0.0f);
        ASSERT_NEAR(slab->GetGlobalPosition().z, 0.0f, 0.01f) << "step " << i;
    }
    EXPECT_NE(ball->GetAngularVelocity().x, 0.0f);
    EXPECT_LT(slab->GetGlobalPose().at(1, 1), 0.99f) << "it did turn out of the plane's own orientation";

    // Released, the joint no longer holds the sphere.
    physics.ReleaseJoint(held);
    rolling->AddForce({0, 0, 10}, phys::ForceMode::VelocityChange);
    Steps(10);
    EXPECT_GT(rolling->GetGlobalPosition().z, 0.5f);
}

TEST_F(WorldTest, ImpulsesWeighTheMassAndTeleportsKeepVelocityAndOrientation) {
    phys::Actor* heavy = physics.CreateSphereActor(1, 2, 0);
    heavy->AddForce({10, 0, 0}, phys::ForceMode::Impulse);
    heavy->AddForce({10, 0, 0}, phys::ForceMode::VelocityChange);
    EXPECT_FLOAT_EQ(heavy->GetLinearVelocity().x, 15.0f);
    heavy->SetAngularVelocity({0, 0, 2});
    Steps(10);
    const Matrix4 before = heavy->GetGlobalPose();
    heavy->SetGlobalPosition({-20, 30, 0});
    EXPECT_EQ(heavy->GetGlobalPosition().y, 30.0f);
    EXPECT_FLOAT_EQ(heavy->GetLinearVelocity().x, 15.0f);
    EXPECT_EQ(std::memcmp(before.m, heavy->GetGlobalPose().m, 3 * sizeof(float)), 0);

    phys::Actor* post = physics.CreateSphereActor(1, 0, 0);
    post->AddForce({10, 0, 0}, phys::ForceMode::VelocityChange);
    EXPECT_EQ(post->GetLinearVelocity().x, 0.0f) << "static actors ignore forces";
}

TEST_F(WorldTest, AHingeHoldsItsPointAMotorDrivesAWheelAndAFreeDoorSwingsWithoutStopping) {
    TempDir folder;
    InTempFolder inside(folder.File(""));
    physics.SetGravity({-20, -60, 0});
    phys::Actor* turbine = MakeMeshActor(physics, PaddleWheel(), 1.0f, true);
    ASSERT_NE(turbine, nullptr);
    turbine->SetGroup(GroupProp);
    phys::RevoluteJoint* motor = physics.CreateRevoluteJoint(turbine, 7, -3, 0, 0);
    ASSERT_NE(motor, nullptr);
    motor->SetMotor({.velTarget = 2.0f, .maxForce = 99.0f, .freeSpin = false});
    turbine->SetGlobalPosition({7, -3, 0});
    turbine->RaiseBodyFlag(phys::FrozenPos);

    phys::Actor* door = physics.CreateBoxActor(1, 6, 10, 0, 3, 0, 1, 0);
    door->SetGroup(GroupProp);
    physics.CreatePlaneJoint(door);
    ASSERT_NE(physics.CreateRevoluteJoint(door, -30, 5, 0, 0), nullptr);
    door->SetGlobalPosition({-30, 5, 0});

    float lowest = 10, highestAfterLowest = 0;
    for (int i = 0; i < 300; ++i) {
        physics.Step(kFrame);
        const Matrix4 pose = door->GetGlobalPose();
        // The slab's far end: 6 up along its own y axis.
        const float tipY = pose.at(1, 1) * 6 + pose.at(1, 3);
        if (tipY < lowest) lowest = tipY, highestAfterLowest = tipY;
        highestAfterLowest = std::max(highestAfterLowest, tipY);
        const Vector3 at = door->GetGlobalPosition();
        ASSERT_NEAR(at.x, -30.0f, 0.02f);
        ASSERT_NEAR(at.y, 5.0f, 0.02f);
        ASSERT_EQ(at.z, 0.0f);
    }
    EXPECT_LT(lowest, 0.0f);                    // fell down past the hinge
    EXPECT_GT(highestAfterLowest, lowest + 1);  // and swung up again
    EXPECT_NEAR(turbine->GetAngularVelocity().z, 2.0f, 0.05f);
    EXPECT_NEAR(motor->GetVelocity(), 2.0f, 0.05f);

    motor->SetMotor({.velTarget = -1.0f, .maxForce = 99.0f, .freeSpin = false});
    Steps(120);
    EXPECT_NEAR(turbine->GetAngularVelocity().z, -1.0f, 0.05f);
    const Vector3 at = turbine->GetGlobalPosition();
    EXPECT_TRUE(std::fabs(at.x - 7) < 1e-3f && std::fabs(at.y + 3) < 1e-3f && at.z == 0.0f);

    // Within a quarter turn a paddle sweeps a ball that sits in its way.
    phys::Actor* ball = Ball({7 + 3.5f, -3 + 1.5f, 0}, 0.5f);
    physics.SetGravity({0, 0, 0});
    Steps(120);
    const Vector3 moved = ball->GetGlobalPosition();
    EXPECT_GT(std::hypot(moved.x - 10.5f, moved.y + 1.5f), 0.5f);
}

}  // namespace
