// velloran-tool bench soak: plays a level for its whole three minutes, however many balls it
// makes, and reports how time and memory grow with the live balls.
#include <unistd.h>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <string>

#include "level/headless_game.h"
#include "objects/game_object.h"
#include "tools/tool/commands.h"
#include "tools/tool/json_output.h"
#include "tools/tool/tool_args.h"

namespace {

const char* kBenchSoakUsage =
    "usage: velloran-tool bench soak LEVEL [--root DIR] [--seconds S]\n"
    "\n"
    "Plays LEVEL headless (no input) from DIR (default: the current directory, which must hold\n"
    "Media/) for S seconds of game time (default 180, the whole time limit) and prints the peak\n"
    "number of live balls, the mean frame time over the 60 frames after 1,000, 2,000 and 5,000\n"
    "balls are first alive, the process's resident memory at those points and at its peak,\n"
    "the bodies the physics switched off and every non-finite position seen (each second).\n"
    "A benchmark of this machine, not a test; Media/benchmarks/soak.lvl is made for it.\n";

constexpr int kMilestones[] = {1000, 2000, 5000};
constexpr int kFramesTimed = 60;

// Resident memory now and at its peak, in MiB, from the kernel's view of this process.
double MemoryMiB(const char* field) {
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line))
        if (line.rfind(field, 0) == 0) return std::stod(line.substr(std::string(field).size())) / 1024.0;
    return 0.0;
}

int CountNonFinite(Level& level) {
    int count = 0;
    for (const auto& object : level.GetObjects()) {
        const Vector3 p = object->GetPosition(), v = object->GetVelocity();
        for (float value : {p.x, p.y, p.z, v.x, v.y, v.z}) count += !std::isfinite(value);
    }
    return count;
}

struct Milestone {
    int balls, frame = -1, timed = 0;
    double seconds = 0, rssMiB = 0;
};

double Round(double value, double unit) { return std::round(value / unit) / (1 / unit); }

}  // namespace

int RunBenchSoak(const std::vector<std::string>& args) {
    ToolArgs parsed;
    std::string problem;
    if (!ParseToolArgs(args, {"--root", "--seconds"}, {}, parsed, problem))
        return ToolUsageError("bench soak", problem, kBenchSoakUsage);
    if (parsed.help) {
        std::fputs(kBenchSoakUsage, stdout);
        return ToolOk;
    }
    if (parsed.positional.size() != 1) return ToolUsageError("bench soak", "give exactly one LEVEL", kBenchSoakUsage);
    int seconds = 180;
    if (parsed.Has("--seconds") && !ReadCount(parsed.Value("--seconds"), seconds))
        return ToolUsageError("bench soak", "--seconds needs a whole number of at least 0", kBenchSoakUsage);
    if (parsed.Has("--root") && chdir(parsed.Value("--root").c_str()) != 0)
        return ToolUsageError("bench soak", "cannot change into " + parsed.Value("--root"), kBenchSoakUsage);

    HeadlessGame game(1);
    const std::string& path = parsed.positional[0];
    std::fprintf(stderr, "bench soak: loading %s\n", path.c_str());
    if (!game.Load(path)) {
        PrintJson({{"ok", false}, {"level", path}, {"errors", game.errors}});
        return ToolBadInput;
    }
    Level& level = game.GetLevel();
    const double loadedMiB = MemoryMiB("VmRSS:");
    std::fprintf(stderr, "bench soak: playing %d s of game time; %.1f MiB resident after loading\n", seconds,
                 loadedMiB);

    std::vector<Milestone> milestones;
    for (int balls : kMilestones) milestones.push_back({balls});
    int peakBalls = 0, nonFinite = 0;
    const int frames = seconds * 60;
    const auto start = std::chrono::steady_clock::now();
    while (game.FrameNumber() < frames && !level.IsFinished()) {
        const auto before = std::chrono::steady_clock::now();
        game.PlayFrame(0);
        const double spent = std::chrono::duration<double>(std::chrono::steady_clock::now() - before).count();
        const int live = int(level.GetBalls().size());
        peakBalls = std::max(peakBalls, live);
        for (Milestone& m : milestones) {
            if (m.frame < 0 && live >= m.balls) {
                m.frame = game.FrameNumber();
                m.rssMiB = MemoryMiB("VmRSS:");
            }
            if (m.frame >= 0 && m.timed < kFramesTimed) {
                m.seconds += spent;
                ++m.timed;
            }
        }
        if (game.FrameNumber() % 60 == 0) nonFinite += CountNonFinite(level);
        if (game.FrameNumber() % 600 == 0) {
            std::fprintf(stderr, "bench soak: %3d s of play, %5d live balls, %5d collected, last frame %.1f ms, %.1f MiB\n",
                         game.FrameNumber() / 60, live, level.GetCollected(), spent * 1000, MemoryMiB("VmRSS:"));
        }
    }
    const double wall = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();

    Json reached = Json::array();
    for (const Milestone& m : milestones) {
        if (m.frame < 0) continue;
        reached.push_back({{"liveBalls", m.balls},
                           {"frame", m.frame},
                           {"frameMs", Round(m.seconds * 1000 / m.timed, 0.01)},
                           {"rssMiB", Round(m.rssMiB, 0.1)}});
    }
    PrintJson({{"ok", true},
               {"level", level.GetName()},
               {"frames", game.FrameNumber()},
               {"wallSeconds", Round(wall, 0.1)},
               {"peakLiveBalls", peakBalls},
               {"liveBalls", level.GetBalls().size()},
               {"collected", level.GetCollected()},
               {"milestones", reached},
               {"loadedRssMiB", Round(loadedMiB, 0.1)},
               {"peakRssMiB", Round(MemoryMiB("VmHWM:"), 0.1)},
               {"switchedOff", game.switchedOff.size()},
               {"nonFiniteValues", nonFinite}});
    return ToolOk;
}
