// velloran-tool bench physics: milliseconds per physics step for piles of balls in an arena
// of triangle-mesh tracks, while they fall and once they have settled; with --baseline, the
// same scene in the plain library alongside, taking turns so both see the same machine.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

#include "physics/actor.h"
#include "physics/physics_system.h"
#include "tools/tool/bench_arena.h"
#include "tools/tool/commands.h"
#include "tools/tool/json_output.h"
#include "tools/tool/tool_args.h"

namespace {

const char* kBenchUsage =
    "usage: velloran-tool bench physics [--balls N[,N...]] [--baseline] [--joints]\n"
    "\n"
    "Drops N balls of radius 1 (frozen in z) into a walled arena of triangle-mesh tracks under\n"
    "gravity (0, -60, 0) and times PhysicsSystem::Step(1/60): the median milliseconds per step\n"
    "while the balls are moving and once the pile has settled. Every surface grips with friction\n"
    "0.25 and does not bounce. Default N: 100,500,1000,2000.\n"
    "--joints stands a motor-driven paddle wheel and a hinged door in the pile.\n"
    "--baseline builds the same scene in the rigid-body library with its default settings\n"
    "(nothing asleep, as in the game) and steps the two in turns of ten steps; it adds the\n"
    "library's medians and the medians of the per-turn ratios (ours / library's).\n"
    "Also reports how many steps the pile took to come to rest (mean speed under 0.2) and how\n"
    "deep the two most overlapping balls of the still pile sink into each other.\n"
    "Prints {\"physics\": [{\"balls\": N, \"joints\": J, \"moving\": MS, \"settled\": MS,\n"
    "  \"settleSteps\": S, \"overlap\": D [, \"baselineMoving\": MS, \"baselineSettled\": MS,\n"
    "  \"ratioMoving\": R, \"ratioSettled\": R, \"baselineSettleSteps\": S, \"baselineOverlap\": D]}, ...]}.\n";

constexpr float kStep = 1.0f / 60.0f;
const Vector3 kGravity(0, -60, 0);
constexpr int kTurnSteps = 10;
constexpr int kMovingTurns = 15;
constexpr int kSettledTurns = 12;
constexpr int kMaxSettleSteps = 1800;
// A pile counts as settled when its balls move this slowly on average (units per second).
constexpr float kSettledSpeed = 0.2f;

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values.empty() ? 0.0 : values[values.size() / 2];
}

// Times `kTurnSteps` steps one by one; returns the turn's total milliseconds.
template <class Step>
double TimedTurn(Step step, std::vector<double>& perStep) {
    double total = 0;
    for (int i = 0; i < kTurnSteps; ++i) {
        const auto start = std::chrono::steady_clock::now();
        step();
        const double ms = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
        perStep.push_back(ms);
        total += ms;
    }
    return total;
}

// Steps until the balls' mean speed falls below kSettledSpeed (checked every 30 steps).
template <class Step, class Speed>
int Settle(Step step, Speed meanSpeed) {
    int steps = 0;
    while (steps < kMaxSettleSteps) {
        step();
        if (++steps % 30 == 0 && meanSpeed() < kSettledSpeed) break;
    }
    return steps;
}

// How deep the most overlapping two balls of radius 1 sink into each other.
float DeepestOverlap(std::vector<Vector3> centres) {
    std::sort(centres.begin(), centres.end(), [](const Vector3& a, const Vector3& b) { return a.x < b.x; });
    float deepest = 0;
    for (size_t i = 0; i < centres.size(); ++i)
        for (size_t j = i + 1; j < centres.size() && centres[j].x - centres[i].x < 2; ++j)
            deepest = std::max(deepest, 2 - std::hypot(centres[j].x - centres[i].x, centres[j].y - centres[i].y));
    return deepest;
}

struct Phase {
    std::vector<double> ours, plain, ratios;
};

