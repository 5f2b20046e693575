// The real game binary in a real window under Xvfb, driven with real input events.
#include "tests/e2e/game_process.h"

namespace {

using namespace e2e;
const std::string kCloseWindow = CLOSE_WINDOW_PROGRAM;

// Closing the window the way a window manager would ends the game without an error.
void ExpectClosingEndsTheGame(GameProcess& game, const std::string& window) {
    const ToolRun closing = Shell(kCloseWindow + " " + window + " 2>&1");
    EXPECT_EQ(closing.exitCode, 0) << closing.out;
    EXPECT_EQ(game.WaitForExit(), 0) << game.ErrorOutput();
}

TEST(GameEndToEnd, F1ShowsTheOverlayAndClosingTheWindowEndsTheGame) {
    ASSERT_TRUE(fs::exists(kGameFolder + "/Media/font.tga")) << "the build generates Media";
    GameProcess game(kGame, {}, kGameFolder);
    const std::string window = game.Window();
    ASSERT_FALSE(window.empty()) << game.ErrorOutput();
    const std::string geometry = Shell("xdotool getwindowgeometry " + window).out;
    EXPECT_NE(geometry.find("800x600"), std::string::npos) << geometry;

    // The menu screen: its background covers the clear colour.
    Xdotool(window, "700 40");
    Screenshot menu;
    ASSERT_TRUE(WaitFor([&] {
        menu = TakeScreenshot();
        const auto green = [](const uint8_t* p) { return p[0] < 16 && p[1] > 239 && p[2] < 16; };
        const auto black = [](const uint8_t* p) { return p[0] + p[1] + p[2] < 8; };
        return menu.Count(0, 0, 800, 600, green) == 0 && menu.Count(0, 0, 800, 600, black) < 100000;
    })) << "the menu never showed";

    // The overlay's white text in the top-left corner comes and goes over the menu.
    const auto overlay = [&] { return TakeScreenshot().Differing(menu, 0, 0, 300, 90); };
    Xdotool(window, "700 40 key F1");
    EXPECT_TRUE(WaitFor([&] { return overlay() > 200; })) << "F1 did not show the overlay";
    Shell("xdotool key F1");
    EXPECT_TRUE(WaitFor([&] { return overlay() < 20; })) << "a second F1 did not hide it";
    ExpectClosingEndsTheGame(game, window);
}

TEST(GameEndToEnd, StartingWithoutMediaFailsWithTheStartupMessages) {
    // The game looks for Media/ beside itself, so a copy of it in an empty folder has none.
    TempDir empty;
    fs::copy_file(kGame, empty.File("velloran"));
    GameProcess game(empty.File("velloran"), {}, fs::temp_directory_path().string());
    EXPECT_EQ(game.WaitForExit(), 1);
    const std::string errors = game.ErrorOutput();
    EXPECT_NE(errors.find("GraphicsSystem failed to start!"), std::string::npos) << errors;
    EXPECT_NE(errors.find("Error on startup.  Please check that this computer meets the minimum requirements."),
              std::string::npos)
        << errors;
}

TEST(GameEndToEnd, ALevelOnTheCommandLineIsPlayedAtOnceEvenWhenItFails) {
    GameProcess game(kGame, {"Media/no such.lvl"}, kGameFolder);
    const std::string window = game.Window();
    ASSERT_FALSE(window.empty()) << game.ErrorOutput();
    EXPECT_TRUE(WaitFor([&] { return game.ErrorOutput().find("Error loading level") != std::string::npos; }))
        << game.ErrorOutput();
    // The overlay prints the raw command line, blank included.
    Shell("xdotool mousemove --window " + window + " 400 300 key F1");
    EXPECT_TRUE(WaitFor([] { return BrightPixels(0, 57, 400, 13) > 100; }))
        << "the command line is not printed under the statistics";
    ExpectClosingEndsTheGame(game, window);
}

TEST(GameEndToEnd, TheIntroLevelPlaysWithItsQuotaAndClockOnScreen) {
    GameProcess game(kGame, {"Media/intro.lvl"}, kGameFolder);
    const std::string window = game.Window();
    ASSERT_FALSE(window.empty()) << game.ErrorOutput();
    // "Quota: 30% Collect: 3" along the bottom and the clock along the top, in white.
    EXPECT_TRUE(WaitFor([] { return BrightPixels(0, 540, 780, 40) > 300 && BrightPixels(0, 0, 400, 40) > 200; }))
        << "the level's text is not on screen";
    // Tilting for a while changes nothing that could stop the game.
    Shell("xdotool mousemove --window " + window + " 400 300 keydown q sleep 0.5 keyup q");
    EXPECT_EQ(game.ErrorOutput().find("Error"), std::string::npos) << game.ErrorOutput();
    ExpectClosingEndsTheGame(game, window);
}

}  // namespace
