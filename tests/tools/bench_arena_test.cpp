// The physics bench's arena: the same balls for both worlds, none starting inside the wheel or
// the door, and every body where it was put.
#include <gtest/gtest.h>

#include "physics/actor.h"
#include "physics/physics_system.h"
#include "tools/tool/bench_arena.h"

namespace {

TEST(BenchArena, EveryBallHasAFreePlaceAndBothWorldsGetTheSameScene) {
    for (bool joints : {false, true}) {
        const BenchArena arena = MakeBenchArena(500, joints);
        ASSERT_EQ(arena.balls.size(), 500u);
        ASSERT_EQ(arena.hinged.size(), joints ? 2u : 0u);
        for (const Vector3& ball : arena.balls)
            for (const BenchArena::Hinged& body : arena.hinged) {
                const float dx = ball.x - body.pivot.x, dy = ball.y - body.pivot.y;
                if (body.driven) {
                    EXPECT_GT(dx * dx + dy * dy, 5.5f * 5.5f) << "inside the wheel's sweep";
                }
            }

        PhysicsSystem physics;
        ASSERT_TRUE(physics.Startup());
        physics.SetGravity({0, -60, 0});
        const std::vector<phys::Actor*> balls = BuildArena(arena, physics);
        ASSERT_EQ(balls.size(), arena.balls.size());
        auto plain = BuildPlainArena(arena, {0, -60, 0});
        for (int step = 0; step < 120; ++step) {
            physics.Step(1.0f / 60.0f);
            plain->Step(1.0f / 60.0f);
        }
        for (phys::Actor* ball : balls) {
            const Vector3 p = ball->GetGlobalPosition();
            EXPECT_EQ(p.z, 0.0f);
            EXPECT_GT(p.y, -60.0f) << "fell through the floor";
        }
        EXPECT_LT(plain->MeanBallSpeed(), 40.0f) << "the library's pile lands too";
    }
}

}  // namespace
