#include "tools/render/render_options.h"

#include <cstdio>
#include <filesystem>

#include "core/file_read.h"
#include "tools/tool/commands.h"
#include "tools/tool/json_output.h"
#include "tools/tool/tool_args.h"

const char* const kRenderUsage =
    "usage: velloran-tool render LEVEL [--root DIR] [--frames N] [--input FILE] [--seed S] [--intro]\n"
    "                              [--out FILE.png]\n"
    "\n"
    "Plays LEVEL as `velloran-tool simulate` does (the same arguments, input script and seed give\n"
    "the same game) for N frames (default 1), drawing every frame as the game draws it, and\n"
    "writes the last frame played as a PNG (default: render.png in the current directory). The\n"
    "level may end first: its last frame is then the picture. With no X or Wayland display the\n"
    "frames are drawn offscreen, through EGL.\n"
    "\n"
    "Prints one JSON object: the level, the frames played, the PNG's path and size, the camera,\n"
    "the scene's tilt in degrees and every object with its place in the picture (\"screen\",\n"
    "pixels from the top-left corner; null when it is outside the picture or behind the eye).\n";

namespace {

int RenderUsageError(const std::string& problem) { return ToolUsageError("render", problem, kRenderUsage); }

// A script that cannot be read is bad input, reported like a level that cannot be.
bool ReadScript(const std::string& name, InputScript& script) {
    std::vector<uint8_t> bytes;
    std::string reason;
    if (!ReadWholeFile(name, InputScript::kMaxBytes, bytes, reason)) {
        PrintJson({{"ok", false}, {"error", name + ": " + reason}});
        return false;
    }
    if (!script.Parse(std::string(bytes.begin(), bytes.end()), reason)) {
        PrintJson({{"ok", false}, {"error", name + ": " + reason}});
        return false;
    }
    return true;
}

}  // namespace

std::optional<int> ReadRenderOptions(const std::vector<std::string>& args, RenderOptions& options) {
    ToolArgs parsed;
    std::string problem;
    if (!ParseToolArgs(args, {"--root", "--frames", "--input", "--seed", "--out"}, {"--intro"}, parsed, problem))
        return RenderUsageError(problem);
    if (parsed.help) {
        std::fputs(kRenderUsage, stdout);
        return ToolOk;
    }
    if (parsed.positional.size() != 1) return RenderUsageError("give exactly one LEVEL");
    options.level = parsed.positional[0];
    // Frame 0 is drawn by playing one frame: there is no picture of none.
    if (parsed.Has("--frames") && (!ReadCount(parsed.Value("--frames"), options.frames) || options.frames < 1))
        return RenderUsageError("--frames needs a whole number of at least 1");
    if (parsed.Has("--seed")) {
        int seed = 0;
        if (!ReadCount(parsed.Value("--seed"), seed)) return RenderUsageError("--seed needs a whole number of at least 0");
        options.seed = uint32_t(seed);
    }
    options.intro = parsed.Has("--intro");
    if (parsed.Has("--root")) options.root = parsed.Value("--root");
    const std::string out = parsed.Has("--out") ? parsed.Value("--out") : "render.png";
    if (out.empty()) return RenderUsageError("--out needs a file name");
    std::error_code ec;
    const std::filesystem::path absolute = std::filesystem::absolute(out, ec);
    options.out = ec ? out : absolute.lexically_normal().string();
    if (parsed.Has("--input") && !ReadScript(parsed.Value("--input"), options.script)) return ToolBadInput;
    return std::nullopt;
}
