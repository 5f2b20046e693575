#pragma once
// Runs a shell command, the way a user or script runs velloran-tool, and keeps what it
// printed on standard output and its exit code.
#include <sys/wait.h>

#include <cstdio>
#include <string>

struct ToolRun {
    int exitCode = -1;
    std::string out;
};

inline ToolRun Shell(const std::string& command) {
    ToolRun run;
    std::FILE* pipe = popen(command.c_str(), "r");
    if (!pipe) return run;
    char buffer[4096];
    size_t got = 0;
    while ((got = std::fread(buffer, 1, sizeof buffer, pipe)) > 0) run.out.append(buffer, got);
    const int status = pclose(pipe);
    if (WIFEXITED(status)) run.exitCode = WEXITSTATUS(status);
    return run;
}

inline std::string Quoted(const std::string& text) { return "'" + text + "'"; }
