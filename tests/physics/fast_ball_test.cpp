// Fast balls against thin walls: a tick of 1/300 s carries a ball of 1000 units/s more than
// three units, further than a wall is thick.
#include "tests/physics/physics_fixture.h"

namespace {

class FastBallTest : public PhysicsTest {
protected:
    // A wall of the track, `thickness` thick, standing across the x axis at x = 10.
    void Wall(float thickness) {
        phys::Actor* wall =
            MakeMeshActor(physics, TestMesh().AddBox({10 + thickness / 2, 0, 0}, {thickness / 2, 200, 2}), 0);
        wall->SetGroup(GroupTrack);
    }
};

TEST_F(FastBallTest, NoSpeedTheGameReachesCarriesABallThroughAWallOneUnitThick) {
    physics.SetGravity({0, 0, 0});
    Wall(1.0f);
    for (const float speed : {300.0f, 500.0f, 1000.0f, 2000.0f, 4000.0f}) {
        for (const float slant : {0.0f, 0.5f, -1.5f}) {  // head-on, and glancing up and down
            SCOPED_TRACE(testing::Message() << speed << " units/s, slant " << slant);
            phys::Actor* ball = Ball({0, 0, 0});
            const float norm = std::sqrt(1 + slant * slant);
            ball->SetLinearVelocity({speed / norm, speed * slant / norm, 0});
            for (int frame = 0; frame < 20; ++frame) {
                physics.Step(kFrame);
                ASSERT_LT(ball->GetGlobalPosition().x, 10.0f) << "frame " << frame;
            }
            EXPECT_LT(ball->GetLinearVelocity().x, 0.0f) << "it bounced back";
            physics.ReleaseActor(ball);
        }
    }
}

TEST_F(FastBallTest, ABallDroppedFromHighUpLandsOnAThinFloor) {
    physics.SetGravity({0, -60, 0});
    phys::Actor* floor = MakeMeshActor(physics, TestMesh().AddBox({0, -0.5f, 0}, {20, 0.5f, 2}), 0);
    floor->SetGroup(GroupTrack);
    // Higher than any level is tall, and then some.
    phys::Actor* ball = Ball({0, 2000, 0});
    for (int frame = 0; frame < 60 * 12; ++frame) physics.Step(kFrame);
    EXPECT_NEAR(ball->GetGlobalPosition().y, 1.0f, 0.1f);
}

}  // namespace
