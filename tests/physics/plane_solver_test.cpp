// The solver and contacts made for balls in the plane, checked against what bodies do.
#include <algorithm>
#include <cmath>
#include <vector>

#include "tests/physics/physics_fixture.h"
#include "tests/support/files.h"

namespace {

class PlaneTest : public PhysicsTest {
protected:
    // A static track of boxes, each drawn out along z from -2 to 2 as the game's tracks are.
    phys::Actor* Walls(const std::vector<std::pair<Vector3, Vector3>>& boxes) {
        TestMesh mesh;
        for (const auto& [centre, half] : boxes) mesh.AddBox(centre, {half.x, half.y, 2});
        phys::Actor* track = MakeMeshActor(physics, mesh, 0);
        track->SetGroup(GroupTrack);
        return track;
    }

    static float Speed(const phys::Actor* actor) {
        const Vector3 v = actor->GetLinearVelocity();
        return std::hypot(v.x, v.y);
    }
};

// On a slope gentle enough to grip, a ball rolls: it gathers speed at five sevenths of what a
// sliding body would, and turns exactly as fast as it goes.
TEST_F(PlaneTest, ABallOnASlopeRollsWithoutSlipping) {
    const float slope = 10.0f * 3.14159265f / 180.0f;
    physics.SetGravity({9.8f * std::sin(slope), -9.8f * std::cos(slope), 0});
    Floor();
    phys::Actor* ball = Ball({-20, 1, 0});
    Steps(30);  // settled on the floor
    const float before = ball->GetLinearVelocity().x;
    Steps(120);
    const float gained = ball->GetLinearVelocity().x - before;
    EXPECT_NEAR(gained, 5.0f / 7.0f * 9.8f * std::sin(slope) * 2.0f, 0.1f);
    EXPECT_NEAR(ball->GetAngularVelocity().z, -ball->GetLinearVelocity().x, 0.02f) << "turning as it goes";
    EXPECT_NEAR(ball->GetGlobalPosition().y, 1.0f, 0.02f);
}

// Head on, two equal balls keep their momentum, the struck one leaves faster than the striker,
// and they part slower than they met (a bounciness of 0.3, plus the push that undoes the
// overlap of the tick they met in). Nothing goes sideways or into spin.
TEST_F(PlaneTest, TwoBallsMeetingHeadOnKeepTheirMomentum) {
    physics.SetGravity({0, 0, 0});
    phys::Actor* striker = Ball({-5, 0, 0});
    phys::Actor* struck = Ball({0, 0, 0});
    striker->SetLinearVelocity({10, 0, 0});
    Steps(60);
    const float after = striker->GetLinearVelocity().x, away = struck->GetLinearVelocity().x;
    EXPECT_NEAR(after + away, 10.0f, 1e-3f);
    EXPECT_GT(away - after, 0.3f * 10 - 0.01f);
    EXPECT_LT(away - after, 0.6f * 10);
    EXPECT_EQ(struck->GetLinearVelocity().y, 0.0f);
    EXPECT_EQ(struck->GetAngularVelocity().z, 0.0f);
}

// Sixty balls dropped into a bin settle into a still pile whose balls barely overlap: their
// contacts carry their impulses from tick to tick. None leaves the bin or the plane.
TEST_F(PlaneTest, APileOfBallsSettlesStillWithLittleOverlap) {
    Walls({{{0, -1, 0}, {8, 1, 0}}, {{-9, 10, 0}, {1, 12, 0}}, {{9, 10, 0}, {1, 12, 0}}});
    std::vector<phys::Actor*> balls;
    for (int i = 0; i < 60; ++i) balls.push_back(Ball({-6.5f + 2.2f * float(i % 6) + 0.1f * float(i % 3), 2 + 2.2f * float(i / 6), 0}));
    Steps(600);
    float fastest = 0, deepest = 0;
    for (size_t i = 0; i < balls.size(); ++i) {
        const Vector3 p = balls[i]->GetGlobalPosition();
        EXPECT_EQ(p.z, 0.0f);
        EXPECT_TRUE(p.x > -8 && p.x < 8 && p.y > 0) << "ball " << i << " left the bin";
        fastest = std::max(fastest, Speed(balls[i]));
        for (size_t j = i + 1; j < balls.size(); ++j) {
            const Vector3 q = balls[j]->GetGlobalPosition();
            deepest = std::max(deepest, 2 - std::hypot(p.x - q.x, p.y - q.y));
        }
    }
    EXPECT_LT(fastest, 0.05f);
    EXPECT_LT(deepest, 0.01f);
}

// A ball too big for the track's straight walls (it reaches the caps at z = +-2) and a ball
// free to leave the plane still meet the track, through the library's own ways; the game's
// balls in the same world keep to the plane.
TEST_F(PlaneTest, BallsOutsideThePlanesRulesStillMeetTheTrack) {
    Walls({{{0, -1, 0}, {30, 1, 0}}});
    phys::Actor* big = Ball({-10, 3.5f, 0}, 3.0f);
    phys::Actor* free = physics.CreateSphereActor(1.0f, 1.0f, 0);
    free->SetGlobalPosition({0, 1.5f, 0});
    phys::Actor* game = Ball({10, 1.5f, 0});
    Steps(120);
    EXPECT_NEAR(big->GetGlobalPosition().y, 3.0f, 0.02f);
    EXPECT_NEAR(free->GetGlobalPosition().y, 1.0f, 0.02f);
    EXPECT_NEAR(game->GetGlobalPosition().y, 1.0f, 0.02f);
    EXPECT_EQ(game->GetGlobalPosition().z, 0.0f);
    EXPECT_LT(Speed(game), 0.01f);
}

// A wheel on its axle, set into the track so that its paddles cut into the floor, turns as
// its motor drives it and as a ball pushes it: nothing is solved between it and the track.
TEST_F(PlaneTest, AWheelSunkIntoTheTrackStillTurns) {
    TempDir folder;
    InTempFolder inside(folder.File(""));
    Floor();
    for (float x : {0.0f, 20.0f}) {
        phys::Actor* wheel = MakeMeshActor(physics, PaddleWheel(), 1.0f, true);
        ASSERT_NE(wheel, nullptr);
        wheel->SetGlobalPosition({x, 3, 0});  // the paddles reach 1.5 below the floor
        wheel->RaiseBodyFlag(phys::FrozenPos);
        if (x == 0) {
            physics.CreateRevoluteJoint(wheel, x, 3, 0, 0)->SetMotor({.velTarget = 2, .maxForce = 99, .freeSpin = false});
            Steps(60);
            EXPECT_NEAR(wheel->GetAngularVelocity().z, 2.0f, 0.05f) << "driven";
        } else {
            wheel->RaiseBodyFlag(phys::FrozenRotX);
            wheel->RaiseBodyFlag(phys::FrozenRotY);
            Ball({x + 3, 5, 0});  // on the right-hand paddle
            Steps(30);
            EXPECT_LT(wheel->GetAngularVelocity().z, -0.5f) << "turned by the ball's weight";
        }
    }
}

// The heaviest and the lightest ball the physics takes land on the track and stay on it.
TEST_F(PlaneTest, TheHeaviestAndLightestBallsRestOnTheTrack) {
    Walls({{{0, -1, 0}, {30, 1, 0}}});
    std::vector<phys::Actor*> balls;
    for (float mass : {phys::Scene::kMaxMass, phys::Scene::kMinMass}) {
        phys::Actor* ball = physics.CreateSphereActor(1.0f, mass, 0);
        ASSERT_NE(ball, nullptr);
        ball->RaiseBodyFlag(phys::FrozenPosZ);
        ball->SetGlobalPosition({float(balls.size()) * 5, 6, 0});
        balls.push_back(ball);
    }
    Steps(120);
    for (const phys::Actor* ball : balls) EXPECT_NEAR(ball->GetGlobalPosition().y, 1.0f, 0.02f);
}

}  // namespace
