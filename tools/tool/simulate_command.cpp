// velloran-tool simulate: plays a level headless, exactly as the game would at 60 frames a
// second, and reports what happened.
#include <unistd.h>

#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include "core/file_read.h"
#include "level/fly_over.h"
#include "objects/game_object.h"
#include "objects/goal.h"
#include "objects/teleporters.h"
#include "objects/turbines.h"
#include "tools/tool/commands.h"
#include "tools/tool/json_output.h"
#include "level/headless_game.h"
#include "tools/tool/input_script.h"
#include "tools/tool/tool_args.h"

namespace {

const char* kSimulateUsage =
    "usage: velloran-tool simulate LEVEL [--root DIR] [--frames N] [--input FILE] [--seed S] [--intro]\n"
    "\n"
    "Changes into DIR (default: the current directory, which must hold Media/), loads LEVEL as\n"
    "the game does and plays it with a frame time of exactly 1/60 s from frame 0 until the level\n"
    "is finished or N frames have run (default 11100). --intro plays the 11-second fly-over first\n"
    "(its frames count). --seed sets the random source (default 1).\n"
    "\n"
    "The input FILE holds one directive per line: FRAME ACTIONS or FIRST-LAST ACTIONS (inclusive,\n"
    "frames counted from 0), ACTIONS a comma-separated list of left, right, zoom, next, nudge.\n"
    "An action listed for a frame holds its key down in that frame; '#' starts a comment.\n"
    "A script that cannot be read (a bad line, a file over 1 MiB) gives {\"ok\": false, \"error\": ...}.\n"
    "\n"
    "Prints one JSON object: the outcome, the frames of the win, loss and end, every object's\n"
    "state, and every event, handled message and sound started in order, with its frame (a sound\n"
    "with no file, or a ninth copy while eight still sound, starts nothing, as in the game), and\n"
    "every object whose body the physics switched off (its motion stopped being finite).\n";

Json Vec(const Vector3& v) { return Json::array({v.x, v.y, v.z}); }

Json FrameOrNull(const std::optional<int>& frame) { return frame ? Json(*frame) : Json(nullptr); }

Json Objects(Level& level) {
    Json list = Json::array();
    for (const auto& object : level.GetObjects()) {
        Json entry = {{"name", object->GetName()},
                      {"kind", object->KindName()},
                      {"position", Vec(object->GetPosition())},
                      {"velocity", Vec(object->GetVelocity())}};
        if (auto* goal = dynamic_cast<const Goal*>(object.get())) entry["enabled"] = goal->IsEnabled();
        if (auto* entrance = dynamic_cast<const TeleporterEntrance*>(object.get()))
            entry["enabled"] = entrance->IsEnabled();
        if (auto* turbine = dynamic_cast<const Turbine*>(object.get())) entry["speed"] = turbine->GetSpeed();
        list.push_back(entry);
    }
    return list;
}

Json Records(const std::vector<RecordedEvent>& records, const char* field) {
    Json list = Json::array();
    for (const RecordedEvent& r : records)
        list.push_back({{"frame", r.frame}, {"object", r.object}, {"kind", r.kind}, {field, r.text}});
    return list;
}

Json Sounds(const std::vector<RecordedSound>& sounds) {
    Json list = Json::array();
    for (const RecordedSound& s : sounds)
        list.push_back({{"frame", s.frame},
                        {"name", s.name},
                        {"volume", s.volume},
                        {"position", s.positional ? Vec(s.position) : Json(nullptr)}});
    return list;
}

}  // namespace

int RunSimulate(const std::vector<std::string>& args) {
    ToolArgs parsed;
    std::string problem;
    if (!ParseToolArgs(args, {"--root", "--frames", "--input", "--seed"}, {"--intro"}, parsed, problem))
        return ToolUsageError("simulate", problem, kSimulateUsage);
    if (parsed.help) {
        std::fputs(kSimulateUsage, stdout);
        return ToolOk;
    }
    if (parsed.positional.size() != 1) return ToolUsageError("simulate", "give exactly one LEVEL", kSimulateUsage);
    int frames = 11100;
    uint32_t seed = 1;
    if (parsed.Has("--frames") && !ReadCount(parsed.Value("--frames"), frames))
        return ToolUsageError("simulate", "--frames needs a whole number of at least 0", kSimulateUsage);
    int seedValue = 1;
    if (parsed.Has("--seed")) {
        if (!ReadCount(parsed.Value("--seed"), seedValue))
            return ToolUsageError("simulate", "--seed needs a whole number of at least 0", kSimulateUsage);
        seed = uint32_t(seedValue);
    }
    InputScript script;
    if (parsed.Has("--input")) {
        // A script that cannot be read is bad input, reported like a level that cannot be.
        const std::string& name = parsed.Value("--input");
        std::vector<uint8_t> bytes;
        std::string reason;
        if (!ReadWholeFile(name, InputScript::kMaxBytes, bytes, reason)) {
            PrintJson({{"ok", false}, {"error", name + ": " + reason}});
            return ToolBadInput;
        }
        std::string error;
        if (!script.Parse(std::string(bytes.begin(), bytes.end()), error)) {
            PrintJson({{"ok", false}, {"error", name + ": " + error}});
            return ToolBadInput;
        }
    }
    if (parsed.Has("--root") && chdir(parsed.Value("--root").c_str()) != 0)
        return ToolUsageError("simulate", "cannot change into " + parsed.Value("--root"), kSimulateUsage);

    HeadlessGame game(seed);
    const std::string& path = parsed.positional[0];
    if (!game.Load(path)) {
        PrintJson({{"ok", false}, {"level", path}, {"errors", game.errors}});
        return ToolBadInput;
    }

    Level& level = game.GetLevel();
    std::optional<int> wonAt, lostAt, finishedAt;
    bool flying = parsed.Has("--intro");
    int flyOverStart = 0;
    while (game.FrameNumber() < frames && !level.IsFinished()) {
        const int frame = game.FrameNumber();
        if (flying)
            flying = game.FlyOverFrame(script.ActionsAt(frame), float(frame - flyOverStart) * HeadlessGame::kFrameTime);
        else
            game.PlayFrame(script.ActionsAt(frame));
        if (!wonAt && level.IsWon()) wonAt = frame;
        if (!lostAt && level.IsLost()) lostAt = frame;
        if (!finishedAt && level.IsFinished()) finishedAt = frame;
    }

    PrintJson({{"ok", true},
           {"level", level.GetName()},
           {"frames", game.FrameNumber()},
           {"elapsed", level.GetElapsed()},
           {"won", level.IsWon()},
           {"lost", level.IsLost()},
           {"finished", level.IsFinished()},
           {"wonAtFrame", FrameOrNull(wonAt)},
           {"lostAtFrame", FrameOrNull(lostAt)},
           {"finishedAtFrame", FrameOrNull(finishedAt)},
           {"ballCount", level.GetBallCount()},
           {"collected", level.GetCollected()},
           {"quota", level.GetQuota()},
           {"currentBall", level.GetCurrentBallIndex()},
           {"tilt", level.GetTilt()},
           {"baseGravity", Vec(level.GetBaseGravity())},
           {"objects", Objects(level)},
           {"events", Records(game.events, "event")},
           {"messages", Records(game.messages, "content")},
           {"sounds", Sounds(game.sounds)},
           {"switchedOff", Records(game.switchedOff, "reason")},
           {"errors", game.errors}});
    return ToolOk;
}
