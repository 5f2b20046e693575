#pragma once
#include <string>
#include <vector>

// Exit codes shared by every command.
enum ToolExit { ToolOk = 0, ToolBadInput = 1, ToolUsage = 2 };

// Each command takes the arguments after its own name, prints one JSON object on standard
// output and returns a ToolExit.
int RunInspectTexture(const std::vector<std::string>& args);
int RunInspectModel(const std::vector<std::string>& args);
int RunInspectSound(const std::vector<std::string>& args);
int RunBenchPhysics(const std::vector<std::string>& args);
int RunLint(const std::vector<std::string>& args);
int RunSimulate(const std::vector<std::string>& args);
int RunBenchLevel(const std::vector<std::string>& args);
int RunBenchSoak(const std::vector<std::string>& args);
int RunTrack(const std::vector<std::string>& args);
// Runs velloran-render, found beside this program, with these arguments in place of this
// process; returns only when it cannot be run.
int RunRender(const std::vector<std::string>& args);
