// The real game binary in a real window under Xvfb, driven with real input events.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/files.h"
#include "tests/support/tool_run.h"

namespace fs = std::filesystem;
using namespace std::chrono_literals;

namespace {

const std::string kGameFolder = VELLORAN_GAME_DIR;
const std::string kGame = kGameFolder + "/velloran";
const std::string kCloseWindow = CLOSE_WINDOW_PROGRAM;

// Polls every 50 ms until the condition holds or 20 s have passed. For waiting on another
// process, never as a stand-in for a result.
bool WaitFor(const std::function<bool()>& condition) {
    const auto end = std::chrono::steady_clock::now() + 20s;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) return false;
        std::this_thread::sleep_for(50ms);
    }
    return true;
}

// The game started in a folder, its standard error kept in a file; killed if still running.
class GameProcess {
public:
    GameProcess(const std::string& program, const std::vector<std::string>& arguments, const std::string& folder)
        : errorFile(fs::temp_directory_path() /
                    ("velloran-e2e-stderr-" + std::to_string(getpid()) + "-" + std::to_string(rand()))) {
        pid = fork();
        if (pid == 0) {
            if (chdir(folder.c_str()) != 0 || !freopen(errorFile.c_str(), "w", stderr)) _exit(127);
            std::vector<char*> argv{const_cast<char*>(program.c_str())};
            for (const auto& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
            argv.push_back(nullptr);
            execv(program.c_str(), argv.data());
            _exit(127);
        }
    }
    ~GameProcess() {
        if (pid > 0 && exitCode < 0) {
            kill(pid, SIGKILL);
            waitpid(pid, nullptr, 0);
        }
        fs::remove(errorFile);
    }

    // The exit status once the process has ended, or -1.
    int WaitForExit() {
        if (exitCode < 0)
            WaitFor([&] {
                int status = 0;
                if (waitpid(pid, &status, WNOHANG) != pid) return false;
                exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
                return true;
            });
        return exitCode;
    }
    std::string ErrorOutput() const {
        const std::vector<uint8_t> bytes = ReadBytes(errorFile);
        return {bytes.begin(), bytes.end()};
    }
    // The id of the game's visible window, or "" when none shows.
    std::string Window() const {
        std::string id;
        WaitFor([&] {
            id = Shell("xdotool search --onlyvisible --pid " + std::to_string(pid) +
                       " --name '^Velloran$' 2>/dev/null | head -n 1")
                     .out;
            while (!id.empty() && (id.back() == '\n' || id.back() == ' ')) id.pop_back();
            return !id.empty();
        });
        return id;
    }

private:
    fs::path errorFile;
    pid_t pid = -1;
    int exitCode = -1;
};

// Closing the window the way a window manager would ends the game without an error.
void ExpectClosingEndsTheGame(GameProcess& game, const std::string& window) {
    const ToolRun closing = Shell(kCloseWindow + " " + window + " 2>&1");
    EXPECT_EQ(closing.exitCode, 0) << closing.out;
    EXPECT_EQ(game.WaitForExit(), 0) << game.ErrorOutput();
}

// Pixels of the X screen in the rectangle that pass the test; -1 when no picture was taken.
int CountPixels(int x, int y, int w, int h, const std::function<bool(const uint8_t*)>& test) {
    int width = 0, height = 0;
    if (std::sscanf(Shell("xdotool getdisplaygeometry 2>/dev/null").out.c_str(), "%d %d", &width, &height) != 2)
        width = 1024, height = 768;
    const fs::path file = fs::temp_directory_path() / ("velloran-shot-" + std::to_string(getpid()) + ".rgb");
    const int status = Shell("import -window root -depth 8 rgb:" + file.string() + " 2>/dev/null").exitCode;
    const std::vector<uint8_t> rgb = ReadBytes(file);
    fs::remove(file);
    if (status != 0 || rgb.size() != size_t(width) * size_t(height) * 3) return -1;
    int count = 0;
    for (int row = y; row < std::min(y + h, height); ++row)
        for (int column = x; column < std::min(x + w, width); ++column)
            count += test(&rgb[(size_t(row) * size_t(width) + size_t(column)) * 3]);
    return count;
}

// White text: every channel at least 200.
int BrightPixels(int x, int y, int w, int h) {
    return CountPixels(x, y, w, h, [](const uint8_t* p) { return p[0] >= 200 && p[1] >= 200 && p[2] >= 200; });
}

// The overlay sits in the top-left corner of the client area.
int OverlayPixels() { return BrightPixels(0, 0, 300, 90); }

TEST(GameEndToEnd, F1ShowsTheOverlayAndClosingTheWindowEndsTheGame) {
    ASSERT_TRUE(fs::exists(kGameFolder + "/Media/font.tga")) << "the build generates Media";
    GameProcess game(kGame, {}, kGameFolder);
    const std::string window = game.Window();
    ASSERT_FALSE(window.empty()) << game.ErrorOutput();
    const std::string geometry = Shell("xdotool getwindowgeometry " + window).out;
    EXPECT_NE(geometry.find("800x600"), std::string::npos) << geometry;

    // The menu screen: the clear colour and no overlay yet.
    ASSERT_TRUE(WaitFor([] {
        return CountPixels(300, 200, 200, 200, [](const uint8_t* p) { return p[0] < 16 && p[1] > 239 && p[2] < 16; }) >
               30000;
    })) << "the window never showed its green clear colour";
    EXPECT_EQ(OverlayPixels(), 0);

    // Keys go to the window under the pointer: Xvfb has no window manager to give focus.
    Shell("xdotool mousemove --window " + window + " 400 300 key F1");
    EXPECT_TRUE(WaitFor([] { return OverlayPixels() > 200; })) << "F1 did not show the overlay";
    Shell("xdotool key F1");
    EXPECT_TRUE(WaitFor([] { return OverlayPixels() == 0; })) << "a second F1 did not hide it";
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
