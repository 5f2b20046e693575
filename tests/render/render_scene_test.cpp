// The game's picture with its own media (Xvfb): what the player must be able to read off the
// screen. Levels are written to a fresh folder and drawn from the game folder's Media/.
#include <cmath>

#include "tests/render/render_fixture.h"

namespace {

json Object(const json& report, const std::string& name) {
    for (const json& o : report["objects"])
        if (o["name"] == name) return o;
    ADD_FAILURE() << "no object " << name << " in " << report["objects"];
    return json();
}

double FromCentre(const json& object) {
    if (object["screen"].is_null()) return 1e9;
    return std::hypot(object["screen"][0].get<double>() - 400, object["screen"][1].get<double>() - 300);
}

class GamePicture : public ::testing::Test {
protected:
    json Draw(const std::string& level, const std::string& arguments) {
        return json::parse(Shell(VELLORAN_GAME_DIR "/velloran-tool render " + level + " --root " VELLORAN_GAME_DIR
                                 " --out " + Quoted(dir.File("picture.png")) + " " + arguments + " 2>/dev/null")
                               .out);
    }
    json DrawOwn(const std::string& text, const std::string& arguments) {
        WriteText(dir.File("level.lvl"), text);
        return Draw(Quoted(dir.File("level.lvl")), arguments);
    }
    PngPicture Picture() {
        PngPicture picture;
        std::string error;
        EXPECT_TRUE(ReadPng(dir.File("picture.png"), picture, error)) << error;
        return picture;
    }
    TempDir dir;
};

// The current ball is drawn gold and the goal green, each where its position projects.
TEST_F(GamePicture, TheBallAndTheGoalAppearWhereTheirPositionsProject) {
    const json report = DrawOwn(R"(<VelloranLevel><Objects>
<Ball name="hero" x="0" y="0" radius="1" mass="1" health="100"/>
<Peg name="rest" x="0" y="-1.5" radius="0.5"/>
<Goal name="goal" x="8" y="6" radius="3" quota="1"/>
<Ball name="far" x="300" y="0" radius="1" mass="1" health="100"/>
</Objects></VelloranLevel>)", "--frames 30");
    const PngPicture picture = Picture();
    const auto at = [&](const json& object) {
        EXPECT_FALSE(object["screen"].is_null()) << object;
        if (object["screen"].is_null()) return Pixel{-1, -1, -1};
        return MeanAround(picture, float(object["screen"][0].get<double>() / picture.width),
                          float(object["screen"][1].get<double>() / picture.height));
    };
    const Pixel ball = at(Object(report, "hero")), goal = at(Object(report, "goal"));
    EXPECT_TRUE(ball.r > 150 && ball.r > ball.g && ball.g > ball.b + 40) << ball.r << " " << ball.g << " " << ball.b;
    EXPECT_TRUE(goal.g > 120 && goal.g > goal.r + 40 && goal.g > goal.b + 20) << goal.r << " " << goal.g << " " << goal.b;
}

// From far to near: the ball, then the goal from high above, then down towards the ball.
TEST_F(GamePicture, TheFlyOverFramesTheBallTheGoalAndTheBallAgain) {
    const json start = Draw("Media/intro.lvl", "--intro --frames 60");
    EXPECT_LT(FromCentre(Object(start, "ball1")), 60) << start["objects"];
    const json goal = Draw("Media/intro.lvl", "--intro --frames 450");
    EXPECT_LT(FromCentre(Object(goal, "goal")), 60) << goal["objects"];
    const json end = Draw("Media/intro.lvl", "--intro --frames 655");
    EXPECT_LT(FromCentre(Object(end, "ball1")), 60) << end["objects"];
    const double high = goal["camera"]["position"][2], low = end["camera"]["position"][2];
    EXPECT_GT(high, 90) << "the goal is seen from 100 above";
    EXPECT_LT(low, high - 10) << "the camera comes down to the ball at the end";
}

// The current ball sits caged in pegs at the origin, and a ring of pegs every 10 degrees
// marks the directions around it: at any tilt, the peg that lies the way gravity pulls is
// drawn straight below the ball, and the sky around them does not turn.
TEST_F(GamePicture, GravityPointsDownOnScreenAtAnyTiltAndTheSkyHoldsStill) {
    std::string level = "<VelloranLevel><Objects>\n<Ball name=\"hero\" x=\"0\" y=\"0\" radius=\"1\" mass=\"1\" health=\"1\"/>\n";
    const auto peg = [&](const std::string& name, double radius, double degrees) {
        const double a = degrees * 3.14159265358979 / 180;
        level += "<Peg name=\"" + name + "\" x=\"" + std::to_string(radius * std::cos(a)) + "\" y=\"" +
                 std::to_string(radius * std::sin(a)) + "\" radius=\"0.5\"/>\n";
    };
    for (int i = 0; i < 12; ++i) peg("cage", 2.0, i * 30);
    for (int i = 0; i < 36; ++i) peg("ring" + std::to_string(i * 10), 10.0, i * 10);
    level += "<Ball name=\"far\" x=\"300\" y=\"0\" radius=\"1\" mass=\"1\" health=\"1\"/>\n"
             "<Goal name=\"goal\" x=\"-300\" y=\"0\" radius=\"3\" quota=\"1\"/>\n</Objects></VelloranLevel>\n";

    const float skySpots[][2] = {{0.85f, 0.15f}, {0.9f, 0.45f}, {0.1f, 0.45f}, {0.6f, 0.1f}};
    std::vector<Pixel> untilted;
    for (const char* tilt : {"", "0-29 left", "0-29 right", "0-62 left"}) {
        SCOPED_TRACE(tilt);
        WriteText(dir.File("tilt.txt"), std::string(tilt) + "\n");
        const json report = DrawOwn(level, "--frames 70 --input " + Quoted(dir.File("tilt.txt")));
        // Gravity (0, -60) turned counter-clockwise by the tilt points this way in the level.
        const double pull = std::fmod(270.0 + report["tilt"].get<double>() + 3600.0, 360.0);
        const int nearest = int(std::lround(pull / 10)) % 36 * 10;
        const json hero = Object(report, "hero"), below = Object(report, "ring" + std::to_string(nearest));
        ASSERT_FALSE(hero["screen"].is_null() || below["screen"].is_null()) << report;
        const double dx = below["screen"][0].get<double>() - hero["screen"][0].get<double>();
        const double dy = below["screen"][1].get<double>() - hero["screen"][1].get<double>();
        EXPECT_GT(dy, 50) << "below the ball";
        EXPECT_LT(std::fabs(dx), 0.2 * dy) << "straight down, within 12 degrees";
        const PngPicture picture = Picture();
        for (size_t i = 0; i < std::size(skySpots); ++i) {
            const Pixel sky = MeanAround(picture, skySpots[i][0], skySpots[i][1]);
            if (untilted.size() <= i)
                untilted.push_back(sky);
            else
                EXPECT_TRUE(Near(sky, untilted[i])) << "sky spot " << i;
        }
    }
}

// The current ball falls into a bumper: the kick throws green sparks around it.
TEST_F(GamePicture, ABumperHitShowsSparks) {
    const char* level = R"(<VelloranLevel><Objects>
<Ball name="hero" x="0" y="5" radius="1" mass="1" health="100"/>
<Bumper name="bumper" x="0" y="0" radius="2" force="30"/>
<Ball name="far" x="300" y="0" radius="1" mass="1" health="100"/>
<Goal name="goal" x="-300" y="0" radius="3" quota="1"/>
</Objects></VelloranLevel>)";
    const auto greenPixels = [](const PngPicture& picture) {
        int count = 0;
        for (int y = 0; y < picture.height; ++y)
            for (int x = 0; x < picture.width; ++x) {
                const Pixel p = picture.At(x, y);
                count += p.g > p.r + 40 && p.g > p.b + 20;
            }
        return count;
    };
    DrawOwn(level, "--frames 10");
    const int before = greenPixels(Picture());
    const json after = DrawOwn(level, "--frames 22");
    EXPECT_GT(greenPixels(Picture()), before + 500) << "before the hit: " << before;
    EXPECT_GT(Object(after, "hero")["position"][1].get<double>(), 3.5) << "kicked back up";
}

}  // namespace
