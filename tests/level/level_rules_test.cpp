// The level's rules: collecting, the quota, the clock, the end dialogues, the current ball,
// the tilt, and loading one level after another.
#include <cmath>

#include "objects/ball.h"
#include "objects/goal.h"
#include "tests/level/level_fixture.h"

namespace {

using LevelRules = LevelTest;

TEST_F(LevelRules, ABallFallingIntoTheGoalScoresWinsAndFinishesFiveSecondsLater) {
    ASSERT_TRUE(Load(BallXml("hero", 20, 6) + R"(<Goal name="goal" x="20" y="3" radius="3" quota="1"/>)"));
    EXPECT_EQ(level().GetCurrentBallIndex(), 0);
    const int scored = RunUntil([&] { return level().IsWon(); });
    ASSERT_GE(scored, 0);
    EXPECT_EQ(level().GetCollected(), 1);
    EXPECT_EQ(level().GetCurrentBallIndex(), -1);
    EXPECT_EQ(Count("Score"), 1);
    EXPECT_EQ(level().FindObjectsByName("hero").size(), 0u);
    const int ended = RunUntil([&] { return level().IsFinished(); });
    EXPECT_NEAR(ended, 300, 1);
    EXPECT_FALSE(level().IsLost());
}

TEST_F(LevelRules, ADeadBallIsPushedOutAndNeverCounted) {
    ASSERT_TRUE(Load(R"(<DeadBall name="lump" x="20" y="6" radius="1" mass="1"/>)" + BallXml("far", -50, 1) +
                     R"(<Goal name="goal" x="20" y="3" radius="3" quota="1"/>)"));
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
        objects.append(R"(<Goal name="goal" x="60" y="30" radius="3" quota=")").append(c.quota).append("\"/>");
        game = std::make_unique<HeadlessGame>(1);
        ASSERT_TRUE(Load(objects));
        for (int collected = 0;; ++collected) {
            Run(1);
            EXPECT_EQ(level().IsWon(), collected >= c.need) << c.balls << " x " << c.quota << ", " << collected;
            if (collected == c.need) break;
            level().CollectBall(level().GetBalls().front());
        }
    }
}

TEST_F(LevelRules, TimeRunsOutAfter180SecondsAndAWinCanStillBeLost) {
    ASSERT_TRUE(Load(BallXml("hero", -50, 1) + R"(<Goal name="goal" x="60" y="30" radius="3" quota="1"/>)"));
    const int lostAt = RunUntil([&] { return level().IsLost(); }, 11000);
    EXPECT_NEAR(lostAt, 10800, 1);
    EXPECT_FALSE(level().IsWon());
    EXPECT_NEAR(RunUntil([&] { return level().IsFinished(); }), 300, 1);

    // Won with two seconds left: the clock runs on, the loss comes too, and the level ends
    // five seconds after the loss.
    ASSERT_TRUE(Load(BallXml("hero", -50, 1) + R"(<Goal name="goal" x="60" y="30" radius="3" quota="1"/>)"));
    Run(178 * 60);
    level().CollectBall(level().GetBalls().front());
    Run(1);
    ASSERT_TRUE(level().IsWon());
    const int then = RunUntil([&] { return level().IsLost(); });
    EXPECT_NEAR(then, 120, 1);
    EXPECT_TRUE(level().IsWon());
    EXPECT_FALSE(level().IsFinished());
    EXPECT_NEAR(RunUntil([&] { return level().IsFinished(); }), 300, 1);
}

TEST_F(LevelRules, DialoguesShowAtTheirTimes) {
    ASSERT_TRUE(Load(BallXml("hero", -50, 1)));
    Level::Dialogues due = level().DueDialogues();
    EXPECT_TRUE(due.goal);
    EXPECT_FALSE(due.controls);
    Run(90);
    due = level().DueDialogues();
    EXPECT_FALSE(due.goal);
    EXPECT_TRUE(due.controls);
    Run(15 * 60);
    due = level().DueDialogues();
    EXPECT_FALSE(due.controls);
    EXPECT_FALSE(due.win);
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
    ASSERT_TRUE(Load(BallXml("a", 20, 6) + R"(<Goal name="goal" x="20" y="3" radius="3" quota="1"/>)",
                     kFloorTrack, R"(<LevelInfo name="First"/>)"));
    RunUntil([&] { return level().IsWon(); });
    Run(30, kLeft);
    ASSERT_TRUE(level().IsWon());

    ASSERT_TRUE(Load(BallXml("b", -20, 1) + BallXml("c", -10, 1) + R"(<Goal name="goal" x="60" y="30" radius="3" quota="1"/>)"));
    EXPECT_EQ(level().GetName(), "UnnamedLevel");
    EXPECT_FALSE(level().IsWon() || level().IsLost() || level().IsFinished());
    EXPECT_EQ(level().GetCollected(), 0);
    EXPECT_EQ(level().GetBallCount(), 2);
    EXPECT_EQ(level().GetTilt(), 0.0f);
    EXPECT_EQ(level().GetElapsed(), 0.0);
    EXPECT_EQ(level().GetObjects().size(), 4u);  // the floor, two balls, the goal
    Run(120);
    EXPECT_FALSE(level().IsWon());
}

TEST_F(LevelRules, BrokenFilesFailWithTheGameMessages) {
    std::ofstream(folder / "bad.lvl") << "<VelloranLevel><Objects>";
    EXPECT_FALSE(game->Load("bad.lvl"));
    std::ofstream(folder / "root.lvl") << "<velloranlevel/>";
    EXPECT_FALSE(game->Load("root.lvl"));
    EXPECT_FALSE(game->Load("missing.lvl"));
    EXPECT_TRUE(game->errors.empty());
    std::ofstream(folder / "empty.lvl") << "<VelloranLevel/>";
    EXPECT_TRUE(game->Load("empty.lvl"));
    EXPECT_EQ(level().GetName(), "UnnamedLevel");
    Run(1);
    EXPECT_TRUE(level().IsWon()) << "no balls: need is 0";

}

}  // namespace
