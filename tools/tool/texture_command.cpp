// velloran-tool inspect texture FILE: loads a texture the way the game does, without a
// display, and reports what the game would see.
#include <cstdio>
#include <string>
#include <vector>

#include "formats/tga_reader.h"
#include "resources/image_resource.h"
#include "tools/tool/commands.h"
#include "tools/tool/json_output.h"
#include "tools/tool/tool_args.h"

namespace {

const char* kInspectUsage =
    "usage: velloran-tool inspect texture FILE\n"
    "\n"
    "Reads FILE with the game's TGA reader and prints one JSON object:\n"
    "  {\"ok\": true, \"width\": W, \"height\": H, \"depth\": 24|32, \"bytes\": B}\n"
    "A FILE ending in _posx.tga is read as a cube map: all six faces, and \"faces\": 6.\n"
    "On failure prints {\"ok\": false, \"error\": \"...\"} and exits 1.\n";

int UsageError(const std::string& problem) { return ToolUsageError("inspect texture", problem, kInspectUsage); }

bool EndsWith(const std::string& text, const std::string& suffix) {
    return text.size() >= suffix.size() && text.compare(text.size() - suffix.size(), suffix.size(), suffix) == 0;
}

int Fail(const std::string& error) {
    PrintJson({{"ok", false}, {"error", error}});
    return ToolBadInput;
}

int Report(ImageResource& texture, const std::string& file, bool cube) {
    const int32_t bytes = texture.Load(file);
    if (bytes < 0) return Fail(texture.lastError);
    // The textures keep no pixels, so the depth comes from reading the named file itself.
    TgaImage image;
    std::string error;
    if (!ReadTga(file, image, error)) return Fail(error);

    Json result = {{"ok", true},
                                     {"width", texture.width},
                                     {"height", texture.height},
                                     {"depth", image.depth},
                                     {"bytes", bytes}};
    if (cube) result["faces"] = 6;
    PrintJson(result);
    return ToolOk;
}

}  // namespace

int RunInspectTexture(const std::vector<std::string>& args) {
    ToolArgs parsed;
    std::string problem;
    if (!ParseToolArgs(args, {}, {}, parsed, problem)) return UsageError(problem);
    if (parsed.help) {
        std::fputs(kInspectUsage, stdout);
        return ToolOk;
    }
    const std::vector<std::string>& files = parsed.positional;
    if (files.size() != 1) return UsageError(files.empty() ? "no FILE given" : "expected exactly one FILE");

    const std::string& file = files[0];
    if (EndsWith(file, "_posx.tga")) {
        ImageResource texture(file, file, nullptr, true);
        return Report(texture, file, true);
    }
    ImageResource texture(file, file, nullptr, false);
    return Report(texture, file, false);
}
