#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "core/random.h"
#include "objects/particle_emitters.h"
#include "objects/particle_system.h"

namespace {

void EmitAt(ParticleSystem& ps, float x, float life) { ps.Emit(x, 0, 0, 1, life, 1, 1, 1, 0, 0, 0); }

bool SamePool(const ParticleSystem& a, const ParticleSystem& b) {
    return a.Particles().size() == b.Particles().size() &&
           std::memcmp(a.Particles().data(), b.Particles().data(), a.Particles().size() * sizeof(Particle)) == 0;
}

float Speed(const Particle& p) { return std::hypot(p.velocity[0], p.velocity[1]); }

TEST(ParticlePoolTest, FullPoolIgnoresEmitAndCursorWrapsToFirstFreeRecord) {
    ParticleSystem ps(5000);
    for (int i = 0; i < 5000; ++i) EmitAt(ps, float(i), (i == 10 || i == 20) ? 0.5f : 1.0f);
    EXPECT_EQ(ps.LiveCount(), 5000);
    EXPECT_EQ(ps.Cursor(), 4999u);

    ParticleSystem before = ps;
    EmitAt(ps, -1.0f, 1.0f);
    EXPECT_TRUE(SamePool(ps, before));
    EXPECT_EQ(ps.Cursor(), 4999u);

    ps.Update(0.5f, 0, 0, 0);  // frees records 10 and 20
    EXPECT_EQ(ps.LiveCount(), 4998);
    EmitAt(ps, -1.0f, 1.0f);
    EmitAt(ps, -2.0f, 1.0f);
    EXPECT_EQ(ps.Particles()[10].position[0], -1.0f);
    EXPECT_EQ(ps.Particles()[20].position[0], -2.0f);
    EXPECT_EQ(ps.Cursor(), 20u);
}

TEST(ParticlePoolTest, SearchStartsAtCursorBeforeWrapping) {
    ParticleSystem ps(4);
    EmitAt(ps, 0, 0.5f);
    EmitAt(ps, 1, 1.0f);
    EmitAt(ps, 2, 1.0f);
    ps.Update(0.5f, 0, 0, 0);  // record 0 is free again, the cursor is on 2
    EmitAt(ps, 3, 1.0f);
    EXPECT_EQ(ps.Cursor(), 3u);
    EmitAt(ps, 4, 1.0f);
    EXPECT_EQ(ps.Cursor(), 0u);
    EXPECT_EQ(ps.Particles()[0].position[0], 4.0f);
    EXPECT_EQ(ps.LiveCount(), 4);
}

TEST(ParticleUpdateTest, AgesThroughFramesAndMovesByEulerStep) {
    ParticleSystem ps(2);
    ps.Emit(1, 2, 3, 0.5f, 1.0f, 0.1f, 0.2f, 0.3f, 10, 0, -5);
    const Particle& p = ps.Particles()[0];
    EXPECT_EQ(ParticleSystem::Frame(p), 15);
    EXPECT_EQ(p.initialLife, 1.0f);

    ps.Update(0.4f, 0, 0, -10);
    EXPECT_NEAR(p.life, 0.6f, 1e-6f);
    EXPECT_EQ(ParticleSystem::Frame(p), 9);
    // Position moved with the velocity from before the step.
    EXPECT_FLOAT_EQ(p.position[0], 5.0f);
    EXPECT_FLOAT_EQ(p.position[2], 1.0f);
    EXPECT_FLOAT_EQ(p.velocity[2], -9.0f);

    ps.Update(0.4f, 0, 0, -10);
    EXPECT_EQ(ParticleSystem::Frame(p), 3);
    EXPECT_FLOAT_EQ(p.position[2], 1.0f - 9.0f * 0.4f);

    ps.Update(0.4f, 0, 0, -10);
    EXPECT_EQ(p.life, 0.0f);
    EXPECT_EQ(ps.LiveCount(), 0);
    EXPECT_FLOAT_EQ(p.position[0], 13.0f);  // the dying step still moves it

    ps.Update(0.4f, 0, 0, -10);
    EXPECT_FLOAT_EQ(p.position[0], 13.0f);  // free records stay put

    Particle blank{};
    EXPECT_EQ(ParticleSystem::Frame(blank), 0);
}

TEST(ParticleEmitterTest, BumperSparksFollowKickSpreadByCubedDraw) {
    ParticleSystem ps(100);
    Random random(7), replay(7);
    EmitBumperSparks(ps, random, {1, 2, 3}, {0, 0, 0}, 30);
    ASSERT_EQ(ps.LiveCount(), 30);
    for (int i = 0; i < 30; ++i) {
        const Particle& p = ps.Particles()[i];
        const float t = float(replay.Next()) * 2.0f / 32767.0f - 1.0f;
        const float angle = t * t * t * 3.14159f * 0.25f;
        EXPECT_FLOAT_EQ(p.velocity[0], 20.0f * std::cos(angle));
        EXPECT_FLOAT_EQ(p.velocity[1], 20.0f * std::sin(angle));
        EXPECT_GE(p.velocity[0], 20.0f * std::cos(0.7854f));  // within 45 degrees of +x
    }
    EXPECT_EQ(random.Next(), replay.Next());  // one draw per spark
    EXPECT_EQ(ps.Particles()[0].size, 3.0f);

    ParticleSystem up(4);
    EmitBumperSparks(up, random, {0, 0, 0}, {0, 1, 0}, 4);
    for (const Particle& p : up.Particles()) EXPECT_GT(p.velocity[1], 20.0f * std::cos(0.7854f));
}

TEST(ParticleEmitterTest, GoalFountainShadesRedToGreenAndRises) {
    ParticleSystem ps(30);
    Random random(3), replay(3);
    EmitGoalFountain(ps, random, {0, 0, 1});
    ASSERT_EQ(ps.LiveCount(), 20);
    const Particle& first = ps.Particles()[0];
    const Particle& last = ps.Particles()[19];
    EXPECT_EQ(first.colour[1], 0.0f);
    EXPECT_FLOAT_EQ(last.colour[0], 0.05f);
    EXPECT_FLOAT_EQ(last.colour[1], 0.95f);
    EXPECT_FLOAT_EQ(first.velocity[2], 2.0f);
    EXPECT_FLOAT_EQ(last.velocity[2], 11.5f);
    for (const Particle& p : ps.Particles()) {
        if (p.life == 0.0f) continue;
        const float a = replay.Unit() * 3.14159f * 2.0f;
        EXPECT_FLOAT_EQ(p.velocity[0], 15.0f * std::cos(a));
        EXPECT_NEAR(Speed(p), 15.0f, 1e-4f);
    }
}

TEST(ParticleEmitterTest, TeleporterSwirlRingsInAndBurstFansOut) {
    ParticleSystem ps(20);
    Random random(11), replay(11);
    const Vector3 b{10, -4, 2};
    EmitTeleporterSwirl(ps, random, b);
    ASSERT_EQ(ps.LiveCount(), 5);
    for (int i = 0; i < 5; ++i) {
        const Particle& p = ps.Particles()[i];
        const float a = replay.Unit() * 3.14159f * 2.0f;
        const float distance = replay.Unit() * 2.0f + 5.0f;
        const float c = replay.Unit() * 0.3f + 0.7f;
        const float dx = p.position[0] - b.x, dy = p.position[1] - b.y;
        EXPECT_NEAR(std::hypot(dx, dy), distance, 1e-4f);  // 5 to 7 units out
        EXPECT_EQ(p.position[2], 7.0f);
        EXPECT_TRUE(p.colour[0] == c && p.colour[1] == c && p.colour[2] == c);
        EXPECT_FLOAT_EQ(p.velocity[0], -7.0f * std::cos(a));
        // Flies straight back towards the centre.
        EXPECT_NEAR(dx * p.velocity[1] - dy * p.velocity[0], 0.0f, 1e-3f);
        EXPECT_LT(dx * p.velocity[0] + dy * p.velocity[1], 0.0f);
    }

    EmitTeleporterBurst(ps, {3, 4, 9});
    ASSERT_EQ(ps.LiveCount(), 15);
    for (int i = 5; i < 15; ++i) {
        const Particle& p = ps.Particles()[i];
        EXPECT_EQ(p.position[2], 0.0f);
        EXPECT_EQ(p.size, 10.0f);
        EXPECT_NEAR(Speed(p), 20.0f, 1e-4f);
    }
    EXPECT_FLOAT_EQ(ps.Particles()[5].velocity[0], 20.0f);
}

TEST(ParticleEmitterTest, TrailAndNudgeDrawInOrder) {
    ParticleSystem ps(60);
    Random random(5), replay(5);
    EmitBallTrail(ps, random, {1, 1, 1}, true);
    EmitBallTrail(ps, random, {1, 1, 1}, false);
    EXPECT_EQ(ps.Particles()[0].colour[2], 0.8f);
    EXPECT_EQ(ps.Particles()[1].colour[0], 0.8f);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(ps.Particles()[i].velocity[0], replay.Unit() - 0.5f);
        EXPECT_EQ(ps.Particles()[i].velocity[1], replay.Unit() - 0.5f);
    }

