#pragma once
#include <string>
#include <vector>

// velloran-render bench LEVEL [--root DIR] [--particles N]: the median time of a whole game
// frame (logic, physics and drawing), reached through `velloran-tool bench render`.
int RunRenderBench(const std::vector<std::string>& args);
