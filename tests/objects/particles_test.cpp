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

float PlanarSpeed(const Particle& p) { return std::hypot(p.velocity[0], p.velocity[1]); }

TEST(ParticlePoolTest, AFullPoolIgnoresEmitAndFreedRecordsAreFoundFromTheCursorOn) {
    ParticleSystem ps(5000);
    for (int i = 0; i < 5000; ++i) EmitAt(ps, float(i), (i == 10 || i == 20) ? 0.5f : 1.0f);
    const ParticleSystem full = ps;
    EmitAt(ps, -1.0f, 1.0f);
    EXPECT_TRUE(SamePool(ps, full));
    EXPECT_EQ(ps.Cursor(), 4999u);

    ps.Update(0.5f, 0, 0, 0);  // frees records 10 and 20
    EXPECT_EQ(ps.LiveCount(), 4998);
    EmitAt(ps, -1.0f, 1.0f);
    EmitAt(ps, -2.0f, 1.0f);
    EXPECT_EQ(ps.Particles()[10].position[0], -1.0f);
    EXPECT_EQ(ps.Particles()[20].position[0], -2.0f);

    // The search starts at the cursor and wraps round only past the end.
    ParticleSystem small(4);
    for (float life : {0.5f, 1.0f, 1.0f}) EmitAt(small, 0, life);
    small.Update(0.5f, 0, 0, 0);  // record 0 is free again, the cursor is on 2
    EmitAt(small, 3, 1.0f);
    EmitAt(small, 4, 1.0f);
    EXPECT_EQ(small.Particles()[3].position[0], 3.0f);
    EXPECT_EQ(small.Particles()[0].position[0], 4.0f);
}

TEST(ParticleUpdateTest, ParticlesAgeThroughTheAtlasFramesAndMoveByAnEulerStep) {
    ParticleSystem ps(2);
    ps.Emit(1, 2, 3, 0.5f, 1.0f, 0.1f, 0.2f, 0.3f, 10, 0, -5);
    const Particle& p = ps.Particles()[0];
    EXPECT_EQ(ParticleSystem::Frame(p), 15);
    ps.Update(0.4f, 0, 0, -10);
    EXPECT_EQ(ParticleSystem::Frame(p), 9);
    EXPECT_FLOAT_EQ(p.position[2], 1.0f) << "moved with the velocity from before the step";
    EXPECT_FLOAT_EQ(p.velocity[2], -9.0f);
    ps.Update(0.4f, 0, 0, -10);
    EXPECT_EQ(ParticleSystem::Frame(p), 3);
    ps.Update(0.4f, 0, 0, -10);
    EXPECT_EQ(ps.LiveCount(), 0);
    EXPECT_FLOAT_EQ(p.position[0], 13.0f) << "the dying step still moves it";
    ps.Update(0.4f, 0, 0, -10);
    EXPECT_FLOAT_EQ(p.position[0], 13.0f) << "free records stay put";
}

TEST(ParticleEmitterTest, SparksFlyWithin45DegreesOfTheKickOneDrawEach) {
    ParticleSystem ps(100);
    Random random(7), replay(7);
    EmitBumperSparks(ps, random, {1, 2, 3}, {0, 1, 0}, 30);
    ASSERT_EQ(ps.LiveCount(), 30);
    for (int i = 0; i < 30; ++i) {
        const Particle& p = ps.Particles()[i];
        EXPECT_NEAR(PlanarSpeed(p), 20.0f, 1e-4f);
        EXPECT_GE(p.velocity[1], 20.0f * std::cos(0.7854f) - 1e-3f);
        replay.Next();
    }
    EXPECT_EQ(random.Next(), replay.Next());
}

TEST(ParticleEmitterTest, FountainRisesFromRedToGreenAndTeleportersSwirlInAndBurstOut) {
    ParticleSystem ps(40);
    Random random(3);
    EmitGoalFountain(ps, random, {0, 0, 1});
    ASSERT_EQ(ps.LiveCount(), 20);
    EXPECT_EQ(ps.Particles()[0].colour[1], 0.0f);
    EXPECT_FLOAT_EQ(ps.Particles()[19].colour[1], 0.95f);
    for (int i = 0; i < 20; ++i) {
        EXPECT_GT(ps.Particles()[i].velocity[2], 0.0f);
        EXPECT_NEAR(PlanarSpeed(ps.Particles()[i]), 15.0f, 1e-4f);
    }

    const Vector3 b{10, -4, 2};
    EmitTeleporterSwirl(ps, random, b);
    ASSERT_EQ(ps.LiveCount(), 25);
    for (int i = 20; i < 25; ++i) {
        const Particle& p = ps.Particles()[i];
        const float dx = p.position[0] - b.x, dy = p.position[1] - b.y;
        EXPECT_GE(std::hypot(dx, dy), 5.0f);
        EXPECT_LE(std::hypot(dx, dy), 7.0f);
        // Flies straight back towards the centre.
        EXPECT_NEAR(dx * p.velocity[1] - dy * p.velocity[0], 0.0f, 1e-3f);
        EXPECT_LT(dx * p.velocity[0] + dy * p.velocity[1], 0.0f);
    }
    EmitTeleporterBurst(ps, {3, 4, 9});
    ASSERT_EQ(ps.LiveCount(), 35);
    for (int i = 25; i < 35; ++i) {
        EXPECT_EQ(ps.Particles()[i].position[2], 0.0f);
        EXPECT_NEAR(PlanarSpeed(ps.Particles()[i]), 20.0f, 1e-4f);
    }
}

TEST(ParticleEmitterTest, TheTrailShowsTheGravityAndTheNudgeBurstsAllRound) {
    ParticleSystem ps(60);
    Random random(5);
    EmitBallTrail(ps, random, {1, 1, 1}, true);
    EmitBallTrail(ps, random, {1, 1, 1}, false);
    EXPECT_GT(ps.Particles()[0].colour[2], ps.Particles()[0].colour[0]) << "blue while gravity points down";
    EXPECT_GT(ps.Particles()[1].colour[0], ps.Particles()[1].colour[2]);
    EmitNudgeBurst(ps, random, {0, 0, 0});
    ASSERT_EQ(ps.LiveCount(), 52);
    for (int i = 2; i < 52; ++i) {
        const Particle& p = ps.Particles()[i];
        EXPECT_GE(PlanarSpeed(p), 16.0f);
        EXPECT_LE(PlanarSpeed(p), 20.0f + 1e-4f);
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
