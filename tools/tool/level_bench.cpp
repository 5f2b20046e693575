// velloran-tool bench level: how many frames of headless play this machine runs per second.
#include <unistd.h>

#include <chrono>
#include <cmath>
#include <cstdio>

#include "tools/tool/commands.h"
#include "tools/tool/json_output.h"
#include "level/headless_game.h"
#include "tools/tool/tool_args.h"

namespace {

const char* kBenchLevelUsage =
    "usage: velloran-tool bench level LEVEL [--root DIR]\n"
    "\n"
    "Plays LEVEL headless for 60 seconds of game time (3600 frames of 1/60 s, no input) from\n"
    "DIR (default: the current directory, which must hold Media/) and prints\n"
    "{\"level\": NAME, \"frames\": N, \"fps\": F}: frames of play per second of this machine.\n";

constexpr int kFrames = 3600;

}  // namespace

int RunBenchLevel(const std::vector<std::string>& args) {
    ToolArgs parsed;
    std::string problem;
    if (!ParseToolArgs(args, {"--root"}, {}, parsed, problem))
        return ToolUsageError("bench level", problem, kBenchLevelUsage);
    if (parsed.help) {
        std::fputs(kBenchLevelUsage, stdout);
        return ToolOk;
    }
    if (parsed.positional.size() != 1) return ToolUsageError("bench level", "give exactly one LEVEL", kBenchLevelUsage);
    if (parsed.Has("--root") && chdir(parsed.Value("--root").c_str()) != 0)
        return ToolUsageError("bench level", "cannot change into " + parsed.Value("--root"), kBenchLevelUsage);

    HeadlessGame game(1);
    const std::string& path = parsed.positional[0];
    std::fprintf(stderr, "bench level: loading %s\n", path.c_str());
    if (!game.Load(path)) {
        for (const std::string& error : game.errors) std::fprintf(stderr, "bench level: %s\n", error.c_str());
        PrintJson({{"ok", false}, {"level", path}, {"errors", game.errors}});
        return ToolBadInput;
    }
    std::fprintf(stderr, "bench level: playing %d frames headless\n", kFrames);
    const auto start = std::chrono::steady_clock::now();
    // The fly-over is skipped and nobody plays: the level runs on its own for the full minute.
    for (int i = 0; i < kFrames && !game.GetLevel().IsFinished(); ++i) game.PlayFrame(0);
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    const int frames = game.FrameNumber();
    const double fps = seconds > 0 ? frames / seconds : 0.0;
    std::fprintf(stderr, "bench level: %d frames in %.2f s\n", frames, seconds);
    PrintJson({{"level", game.GetLevel().GetName()}, {"frames", frames}, {"fps", std::round(fps * 10) / 10}});
    return ToolOk;
}
