#include "tests/e2e/game_process.h"

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>

std::string RunCommand(const std::string& command, int* status) {
    std::string output;
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe) return output;
    char buffer[4096];
    size_t n;
    while ((n = fread(buffer, 1, sizeof buffer, pipe)) > 0) output.append(buffer, n);
    int result = pclose(pipe);
    if (status) *status = WIFEXITED(result) ? WEXITSTATUS(result) : -1;
    return output;
}

bool WaitFor(const std::function<bool()>& condition, std::chrono::milliseconds deadline) {
    auto end = std::chrono::steady_clock::now() + deadline;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    return true;
}

GameProcess::GameProcess(const std::string& program, const std::vector<std::string>& arguments,
                         const std::string& folder) {
    errorFile = (std::filesystem::temp_directory_path() /
                 ("velloran-e2e-stderr-" + std::to_string(getpid()) + "-" + std::to_string(rand())))
                    .string();
    pid = fork();
    if (pid == 0) {
        if (chdir(folder.c_str()) != 0) _exit(127);
        if (!freopen(errorFile.c_str(), "w", stderr)) _exit(127);
        std::vector<char*> argv;
        argv.push_back(const_cast<char*>(program.c_str()));
        for (const auto& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
        argv.push_back(nullptr);
        execv(program.c_str(), argv.data());
        _exit(127);
    }
}

GameProcess::~GameProcess() {
    if (pid > 0 && exitCode < 0) {
        kill(pid, SIGKILL);
        waitpid(pid, nullptr, 0);
    }
    std::filesystem::remove(errorFile);
}

int GameProcess::WaitForExit(std::chrono::milliseconds deadline) {
    if (exitCode >= 0) return exitCode;
    WaitFor(
        [&] {
            int status = 0;
            if (waitpid(pid, &status, WNOHANG) != pid) return false;
            exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
            return true;
        },
        deadline);
    return exitCode;
}

std::string GameProcess::ErrorOutput() const {
    std::ifstream in(errorFile);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

bool Screenshot::Take() {
    std::string geometry = RunCommand("xdotool getdisplaygeometry 2>/dev/null");
    if (std::sscanf(geometry.c_str(), "%d %d", &width, &height) != 2) {
        width = 1024;
        height = 768;
    }
    auto file = std::filesystem::temp_directory_path() / ("velloran-shot-" + std::to_string(getpid()) + ".rgb");
    int status = -1;
    RunCommand("import -window root -depth 8 rgb:" + file.string() + " 2>/dev/null", &status);
    std::ifstream in(file, std::ios::binary);
    rgb.assign(std::istreambuf_iterator<char>(in), {});
    std::filesystem::remove(file);
    return status == 0 && rgb.size() == size_t(width) * size_t(height) * 3;
}

int Screenshot::CountBright(int x, int y, int w, int h, int minimum) const {
    int count = 0;
    for (int row = y; row < y + h && row < height; ++row)
        for (int column = x; column < x + w && column < width; ++column) {
            const unsigned char* p = &rgb[(size_t(row) * size_t(width) + size_t(column)) * 3];
            if (p[0] >= minimum && p[1] >= minimum && p[2] >= minimum) ++count;
        }
    return count;
}

int Screenshot::CountNear(int x, int y, int w, int h, int r, int g, int b) const {
    int count = 0;
    for (int row = y; row < y + h && row < height; ++row)
        for (int column = x; column < x + w && column < width; ++column) {
            const unsigned char* p = &rgb[(size_t(row) * size_t(width) + size_t(column)) * 3];
            if (std::abs(p[0] - r) < 16 && std::abs(p[1] - g) < 16 && std::abs(p[2] - b) < 16) ++count;
        }
    return count;
}
