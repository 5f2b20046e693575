// velloran-tool bench physics: milliseconds per physics step for piles of balls in an arena
// of triangle-mesh tracks, while they fall and once they have settled.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

#include "objects/actor_group.h"
#include "physics/actor.h"
#include "physics/physics_system.h"
#include "tools/tool/commands.h"
#include "tools/tool/json_output.h"
#include "tools/tool/tool_args.h"

namespace {

const char* kBenchUsage =
    "usage: velloran-tool bench physics [--balls N[,N...]]\n"
    "\n"
    "Drops N balls of radius 1 (frozen in z) into a walled arena of triangle-mesh tracks under\n"
    "gravity (0, -60, 0) and times PhysicsSystem::Step(1/60): the median milliseconds per step\n"
    "while the balls are moving and once the pile has settled. Default N: 100,500,1000,2000.\n"
    "Prints {\"physics\": [{\"balls\": N, \"moving\": MS, \"settled\": MS}, ...]}.\n";

constexpr float kStep = 1.0f / 60.0f;
constexpr int kMovingSteps = 150;
constexpr int kSettledSteps = 120;
constexpr int kMaxSettleSteps = 1800;
// A pile counts as settled when its balls move this slowly on average (units per second).
constexpr float kSettledSpeed = 0.2f;

// A track: a closed outline in the plane, cut into pieces at most one unit long and drawn out
// from z = -2 to z = 2, as the game's track models are.
struct TrackMesh {
    std::vector<Vector3> vertices;
    std::vector<uint32_t> triangles;
};

TrackMesh Extrude(const std::vector<std::pair<float, float>>& outline) {
    TrackMesh mesh;
    for (size_t i = 0; i < outline.size(); ++i) {
        const auto [x0, y0] = outline[i];
        const auto [x1, y1] = outline[(i + 1) % outline.size()];
        const int pieces = std::max(1, int(std::ceil(std::hypot(x1 - x0, y1 - y0))));
        for (int p = 0; p < pieces; ++p) {
            const float a = float(p) / pieces, b = float(p + 1) / pieces;
            const uint32_t base = uint32_t(mesh.vertices.size());
            for (float t : {a, b})
                for (float z : {-2.0f, 2.0f}) mesh.vertices.emplace_back(x0 + (x1 - x0) * t, y0 + (y1 - y0) * t, z);
            mesh.triangles.insert(mesh.triangles.end(), {base, base + 2, base + 1, base + 1, base + 2, base + 3});
        }
    }
    return mesh;
}

TrackMesh Slab(float left, float bottom, float right, float top) {
    return Extrude({{left, bottom}, {right, bottom}, {right, top}, {left, top}});
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values.empty() ? 0.0 : values[values.size() / 2];
}

double TimedStep(PhysicsSystem& physics) {
    const auto start = std::chrono::steady_clock::now();
    physics.Step(kStep);
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

Json Measure(int count) {
    PhysicsSystem physics;
    physics.Startup();
    physics.SetGravity({0, -60, 0});

    // Walls and floor, and two ramps that throw falling balls towards the middle.
    const float half = std::max(20.0f, std::ceil(std::sqrt(float(count)) * 1.6f));
    const float roof = -half + 3.0f * (float(count) / (half - 2)) + 30;
    std::vector<TrackMesh> tracks = {Slab(-half - 2, -half - 2, half + 2, -half), Slab(-half - 2, -half, -half, roof),
                                     Slab(half, -half, half + 2, roof),
                                     Extrude({{-half, 0}, {-half * 0.4f, -half * 0.3f}, {-half * 0.4f, -half * 0.3f - 1},
                                              {-half, -1}}),
                                     Extrude({{half, -1}, {half * 0.4f, -half * 0.3f - 1}, {half * 0.4f, -half * 0.3f},
                                              {half, 0}})};
    for (const TrackMesh& track : tracks) {
        phys::Actor* actor = physics.CreateMeshActor(uint32_t(track.vertices.size()), track.vertices.data(),
                                                     uint32_t(track.triangles.size() / 3), track.triangles.data(), 0,
                                                     false, 0);
        if (actor) actor->SetGroup(GroupTrack);
    }

    // Balls on a loose grid above the floor, nudged sideways so that they do not stack.
    std::vector<phys::Actor*> balls;
    const int perRow = int((2 * half - 4) / 2.4f);
    uint32_t seed = 12345;
    for (int i = 0; i < count; ++i) {
        seed = seed * 1103515245u + 12345u;
        const float jitter = float((seed >> 16) % 100) / 250.0f;
        phys::Actor* ball = physics.CreateSphereActor(1, 1, 0);
        ball->RaiseBodyFlag(phys::FrozenPosZ);
        ball->SetGlobalPosition({-half + 2 + 2.4f * (i % perRow) + jitter, -half + 3 + 2.4f * (i / perRow), 0});
        ball->SetGroup(GroupBall);
        balls.push_back(ball);
    }

    std::vector<double> moving;
    for (int i = 0; i < kMovingSteps; ++i) moving.push_back(TimedStep(physics));

    int settleSteps = 0;
    for (; settleSteps < kMaxSettleSteps; ++settleSteps) {
        physics.Step(kStep);
        if (settleSteps % 30 != 29) continue;
        float total = 0;
        for (phys::Actor* ball : balls) {
            const Vector3 v = ball->GetLinearVelocity();
            total += std::hypot(v.x, v.y);
        }
        if (total / float(balls.size()) < kSettledSpeed) break;
    }
    std::vector<double> settled;
    for (int i = 0; i < kSettledSteps; ++i) settled.push_back(TimedStep(physics));

    const auto round2 = [](double ms) { return std::round(ms * 100) / 100; };
    std::fprintf(stderr, "  %d balls: %.2f ms moving, %.2f ms settled (pile still after %d more steps)\n", count,
                 Median(moving), Median(settled), settleSteps + 1);
    return {{"balls", count}, {"moving", round2(Median(moving))}, {"settled", round2(Median(settled))}};
}

}  // namespace

int RunBenchPhysics(const std::vector<std::string>& args) {
    ToolArgs parsed;
    std::string problem;
    if (!ParseToolArgs(args, {"--balls"}, {}, parsed, problem)) return ToolUsageError("bench physics", problem, kBenchUsage);
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

    std::fputs("bench physics: timing one 1/60 s step (five ticks) on this machine\n", stderr);
    Json results = Json::array();
    for (int count : counts) results.push_back(Measure(count));
    PrintJson({{"physics", results}});
    return ToolOk;
}
