#include "tools/render/render_bench.h"

#include <GL/glew.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>

#include "core/random.h"
#include "graphics/graphics_system.h"
#include "graphics/window.h"
#include "level/headless_game.h"
#include "objects/game_object.h"
#include "objects/particle_system.h"
#include "resources/resource_manager.h"
#include "tools/render/loaded_modules.h"
#include "tools/tool/commands.h"
#include "tools/tool/json_output.h"
#include "tools/tool/tool_args.h"
#include "view/level_renderer.h"

namespace {

const char* kBenchRenderUsage =
    "usage: velloran-tool bench render LEVEL [--root DIR] [--particles N]\n"
    "\n"
    "Plays and draws LEVEL from DIR (default: the current directory, which must hold Media/) in\n"
    "an 800 x 600 window (offscreen with no display) for 600 frames with no input, and prints\n"
    "{\"level\": NAME, \"msPerFrame\": MS, \"particles\": N}: the median time of a whole frame,\n"
    "logic, physics and drawing, waiting for the drawing to finish. With --particles, N trail\n"
    "particles (at most 5000) are kept alive around the current ball.\n";

constexpr int kFrames = 600;
constexpr int kMaxParticles = 5000;

// Tops the pool up to `count` live trail puffs scattered around the ball, as a long trail
// would leave them.
void KeepParticles(Level& level, Random& random, int count) {
    ParticleSystem* particles = level.GetParticles();
    GameObject* ball = level.GetCurrentBall();
    if (!particles || !ball) return;
    const Vector3 at = ball->GetPosition();
    for (int live = particles->LiveCount(); live < count; ++live) {
        const float dx = float(random.Next()) / float(Random::kMax) * 40 - 20;
        const float dy = float(random.Next()) / float(Random::kMax) * 40 - 20;
        particles->Emit(at.x + dx, at.y + dy, 0, 1.5f, 3.0f, 0.5f, 0.5f, 0.8f, 0, 0, 0);
    }
}

}  // namespace

int RunRenderBench(const std::vector<std::string>& args) {
    ToolArgs parsed;
    std::string problem;
    if (!ParseToolArgs(args, {"--root", "--particles"}, {}, parsed, problem))
        return ToolUsageError("bench render", problem, kBenchRenderUsage);
    if (parsed.help) {
        std::fputs(kBenchRenderUsage, stdout);
        return ToolOk;
    }
    if (parsed.positional.size() != 1)
        return ToolUsageError("bench render", "give exactly one LEVEL", kBenchRenderUsage);
    int particles = 0;
    if (parsed.Has("--particles") &&
        (!ReadCount(parsed.Value("--particles"), particles) || particles > kMaxParticles))
        return ToolUsageError("bench render", "--particles needs a whole number from 0 to 5000", kBenchRenderUsage);
    if (parsed.Has("--root") && chdir(parsed.Value("--root").c_str()) != 0)
        return ToolUsageError("bench render", "cannot change into " + parsed.Value("--root"), kBenchRenderUsage);

    Window window;
    ResourceManager pictures(".");
    GraphicsSystem graphics;
    LevelRenderer renderer(graphics, pictures);
    HeadlessGame game(1, ".", &renderer);
    const std::string& path = parsed.positional[0];
    std::fprintf(stderr, "bench render: loading %s\n", path.c_str());
    if (!game.Load(path)) {
        PrintJson({{"ok", false}, {"level", path}, {"errors", game.errors}});
        return ToolBadInput;
    }
    const bool started = window.Create("Velloran", 800, 600) && graphics.Init(&window, pictures);
    KeepLoadedModulesUntilExit();
    if (!started) {
        PrintJson({{"ok", false}, {"level", path}, {"error", "cannot open a window with an OpenGL context"}});
        return ToolBadInput;
    }

    std::fprintf(stderr, "bench render: playing and drawing %d frames with %d particles\n", kFrames, particles);
    Random scatter(7);
    std::vector<double> times;
    Level& level = game.GetLevel();
    for (int i = 0; i < kFrames && !level.IsFinished(); ++i) {
        KeepParticles(level, scatter, particles);
        const auto start = std::chrono::steady_clock::now();
        graphics.BeginFrame();
        game.PlayFrame(0);
        glFinish();  // the drawing is done when the pixels are
        graphics.EndFrame();
        times.push_back(std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
    }
    std::nth_element(times.begin(), times.begin() + times.size() / 2, times.end());
    const double median = times.empty() ? 0 : times[times.size() / 2];
    std::fprintf(stderr, "bench render: median frame %.2f ms over %zu frames\n", median, times.size());
    PrintJson({{"level", level.GetName()}, {"msPerFrame", std::round(median * 100) / 100}, {"particles", particles}});
    return ToolOk;
}
