// How surfaces feel: friction that holds until it slips, and smooth rolling over seams.
#include <cmath>

#include "tests/physics/physics_fixture.h"

namespace {

using SurfaceTest = PhysicsTest;

Vector3 TiltedGravity(float degrees) {
    const float a = degrees * 3.14159265f / 180.0f;
    return {60 * std::sin(a), -60 * std::cos(a), 0};
}

TEST_F(SurfaceTest, ABlockHoldsOnAGentleTiltAndSlidesOnASteepOne) {
    Floor(0);
    // Static friction between two default surfaces is 0.6: tan(25 degrees) = 0.47 holds,
    // tan(35 degrees) = 0.70 does not. Sliding friction alone (0.1) would hold neither.
    phys::Actor* gentle = physics.CreateBoxActor(4, 1, 2, 0, 0.5f, 0, 1, 0);
    gentle->SetGlobalPosition({-20, 0.01f, 0});
    physics.SetGravity({0, -60, 0});
    Steps(30);
    const float start = gentle->GetGlobalPosition().x;
    physics.SetGravity(TiltedGravity(25));
    Steps(120);
    EXPECT_NEAR(gentle->GetGlobalPosition().x, start, 0.05f);

    physics.SetGravity(TiltedGravity(35));
    Steps(60);
    EXPECT_GT(gentle->GetGlobalPosition().x, start + 2.0f);
}

TEST_F(SurfaceTest, ABallRollsAcrossTriangleSeamsWithoutBumping) {
    physics.SetGravity({0, -60, 0});
    Floor(0, 100);  // one unit per cell: a seam every half unit of travel
    phys::Actor* ball = Ball({-40, 1.0f, 0});
    Steps(30);
    sounds.played.clear();
    ball->SetLinearVelocity({20, 0, 0});
    for (int i = 0; i < 200; ++i) {
        physics.Step(kFrame);
        ASSERT_NEAR(ball->GetGlobalPosition().y, 1.0f, 0.02f) << "step " << i;
        ASSERT_LT(std::fabs(ball->GetLinearVelocity().y), 0.5f) << "step " << i;
    }
    EXPECT_GT(ball->GetGlobalPosition().x, 0.0f);
    EXPECT_TRUE(sounds.played.empty()) << "rolling is one long touch";
}

}  // namespace
