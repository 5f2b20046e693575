// velloran-render: the drawing half of `velloran-tool render`, which runs it. It links the
// window and GL libraries that velloran-tool must stay free of.
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "graphics/graphics_system.h"
#include "graphics/window.h"
#include "level/headless_game.h"
#include "objects/game_object.h"
#include "resources/resource_manager.h"
#include "tools/render/capturing_view.h"
#include "tools/render/frame_picture.h"
#include "tools/render/render_bench.h"
#include "tools/render/loaded_modules.h"
#include "tools/render/png_file.h"
#include "tools/render/render_options.h"
#include "tools/tool/commands.h"
#include "tools/tool/json_output.h"
#include "tools/tool/tool_args.h"
#include "view/level_renderer.h"

namespace {

// The game's window size: the picture is the frame a player would see.
constexpr int kWidth = 800;
constexpr int kHeight = 600;

bool Unset(const char* variable) {
    const char* value = std::getenv(variable);
    return !value || !*value;
}

// With no display server to draw for, SDL's offscreen driver makes the GL context through
// EGL (Mesa). A driver the caller chose is kept.
void UseOffscreenDriverWithoutDisplay() {
    if (Unset("DISPLAY") && Unset("WAYLAND_DISPLAY")) setenv("SDL_VIDEODRIVER", "offscreen", 0);
}

Json Vec(const Vector3& v) { return Json::array({v.x, v.y, v.z}); }

Json Objects(Level& level, const CapturingView& view) {
    Json list = Json::array();
    for (const auto& object : level.GetObjects()) {
        const std::optional<PicturePoint> screen = view.Project(object->GetPosition());
        list.push_back({{"name", object->GetName()},
                        {"kind", object->KindName()},
                        {"position", Vec(object->GetPosition())},
                        {"screen", screen ? Json::array({screen->x, screen->y}) : Json(nullptr)}});
    }
    return list;
}

// Plays and draws frames as the engine does (BeginFrame, the level's frame, EndFrame) and
// keeps the last one played: frame N, or the one in which the level ended.
FramePicture PlayAndDraw(HeadlessGame& game, GraphicsSystem& graphics, const RenderOptions& options) {
    Level& level = game.GetLevel();
    FramePicture picture;
    bool flying = options.intro;
    while (game.FrameNumber() < options.frames && !level.IsFinished()) {
        const int frame = game.FrameNumber();
        const uint32_t actions = options.script.ActionsAt(frame);
        graphics.BeginFrame();
        if (flying)
            flying = game.FlyOverFrame(actions, float(frame) * HeadlessGame::kFrameTime);
        else
            game.PlayFrame(actions);
        if (game.FrameNumber() >= options.frames || level.IsFinished()) picture = ReadBackBuffer();
        graphics.EndFrame();
    }
    return picture;
}

int Failure(const std::string& level, const std::string& error) {
    PrintJson({{"ok", false}, {"level", level}, {"error", error}});
    return ToolBadInput;
}

int Render(const RenderOptions& options) {
    // Declared in the order they must go away in reverse: the graphics system unloads its
    // textures from the manager and drops its context while the window is still there.
    Window window;
    ResourceManager pictures(".");
    GraphicsSystem graphics;
    LevelRenderer renderer(graphics, pictures);
    CapturingView view(renderer);
    HeadlessGame game(options.seed, ".", &view);

    // The level is checked before any window is opened: a bad level needs no display.
    if (!game.Load(options.level)) {
        PrintJson({{"ok", false}, {"level", options.level}, {"errors", game.errors}});
        return ToolBadInput;
    }
    const bool opened = window.Create("Velloran", kWidth, kHeight);
    const bool started = opened && graphics.Init(&window, pictures);
    KeepLoadedModulesUntilExit();
    if (!opened) return Failure(options.level, "cannot open a window to draw in (see standard error)");
    if (!started)
        return Failure(options.level,
                       "cannot start the drawing: no OpenGL context, or no \"font\" texture in Media/ (see standard error)");

    const FramePicture picture = PlayAndDraw(game, graphics, options);
    if (picture.width != kWidth || picture.height != kHeight)
        std::fprintf(stderr, "velloran-render: the window's drawing area is %d x %d, not %d x %d\n", picture.width,
                     picture.height, kWidth, kHeight);
    std::string error;
    if (!WritePngFile(options.out, picture.width, picture.height, picture.rgb, error))
        return Failure(options.level, error);

    Level& level = game.GetLevel();
    const PositionLookAtCamera& camera = level.GetCamera();
    PrintJson({{"ok", true},
               {"level", level.GetName()},
               {"frames", game.FrameNumber()},
               {"out", options.out},
               {"size", Json::array({picture.width, picture.height})},
               {"camera", {{"position", Vec(camera.GetPosition())}, {"lookAt", Vec(camera.LookAt())}}},
               {"tilt", view.SceneTilt()},
               {"objects", Objects(level, view)},
               {"errors", game.errors}});
    return ToolOk;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc > 1 && std::string(argv[1]) == "bench") {
        UseOffscreenDriverWithoutDisplay();
        return RunRenderBench({argv + 2, argv + argc});
    }
    RenderOptions options;
    if (const std::optional<int> exit = ReadRenderOptions({argv + 1, argv + argc}, options)) return *exit;
    if (!options.root.empty() && chdir(options.root.c_str()) != 0)
        return ToolUsageError("render", "cannot change into " + options.root, kRenderUsage);
    UseOffscreenDriverWithoutDisplay();
    return Render(options);
}
