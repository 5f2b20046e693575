// The real game binary in a real window under Xvfb, driven with real input events.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "tests/e2e/game_process.h"

namespace fs = std::filesystem;
using namespace std::chrono_literals;

namespace {

const std::string kGameFolder = VELLORAN_GAME_DIR;
const std::string kGame = kGameFolder + "/velloran";
const std::string kCloseWindow = CLOSE_WINDOW_PROGRAM;

std::string FindGameWindow(const GameProcess& game) {
    std::string id;
    WaitFor(
        [&] {
            id = RunCommand("xdotool search --onlyvisible --pid " + std::to_string(game.Pid()) +
                            " --name '^Velloran$' 2>/dev/null | head -n 1");
            while (!id.empty() && (id.back() == '\n' || id.back() == ' ')) id.pop_back();
            return !id.empty();
        },
        20s);
    return id;
}

// Pixels of the overlay's white text in the top-left corner of the client area.
int OverlayPixels() {
    Screenshot shot;
    if (!shot.Take()) return -1;
    return shot.CountBright(0, 0, 300, 90, 200);
}

TEST(GameEndToEnd, F1ShowsTheOverlayAndClosingTheWindowEndsTheGame) {
    ASSERT_TRUE(fs::exists(kGameFolder + "/Media/font.tga")) << "the build generates Media";
    GameProcess game(kGame, {}, kGameFolder);
    std::string window = FindGameWindow(game);
    ASSERT_FALSE(window.empty()) << game.ErrorOutput();

    std::string geometry = RunCommand("xdotool getwindowgeometry " + window);
    EXPECT_NE(geometry.find("800x600"), std::string::npos) << geometry;

    // The menu screen: the clear colour and no overlay yet.
    ASSERT_TRUE(WaitFor([] {
        Screenshot shot;
        return shot.Take() && shot.CountNear(300, 200, 200, 200, 0, 255, 0) > 30000;
    }, 20s)) << "the window never showed its green clear colour";
    EXPECT_EQ(OverlayPixels(), 0);

    // Keys go to the window under the pointer: Xvfb has no window manager to give focus.
    RunCommand("xdotool mousemove --window " + window + " 400 300 key F1");
    EXPECT_TRUE(WaitFor([] { return OverlayPixels() > 200; }, 20s)) << "F1 did not show the overlay";

    RunCommand("xdotool key F1");
    EXPECT_TRUE(WaitFor([] { return OverlayPixels() == 0; }, 20s)) << "a second F1 did not hide it";

    int status = -1;
    RunCommand(kCloseWindow + " " + window, &status);
    ASSERT_EQ(status, 0);
    EXPECT_EQ(game.WaitForExit(20s), 0) << game.ErrorOutput();
}

TEST(GameEndToEnd, StartingWithoutMediaFailsWithTheStartupMessages) {
    // The game looks for Media/ beside itself, so a copy of it in an empty folder has none.
    fs::path empty = fs::temp_directory_path() / ("velloran-no-media-" + std::to_string(getpid()));
    fs::create_directories(empty);
    fs::copy_file(kGame, empty / "velloran", fs::copy_options::overwrite_existing);
    GameProcess game((empty / "velloran").string(), {}, fs::temp_directory_path().string());
    EXPECT_EQ(game.WaitForExit(20s), 1);
    std::string errors = game.ErrorOutput();
    EXPECT_NE(errors.find("GraphicsSystem failed to start!"), std::string::npos) << errors;
    EXPECT_NE(errors.find("Error on startup.  Please check that this computer meets the minimum requirements."),
              std::string::npos)
        << errors;
    fs::remove_all(empty);
}

TEST(GameEndToEnd, ALevelOnTheCommandLineIsPlayedAtOnceEvenWhenItFails) {
    GameProcess game(kGame, {"Media/no such.lvl"}, kGameFolder);
    std::string window = FindGameWindow(game);
    ASSERT_FALSE(window.empty()) << game.ErrorOutput();
    EXPECT_TRUE(WaitFor([&] { return game.ErrorOutput().find("Error loading level") != std::string::npos; }, 20s))
        << game.ErrorOutput();
    // The overlay prints the raw command line, blank included.
    RunCommand("xdotool mousemove --window " + window + " 400 300 key F1");
    EXPECT_TRUE(WaitFor([] {
        Screenshot shot;
        return shot.Take() && shot.CountBright(0, 57, 400, 13, 200) > 100;
    }, 20s)) << "the command line is not printed under the statistics";
    int status = -1;
    std::string closing = RunCommand(kCloseWindow + " " + window + " 2>&1", &status);
    EXPECT_EQ(status, 0) << closing;
    EXPECT_EQ(game.WaitForExit(20s), 0) << game.ErrorOutput();
}

TEST(GameEndToEnd, TheIntroLevelPlaysWithItsQuotaAndClockOnScreen) {
    GameProcess game(kGame, {"Media/intro.lvl"}, kGameFolder);
    std::string window = FindGameWindow(game);
    ASSERT_FALSE(window.empty()) << game.ErrorOutput();
    // "Quota: 30% Collect: 3" along the bottom and the clock along the top, in white.
    EXPECT_TRUE(WaitFor([] {
        Screenshot shot;
        return shot.Take() && shot.CountBright(0, 540, 780, 40, 200) > 300 && shot.CountBright(0, 0, 400, 40, 200) > 200;
    }, 20s)) << "the level's text is not on screen";
    // Tilting for a while changes nothing that could stop the game.
    RunCommand("xdotool mousemove --window " + window + " 400 300 keydown q sleep 0.5 keyup q");
    EXPECT_EQ(game.ErrorOutput().find("Error"), std::string::npos) << game.ErrorOutput();
    int status = -1;
    std::string closing = RunCommand(kCloseWindow + " " + window + " 2>&1", &status);
    EXPECT_EQ(status, 0) << closing;
    EXPECT_EQ(game.WaitForExit(20s), 0) << game.ErrorOutput();
}

}  // namespace
