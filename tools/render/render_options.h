#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tools/tool/input_script.h"

// What `velloran-tool render` was asked for. The arguments mean what they mean to simulate.
struct RenderOptions {
    std::string level;
    std::string root;  // empty: stay in the current directory
    int frames = 1;
    uint32_t seed = 1;
    bool intro = false;
    std::string out;  // absolute, so changing into root does not move it
    InputScript script;
};

extern const char* const kRenderUsage;

// Reads the arguments after `render` and the input script they name (from the current
// directory, before any change into root). Gives the exit code when the program should stop
// here: help shown, a usage error (2) or a script that cannot be read (1, reported as JSON).
std::optional<int> ReadRenderOptions(const std::vector<std::string>& args, RenderOptions& options);
