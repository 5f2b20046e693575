#pragma once
// The real game binary under Xvfb: starting it, reading the screen, and waiting on it.
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

namespace e2e {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

inline const std::string kGameFolder = VELLORAN_GAME_DIR;
inline const std::string kGame = kGameFolder + "/velloran";

// Polls every 50 ms until the condition holds or the time is up. For waiting on another
// process, never as a stand-in for a result.
inline bool WaitFor(const std::function<bool()>& condition, std::chrono::seconds limit = 20s) {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) return false;
        std::this_thread::sleep_for(50ms);
    }
    return true;
}

// The game started in a folder, its standard output and error kept in files; killed if still
// running at the end.
class GameProcess {
public:
    GameProcess(const std::string& program, const std::vector<std::string>& arguments, const std::string& folder)
        : outputFile(TempName("stdout")), errorFile(TempName("stderr")) {
        pid = fork();
        if (pid == 0) {
            if (chdir(folder.c_str()) != 0 || !freopen(errorFile.c_str(), "w", stderr) ||
                !freopen(outputFile.c_str(), "w", stdout))
                _exit(127);
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
        fs::remove(outputFile);
        fs::remove(errorFile);
    }

    // The exit status once the process has ended, or -1 when it is still running at the limit.
    int WaitForExit(std::chrono::seconds limit = 20s) {
        if (exitCode < 0) WaitFor([&] { return HasEnded(); }, limit);
        return exitCode;
    }
    bool HasEnded() {
        if (exitCode >= 0) return true;
        int status = 0;
        if (waitpid(pid, &status, WNOHANG) != pid) return false;
        exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
        return true;
    }
    std::string Output() const { return Text(outputFile); }
    std::string ErrorOutput() const { return Text(errorFile); }
    // Waits until the game says on standard output that it plays the named level.
    bool WaitForPlaying(const std::string& levelName) const {
        return WaitFor([&] { return Output().find("playing \"" + levelName + "\"") != std::string::npos; });
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
    static fs::path TempName(const char* what) {
        return fs::temp_directory_path() / ("velloran-e2e-" + std::string(what) + "-" + std::to_string(getpid()) +
                                            "-" + std::to_string(rand()));
    }
    static std::string Text(const fs::path& file) {
        const std::vector<uint8_t> bytes = ReadBytes(file);
        return {bytes.begin(), bytes.end()};
    }

    fs::path outputFile, errorFile;
    pid_t pid = -1;
    int exitCode = -1;
};

// The X screen as one RGB picture; empty when no picture could be taken.
struct Screenshot {
    int width = 0, height = 0;
    std::vector<uint8_t> rgb;

    bool Empty() const { return rgb.empty(); }
    const uint8_t* At(int x, int y) const { return &rgb[(size_t(y) * size_t(width) + size_t(x)) * 3]; }
    // Pixels in the rectangle that pass the test.
    int Count(int x, int y, int w, int h, const std::function<bool(const uint8_t*)>& test) const {
        if (Empty()) return -1;
        int count = 0;
        for (int row = std::max(y, 0); row < std::min(y + h, height); ++row)
            for (int column = std::max(x, 0); column < std::min(x + w, width); ++column) count += test(At(column, row));
        return count;
    }
    // Pixels in the rectangle that differ from the other picture by more than a trace.
    int Differing(const Screenshot& other, int x, int y, int w, int h) const {
        if (Empty() || other.Empty() || other.width != width || other.height != height) return -1;
        return Count(x, y, w, h, [&](const uint8_t* p) {
            const uint8_t* q = other.rgb.data() + (p - rgb.data());
            return std::abs(p[0] - q[0]) + std::abs(p[1] - q[1]) + std::abs(p[2] - q[2]) > 60;
        });
    }
};

inline Screenshot TakeScreenshot() {
    Screenshot shot;
    if (std::sscanf(Shell("xdotool getdisplaygeometry 2>/dev/null").out.c_str(), "%d %d", &shot.width,
                    &shot.height) != 2)
        return {};
    const fs::path file = fs::temp_directory_path() / ("velloran-shot-" + std::to_string(getpid()) + ".rgb");
    const int status = Shell("import -window root -depth 8 rgb:" + file.string() + " 2>/dev/null").exitCode;
    shot.rgb = ReadBytes(file);
    fs::remove(file);
    if (status != 0 || shot.rgb.size() != size_t(shot.width) * size_t(shot.height) * 3) return {};
    return shot;
}

// Pixels of the X screen in the rectangle that pass the test; -1 when no picture was taken.
inline int CountPixels(int x, int y, int w, int h, const std::function<bool(const uint8_t*)>& test) {
    return TakeScreenshot().Count(x, y, w, h, test);
}

// White text: every channel at least 200.
inline bool IsWhite(const uint8_t* p) { return p[0] >= 200 && p[1] >= 200 && p[2] >= 200; }
inline int BrightPixels(int x, int y, int w, int h) { return CountPixels(x, y, w, h, IsWhite); }

// Input goes to the window under the pointer: Xvfb has no window manager to give focus.
inline void Xdotool(const std::string& window, const std::string& commands) {
    Shell("xdotool mousemove --window " + window + " " + commands);
}

}  // namespace e2e
