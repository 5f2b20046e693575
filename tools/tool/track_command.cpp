// velloran-tool track IN.track OUT.3DS: builds a level designer's own track outline into the
// model the game collides with and draws, by the same code that builds the shipped tracks.
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "tools/mediagen/max_writer.h"
#include "tools/mediagen/media_error.h"
#include "tools/mediagen/media_file.h"
#include "tools/mediagen/track_source.h"
#include "tools/tool/commands.h"
#include "tools/tool/json_output.h"
#include "tools/tool/tool_args.h"

namespace {

const char* kTrackUsage =
    "usage: velloran-tool track IN.track OUT.3DS\n"
    "\n"
    "Reads the track outline IN.track (the format of assets/tracks, see docs/levels.md) and\n"
    "writes OUT.3DS: one object, named after IN, that a level's Track uses as both its\n"
    "collisionModel and its renderModel, textured for the track texture. Prints\n"
    "  {\"ok\": true, \"out\": \"...\", \"object\": \"...\", \"pieces\": P, \"vertices\": V,\n"
    "   \"triangles\": T, \"bounds\": {\"min\": [x, y, z], \"max\": [x, y, z]}}\n"
    "A bad outline (with its file and line: a piece thinner than the thinnest wall a ball\n"
    "cannot pass, a crossing outline, too few points, an unknown key, ...) or a file that\n"
    "cannot be read or written prints {\"ok\": false, \"error\": \"...\"} and exits 1.\n";

Json Bounds(const mediagen::MaxObject& object) {
    BoundsJson bounds;
    for (const Vector3& v : object.vertices) bounds.Add(v);
    return bounds.ToJson();
}

}  // namespace

int RunTrack(const std::vector<std::string>& args) {
    ToolArgs parsed;
    std::string problem;
    if (!ParseToolArgs(args, {}, {}, parsed, problem)) return ToolUsageError("track", problem, kTrackUsage);
    if (parsed.help) {
        std::fputs(kTrackUsage, stdout);
        return ToolOk;
    }
    if (parsed.positional.size() != 2) return ToolUsageError("track", "give IN.track and OUT.3DS", kTrackUsage);
    const std::filesystem::path in = parsed.positional[0], out = parsed.positional[1];
    try {
        const mediagen::TrackSource source = mediagen::ReadTrack(in);
        const mediagen::MaxObject object = mediagen::BuildTrack(source, in.stem().string());
        const std::vector<uint8_t> bytes = mediagen::WriteMaxFile({object});
        mediagen::WriteMediaFile(out, bytes.data(), bytes.size());
        PrintJson({{"ok", true},
                   {"out", out.string()},
                   {"object", object.name},
                   {"pieces", source.pieces.size()},
                   {"vertices", object.vertices.size()},
                   {"triangles", object.faces.size()},
                   {"bounds", Bounds(object)}});
        return ToolOk;
    } catch (const mediagen::MediaError& error) {
        PrintJson({{"ok", false}, {"error", error.what()}});
        return ToolBadInput;
    }
}
