#pragma once
// Runs the real game binary and the X tools around it, for end-to-end tests under Xvfb.
#include <sys/types.h>

#include <chrono>
#include <functional>
#include <string>
#include <vector>

// Runs a shell command; its standard output, and its exit status in status.
std::string RunCommand(const std::string& command, int* status = nullptr);

// Polls condition every 50 ms until it holds or the deadline passes. For waiting on another
// process, never as a stand-in for a result.
bool WaitFor(const std::function<bool()>& condition, std::chrono::milliseconds deadline);

class GameProcess {
public:
    // Starts program with arguments in folder; standard error goes to a file.
    GameProcess(const std::string& program, const std::vector<std::string>& arguments, const std::string& folder);
    ~GameProcess();

    // The exit status once the process has ended within the deadline, else -1.
    int WaitForExit(std::chrono::milliseconds deadline);
    std::string ErrorOutput() const;
    pid_t Pid() const { return pid; }

private:
    pid_t pid = -1;
    int exitCode = -1;
    std::string errorFile;
};

// The whole X screen as RGB bytes.
struct Screenshot {
    int width = 0, height = 0;
    std::vector<unsigned char> rgb;
    bool Take();
    // How many pixels in the rectangle have every channel at least minimum.
    int CountBright(int x, int y, int w, int h, int minimum) const;
    // How many pixels in the rectangle are close to the given colour.
    int CountNear(int x, int y, int w, int h, int r, int g, int b) const;
};
