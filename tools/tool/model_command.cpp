// velloran-tool inspect model FILE: loads a 3DS model the way the game does, without a display,
// and reports what the game would see.
#include <cstdio>
#include <string>
#include <vector>

#include "formats/max_model.h"
#include "tools/tool/commands.h"
#include "tools/tool/json_output.h"
#include "tools/tool/tool_args.h"

namespace {

const char* kInspectUsage =
    "usage: velloran-tool inspect model FILE\n"
    "\n"
    "Reads the 3DS file FILE with the game's model loader and prints one JSON object:\n"
    "  {\"ok\": true, \"subModels\": [{\"vertices\": V, \"triangles\": T, \"texCoords\": C,\n"
    "   \"normals\": N}, ...], \"bounds\": {\"min\": [x, y, z], \"max\": [x, y, z]}}\n"
    "The bounds cover every vertex of every sub-model, and are zeros when there are none.\n"
    "On failure prints {\"ok\": false, \"error\": \"...\"} and exits 1.\n";

int UsageError(const std::string& problem) { return ToolUsageError("inspect model", problem, kInspectUsage); }

// File names need not be UTF-8; the JSON must be.
Json Bounds(const Model& model) {
    BoundsJson bounds;
    for (const SubModel& sub : model.subModels)
        for (const Vector3& v : sub.vertices) bounds.Add(v);
    return bounds.ToJson();
}

}  // namespace

int RunInspectModel(const std::vector<std::string>& args) {
    ToolArgs parsed;
    std::string problem;
    if (!ParseToolArgs(args, {}, {}, parsed, problem)) return UsageError(problem);
    if (parsed.help) {
        std::fputs(kInspectUsage, stdout);
        return ToolOk;
    }
    const std::vector<std::string>& files = parsed.positional;
    if (files.size() != 1) return UsageError(files.empty() ? "no FILE given" : "expected exactly one FILE");

    MaxModel model;
    if (!model.Load(files[0])) {
        PrintJson({{"ok", false}, {"error", model.LoadError()}});
        return ToolBadInput;
    }
    Json subModels = Json::array();
    for (const SubModel& sub : model.subModels) {
        subModels.push_back({{"vertices", sub.vertices.size()},
                             {"triangles", sub.triangles.size()},
                             {"texCoords", sub.texCoords.size()},
                             {"normals", sub.normals.size()}});
    }
    PrintJson({{"ok", true}, {"subModels", subModels}, {"bounds", Bounds(model)}});
    return ToolOk;
}
