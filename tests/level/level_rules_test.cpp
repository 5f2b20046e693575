// The level's rules: collecting, the quota, the clock, the overlay and the dialogues, the
// current ball and the camera over it, the tilt, and loading one level after another.
#include <algorithm>
#include <cmath>

#include "objects/ball.h"
#include "objects/goal.h"
#include "physics/actor.h"
#include "tests/level/level_fixture.h"

namespace {

using LevelRules = LevelTest;

TEST_F(LevelRules, ABallFallingIntoTheGoalScoresWinsAndFinishesFiveSecondsLater) {
    ASSERT_TRUE(Load(BallXml("hero", 20, 6) + GoalXml(20, 3)));
    EXPECT_EQ(level().GetCurrentBallIndex(), 0);
    ASSERT_GE(RunUntil([&] { return level().IsWon(); }), 0);
    EXPECT_EQ(level().GetCollected(), 1);
    EXPECT_EQ(level().GetCurrentBallIndex(), -1);
    EXPECT_EQ(Count("Score"), 1);
    EXPECT_EQ(level().FindObjectsByName("hero").size(), 0u);
    EXPECT_TRUE(level().DueDialogues().win);
    EXPECT_NEAR(RunUntil([&] { return level().IsFinished(); }), 300, 1);
    EXPECT_FALSE(level().IsLost());
}

TEST_F(LevelRules, ADeadBallIsPushedOutAndNeverCounted) {
    ASSERT_TRUE(Load(R"(<DeadBall name="lump" x="20" y="6" radius="1" mass="1"/>)" + BallXml("far", -50, 1) +
                     GoalXml(20, 3)));
    Run(60);
    GameObject* lump = Named("lump");
    ASSERT_NE(lump, nullptr);
    EXPECT_EQ(level().GetCollected(), 0);
    EXPECT_GT(std::hypot(lump->GetPosition().x - 20, lump->GetPosition().y - 3), 3.0f);
    EXPECT_EQ(Count("Score"), 0);
}

TEST_F(LevelRules, TheQuotaIsRoundedUpOverEveryBallEverAdded) {
    struct Case {
        int balls;
        const char* quota;
        int need;
    };
    for (const Case c : {Case{3, "0.5", 2}, Case{4, "0.5", 2}, Case{4, "0.6", 3}, Case{2, "0", 0}}) {
        std::string objects;
        for (int i = 0; i < c.balls; ++i) objects += BallXml(std::string(1, char('a' + i)), -60.0f + 10 * i, 1);
        game = std::make_unique<HeadlessGame>(1);
        ASSERT_TRUE(Load(objects + GoalXml(60, 30, c.quota)));
        for (int collected = 0;; ++collected) {
            Run(1);
            EXPECT_EQ(level().IsWon(), collected >= c.need) << c.balls << " x " << c.quota << ", " << collected;
            if (collected == c.need) break;
            level().CollectBall(level().GetBalls().front());
        }
    }
}

// The quota shows as the player reads it: cut from the stored float, not rounded.
TEST_F(LevelRules, TheQuotaShowsTruncatedFromTheStoredValue) {
    for (const auto& [quota, shown] : {std::pair{"0.7", 69}, {"0.9", 89}, {"0.5", 50}, {"1", 100}}) {
        game = std::make_unique<HeadlessGame>(1);
        ASSERT_TRUE(Load(BallXml("a", 0, 1) + GoalXml(60, 30, quota)));
        EXPECT_EQ(level().QuotaPercent(), shown) << quota;
    }
}

TEST_F(LevelRules, TimeRunsOutAfter180SecondsAndAWinCanStillBeLost) {
    ASSERT_TRUE(Load(BallXml("hero", -50, 1) + GoalXml(60, 30)));
    EXPECT_NEAR(RunUntil([&] { return level().IsLost(); }, 11000), 10800, 1);
    EXPECT_FALSE(level().IsWon());
    EXPECT_NEAR(RunUntil([&] { return level().IsFinished(); }), 300, 1);

    // Won with two seconds left: the clock runs on, the loss comes too, both dialogues show,
    // and the level ends five seconds after the loss.
    ASSERT_TRUE(Load(BallXml("hero", -50, 1) + GoalXml(60, 30)));
    Run(178 * 60);
    level().CollectBall(level().GetBalls().front());
    Run(1);
    ASSERT_TRUE(level().IsWon());
    EXPECT_FALSE(level().DueDialogues().lose);
    EXPECT_NEAR(RunUntil([&] { return level().IsLost(); }), 120, 1);
    EXPECT_TRUE(level().IsWon());
    EXPECT_TRUE(level().DueDialogues().win && level().DueDialogues().lose);
    EXPECT_FALSE(level().IsFinished());
    EXPECT_NEAR(RunUntil([&] { return level().IsFinished(); }), 300, 1);
}

// What a window would be asked to print each frame.
class OverlayLog : public LevelView {
public:
    void BeginScene(Level&, float) override {}
    void DrawSky(Level&, float) override {}
    void DrawObjects(Level&) override {}
    void DrawParticles(const ParticleSystem&) override {}
    void DrawOverlay(Level& level, float remaining, float textSize) override {
        frames.push_back({remaining, textSize, level.DueDialogues()});
    }
    struct Frame {
        float remaining, textSize;
        Level::Dialogues due;
    };
    std::vector<Frame> frames;
};

TEST_F(LevelRules, TheOverlayCountsDownAndPulsesOnlyInTheLastThirtySeconds) {
    OverlayLog overlay;
    game = std::make_unique<HeadlessGame>(7, ".", &overlay);
    ASSERT_TRUE(Load(BallXml("hero", -50, 1) + GoalXml(60, 30)));
    Run(180 * 60);
    const auto& frames = overlay.frames;
    ASSERT_EQ(frames.size(), 10800u);
    EXPECT_EQ(frames[0].remaining, 180.0f);
    EXPECT_NEAR(frames[600].remaining, 170.0f, 1e-3f);
    EXPECT_NEAR(frames.back().remaining, 1.0f / 60, 1e-3f);

    // The goal for the first second of play, then the controls until fifteen seconds.
    auto count = [&](auto holds) { return std::count_if(frames.begin(), frames.end(), holds); };
    EXPECT_NEAR(count([](const auto& f) { return f.due.goal && f.remaining > 179; }), 60, 1);
    EXPECT_NEAR(count([](const auto& f) { return f.due.controls && f.remaining < 179 && f.remaining > 165; }), 840, 1);
    EXPECT_NEAR(count([](const auto& f) { return f.due.goal || f.due.controls; }), 900, 1);
    EXPECT_EQ(count([](const auto& f) { return f.due.win || f.due.lose; }), 0);

    // Under thirty seconds the time swells and shrinks by 0.0025 in the last fifth of each second.
    std::vector<float> smallest(30, 1), largest(30, 0);
    for (const auto& f : frames) {
        if (f.remaining >= 30 || std::fmod(f.remaining, 1.0f) <= 0.8f) {
            ASSERT_EQ(f.textSize, 0.05f) << f.remaining;
        } else {
            smallest[int(f.remaining)] = std::min(smallest[int(f.remaining)], f.textSize);
            largest[int(f.remaining)] = std::max(largest[int(f.remaining)], f.textSize);
        }
    }
    for (int second = 0; second < 30; ++second) {
        EXPECT_NEAR(largest[second], 0.0525f, 2e-4f) << second;
        EXPECT_NEAR(smallest[second], 0.0475f, 2e-4f) << second;
    }
}

TEST_F(LevelRules, CollectingMovesTheSelectionAndNextBallCycles) {
    ASSERT_TRUE(Load(BallXml("a", -40, 1) + BallXml("b", -30, 1) + BallXml("c", -20, 1) + BallXml("d", -10, 1)));
    Run(1, kNext);
    Run(1);  // released here
    EXPECT_EQ(level().GetCurrentBall(), Named("b"));
    level().CollectBall(Named("b"));  // the current one: the selection passes to the next
    EXPECT_EQ(level().GetCurrentBall(), Named("c"));
    level().CollectBall(Named("a"));  // one before it: the same ball stays selected
    EXPECT_EQ(level().GetCurrentBall(), Named("c"));
    level().CollectBall(Named("d"));
    level().CollectBall(Named("c"));
    EXPECT_EQ(level().GetCurrentBallIndex(), -1);
    EXPECT_EQ(level().GetCollected(), 4);
    EXPECT_EQ(level().GetBallCount(), 4);
    Run(1, kNext);
    Run(1);
    EXPECT_EQ(level().GetCurrentBallIndex(), -1);
}

TEST_F(LevelRules, TheCameraHeadsOverTheCurrentBallHigherTheFasterItGoes) {
    ASSERT_TRUE(Load(BallXml("high", -20, 40) + BallXml("low", 20, 1)));
    const PositionLookAtCamera& camera = level().GetCamera();
    // One frame: the camera's target is set from where the ball was and how fast it went.
    auto expectOver = [&](const char* name, uint32_t actions, float height) {
        const Vector3 at = Named(name)->GetPosition(), v = Named(name)->GetVelocity();
        Run(1, actions);
        const float speed = std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
        EXPECT_EQ(camera.TargetLookAt().x, at.x) << name;
        EXPECT_EQ(camera.TargetLookAt().y, at.y) << name;
        EXPECT_EQ(camera.TargetPosition().x, at.x) << name;
        EXPECT_EQ(camera.TargetPosition().y, at.y) << name;
        EXPECT_FLOAT_EQ(camera.TargetPosition().z, std::min(speed + height, 500.0f)) << name;
        return speed;
    };
    Run(30);  // falling
    EXPECT_GT(expectOver("high", 0, 40), 20.0f);
    expectOver("high", kZoom, 240);
    expectOver("high", kNext, 40);
    expectOver("low", 0, 40);  // next is released in this frame: the camera turns to the other ball
    Named("low")->GetActor()->SetLinearVelocity({300, 0, 0});
    expectOver("low", kZoom, 240);  // 540: held at the ceiling
}

TEST_F(LevelRules, HoldingATurnKeyTiltsAboutThreeRadiansASecond) {
    ASSERT_TRUE(Load(BallXml("hero", 0, 1)));
    Run(60, kLeft);
    EXPECT_NEAR(level().GetTilt(), 3.0f, 1e-3f);
    Run(30, kRight);
    EXPECT_NEAR(level().GetTilt(), 1.5f, 1e-3f);
    // A quarter turn sends gravity along +x.
    Run(1);
    const float back = level().GetTilt() - 3.14159265f / 2;
    for (int i = 0; i < 1000 && std::fabs(level().GetTilt() - 3.14159265f / 2) > 0.03f; ++i)
        Run(1, back > 0 ? kRight : kLeft);
    const Vector3 g = level().TiltedGravity();
    EXPECT_NEAR(g.x, 60.0f, 0.1f);
    EXPECT_NEAR(g.y, 0.0f, 2.0f);
}

TEST_F(LevelRules, ALevelLoadedAfterAnotherStartsClean) {
    ASSERT_TRUE(Load(BallXml("a", 20, 6) + GoalXml(20, 3), kFloorTrack, R"(<LevelInfo name="First"/>)"));
    RunUntil([&] { return level().IsWon(); });
    Run(30, kLeft);
    ASSERT_TRUE(level().IsWon());

    // This one's floor stands where the file puts it, moved once however its models are shared.
    ASSERT_TRUE(Load(BallXml("b", -20, -4) + BallXml("c", -10, -4) + GoalXml(60, 30),
                     R"(<Tracks><Track name="floor" x="10" y="-5" collisionModel="floor.3DS" renderModel="floor.3DS"/></Tracks>)"));
    EXPECT_EQ(level().GetName(), "UnnamedLevel");
    EXPECT_FALSE(level().IsWon() || level().IsLost() || level().IsFinished());
    EXPECT_EQ(level().GetCollected(), 0);
    EXPECT_EQ(level().GetBallCount(), 2);
    EXPECT_EQ(level().GetTilt(), 0.0f);
    EXPECT_EQ(level().GetElapsed(), 0.0);
    EXPECT_EQ(level().GetObjects().size(), 4u);  // the floor, two balls, the goal
    Run(120);
    EXPECT_FALSE(level().IsWon());
    EXPECT_NEAR(Named("b")->GetPosition().y, -4.0f, 0.1f);
}

TEST_F(LevelRules, BrokenFilesFailWithTheGameMessages) {
    std::ofstream(folder / "bad.lvl") << "<VelloranLevel><Objects>";
    EXPECT_FALSE(game->Load("bad.lvl"));
    std::ofstream(folder / "root.lvl") << "<velloranlevel/>";
    EXPECT_FALSE(game->Load("root.lvl"));
    EXPECT_FALSE(game->Load("missing.lvl"));
    // The loader shows nothing for these; the game closes each failure with its own message.
    EXPECT_EQ(game->errors, std::vector<std::string>(3, "Error loading level"));
    std::ofstream(folder / "empty.lvl") << "<VelloranLevel/>";
    EXPECT_TRUE(game->Load("empty.lvl"));
    EXPECT_EQ(level().GetName(), "UnnamedLevel");
    Run(1);
    EXPECT_TRUE(level().IsWon()) << "no balls: need is 0";
}

}  // namespace