    EmitNudgeBurst(ps, random, {0, 0, 0});
    ASSERT_EQ(ps.LiveCount(), 52);
    for (int i = 0; i < 50; ++i) {
        const Particle& p = ps.Particles()[2 + i];
        const float a = float(i) / 50.0f * 3.14159f * 2.0f;
        const float s1 = (replay.Unit() * 0.2f + 0.8f) * 20.0f;
        const float s2 = (replay.Unit() * 0.2f + 0.8f) * 20.0f;
        EXPECT_FLOAT_EQ(p.velocity[0], std::sin(a) * s1);
        EXPECT_FLOAT_EQ(p.velocity[1], std::cos(a) * s2);
        EXPECT_EQ(p.size, 0.85f);
    }
}

TEST(ParticleEmitterTest, SameSeedGivesBitIdenticalPools) {
    auto run = [](uint32_t seed) {
        ParticleSystem ps(200);
        Random random(seed);
        EmitBumperSparks(ps, random, {1, 2, 0}, {0.6f, 0.8f, 0}, 8);
        EmitGoalFountain(ps, random, {0, 0, 0});
        EmitTeleporterSwirl(ps, random, {5, 5, 0});
        EmitNudgeBurst(ps, random, {2, 2, 0});
        EmitBallTrail(ps, random, {2, 2, 0}, false);
        ps.Update(0.016f, 0, 0, -9.8f);
        return ps;
    };
    EXPECT_TRUE(SamePool(run(42), run(42)));
    EXPECT_FALSE(SamePool(run(42), run(43)));
}

}  // namespace
