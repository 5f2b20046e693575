// velloran-tool render in a window on a real display (Xvfb): the picture of a chosen frame and
// where the objects fall in it.
#include <cmath>

#include "tests/render/render_fixture.h"

namespace {

json Object(const json& report, const std::string& name) {
    for (const json& o : report["objects"])
        if (o["name"] == name) return o;
    ADD_FAILURE() << "no object " << name << " in " << report["objects"];
    return json();
}

class RenderOnScreen : public RenderFixture {};

TEST_F(RenderOnScreen, TheFirstFrameShowsTheTextAndTheGoalDialogue) {
    const json report = Report(Render(""));
    EXPECT_EQ(report["ok"], true);
    EXPECT_EQ(report["level"], "Look");
    EXPECT_EQ(report["frames"], 1);
    EXPECT_EQ(report["out"], Out());
    EXPECT_EQ(report["size"], json::parse("[800, 600]"));
    ExpectFirstFrame(Picture());
}

// The goal dialogue shows for the first second of play, the controls from then on.
TEST_F(RenderOnScreen, AfterASecondTheControlsDialogueTakesTheGoalDialoguesPlace) {
    Report(Render("--frames 120"));
    const PngPicture picture = Picture();
    EXPECT_FALSE(ShowsDialogue(picture, kGoalDialogue, kGoalLeft, kGoalRight));
    EXPECT_TRUE(ShowsDialogue(picture, kControlsDialogue, kControlsLeft, kControlsRight));
    EXPECT_GT(WhitePixels(picture, kTimeLine), 2000);
}

TEST_F(RenderOnScreen, ALevelThatEndsEarlyIsPicturedInItsLastFrame) {
    const json report = Report(Render("--frames 5000", "drop.lvl"));
    const int frames = report["frames"];
    EXPECT_GT(frames, 300) << "the end comes five seconds after the win";
    EXPECT_LT(frames, 1000);
    EXPECT_TRUE(ShowsDialogue(Picture(), kWinDialogue, kWinLeft, kWinRight));
}

// The camera has settled over the current ball: it is in the middle of the picture, the goal
// straight above it, the other ball straight right, and the far ball out of sight.
TEST_F(RenderOnScreen, ObjectsArePlacedInThePictureByTheSceneItWasDrawnWith) {
    const json report = Report(Render("--frames 180"));
    const json hero = Object(report, "hero");
    EXPECT_NEAR(report["camera"]["lookAt"][0].get<double>(), hero["position"][0].get<double>(), 0.01);
    EXPECT_NEAR(report["camera"]["lookAt"][1].get<double>(), hero["position"][1].get<double>(), 0.01);
    EXPECT_EQ(report["tilt"], 0.0);
    ASSERT_TRUE(hero["screen"].is_array()) << hero;
    const double x = hero["screen"][0], y = hero["screen"][1];
    EXPECT_NEAR(x, 400, 2);
    EXPECT_NEAR(y, 300, 2) << "rows count from the top";

    const json goal = Object(report, "goal")["screen"];
    ASSERT_TRUE(goal.is_array());
    EXPECT_NEAR(goal[0].get<double>(), x, 2);
    EXPECT_LT(goal[1].get<double>(), y - 100) << "above is up in the picture";
    const json spare = Object(report, "spare")["screen"];
    ASSERT_TRUE(spare.is_array());
    EXPECT_GT(spare[0].get<double>(), x + 100);
    EXPECT_NEAR(spare[1].get<double>(), y, 2);
    EXPECT_TRUE(Object(report, "far")["screen"].is_null()) << "out of the picture";
}

// Half a second of turning left, then a frame to draw it in (a frame draws the tilt it began
// with): the scene is turned by 1.5 radians, reported in degrees, and the goal, above the
// ball in the level, is drawn to its right.
TEST_F(RenderOnScreen, TheTiltTurnsThePlacesAsItTurnsThePicture) {
    WriteText(dir.File("left.txt"), "0-29 left\n");
    const json report = Report(Render("--frames 31 --input " + Quoted(dir.File("left.txt"))));
    EXPECT_NEAR(report["tilt"].get<double>(), 86, 0.5);
    const json hero = Object(report, "hero")["screen"], goal = Object(report, "goal")["screen"];
    ASSERT_TRUE(hero.is_array() && goal.is_array()) << report["objects"];
    const double dx = goal[0].get<double>() - hero[0].get<double>();
    const double dy = goal[1].get<double>() - hero[1].get<double>();
    EXPECT_GT(dx, 2 * std::abs(dy)) << dx << ", " << dy;
}

}  // namespace