Json Measure(int count, bool joints, bool baseline) {
    const BenchArena arena = MakeBenchArena(count, joints);
    PhysicsSystem physics;
    physics.Startup();
    // The library's default surfaces: friction 0.5 on each side, multiplied; no bounce.
    physics.SetMaterial(0, {0.25f, 0.25f, 0.0f});
    physics.SetGravity(kGravity);
    const std::vector<phys::Actor*> balls = BuildArena(arena, physics);
    std::unique_ptr<phys::PlainScene> plain;
    if (baseline) plain = BuildPlainArena(arena, kGravity);

    const auto ourStep = [&physics] { physics.Step(kStep); };
    const auto plainStep = [&plain] { plain->Step(kStep); };
    const auto ourSpeed = [&balls] {
        double total = 0;
        for (phys::Actor* ball : balls) {
            const Vector3 v = ball->GetLinearVelocity();
            total += std::hypot(v.x, v.y);
        }
        return float(total / double(balls.size()));
    };
    // Turns alternate which world goes first, so neither always finds the caches cold.
    const auto measure = [&](int turns, Phase& phase) {
        for (int turn = 0; turn < turns; ++turn) {
            if (!plain) {
                TimedTurn(ourStep, phase.ours);
                continue;
            }
            double ours, theirs;
            if (turn % 2 == 0) {
                ours = TimedTurn(ourStep, phase.ours);
                theirs = TimedTurn(plainStep, phase.plain);
            } else {
                theirs = TimedTurn(plainStep, phase.plain);
                ours = TimedTurn(ourStep, phase.ours);
            }
            phase.ratios.push_back(ours / theirs);
        }
    };

    Phase moving, settled;
    measure(kMovingTurns, moving);
    const int ourSettle = Settle(ourStep, ourSpeed);
    const int plainSettle = plain ? Settle(plainStep, [&plain] { return plain->MeanBallSpeed(); }) : 0;
    measure(kSettledTurns, settled);

    const auto round2 = [](double value) { return std::round(value * 100) / 100; };
    const auto round3 = [](double value) { return std::round(value * 1000) / 1000; };
    std::vector<Vector3> centres;
    for (const phys::Actor* ball : balls) centres.push_back(ball->GetGlobalPosition());
    const float overlap = DeepestOverlap(centres);
    Json result = {{"balls", count},
                   {"joints", joints},
                   {"moving", round2(Median(moving.ours))},
                   {"settled", round2(Median(settled.ours))},
                   {"settleSteps", ourSettle},
                   {"overlap", round3(overlap)}};
    std::fprintf(stderr,
                 "  %d balls%s: %.2f ms moving, %.2f ms settled (pile still after %d more steps, deepest overlap "
                 "%.3f)\n",
                 count, joints ? " with a wheel and a door" : "", Median(moving.ours), Median(settled.ours), ourSettle,
                 overlap);
    if (plain) {
        result["baselineMoving"] = round2(Median(moving.plain));
        result["baselineSettled"] = round2(Median(settled.plain));
        result["ratioMoving"] = round2(Median(moving.ratios));
        result["ratioSettled"] = round2(Median(settled.ratios));
        const float plainOverlap = DeepestOverlap(plain->BallPositions());
        result["baselineSettleSteps"] = plainSettle;
        result["baselineOverlap"] = round3(plainOverlap);
        std::fprintf(stderr,
                     "    library: %.2f ms moving, %.2f ms settled (still after %d, overlap %.3f); ours / library: "
                     "%.2f, %.2f\n",
                     Median(moving.plain), Median(settled.plain), plainSettle, plainOverlap, Median(moving.ratios),
                     Median(settled.ratios));
    }
    return result;
}

}  // namespace

int RunBenchPhysics(const std::vector<std::string>& args) {
    ToolArgs parsed;
    std::string problem;
    if (!ParseToolArgs(args, {"--balls"}, {"--baseline", "--joints"}, parsed, problem))
        return ToolUsageError("bench physics", problem, kBenchUsage);
    if (parsed.help) {
        std::fputs(kBenchUsage, stdout);
        return ToolOk;
    }
    if (!parsed.positional.empty())
        return ToolUsageError("bench physics", "unknown argument '" + parsed.positional[0] + "'", kBenchUsage);
    std::vector<int> counts = {100, 500, 1000, 2000};
    if (parsed.Has("--balls")) {
        counts.clear();
        std::stringstream list(parsed.Value("--balls"));
        std::string item;
        int n = 0;
        while (std::getline(list, item, ',')) {
            if (!ReadCount(item, n) || n <= 0)
                return ToolUsageError("bench physics", "bad ball count '" + item + "'", kBenchUsage);
            counts.push_back(n);
        }
        if (counts.empty()) return ToolUsageError("bench physics", "--balls needs counts", kBenchUsage);
    }
    const bool baseline = parsed.Has("--baseline"), joints = parsed.Has("--joints");

    std::fprintf(stderr, "bench physics: timing one 1/60 s step (five ticks) on this machine%s\n",
                 baseline ? ", against the plain library in turns of ten steps" : "");
    Json results = Json::array();
    for (int count : counts) results.push_back(Measure(count, joints, baseline));
    PrintJson({{"physics", results}});
    return ToolOk;
}
