// velloran-tool inspect sound FILE: reads a WAV file with the game's own reader and reports
// what the sound system would get from it.
#include <cstdio>
#include <string>
#include <vector>

#include "formats/wav_reader.h"
#include "tools/tool/commands.h"
#include "tools/tool/json_output.h"
#include "tools/tool/tool_args.h"

namespace {

const char* kInspectSoundUsage =
    "usage: velloran-tool inspect sound FILE\n"
    "\n"
    "Reads FILE with the game's WAV reader and prints one JSON object:\n"
    "  {\"ok\": true, \"channels\": C, \"sampleRate\": R, \"bitsPerSample\": B, \"dataSize\": D}\n"
    "D is the data chunk's stated size in bytes. The game places only mono sounds in the world\n"
    "(the contact sounds); music and the other plain sounds may be stereo.\n"
    "On failure prints {\"ok\": false, \"error\": \"...\"} and exits 1.\n";

}  // namespace

int RunInspectSound(const std::vector<std::string>& args) {
    ToolArgs parsed;
    std::string problem;
    if (!ParseToolArgs(args, {}, {}, parsed, problem))
        return ToolUsageError("inspect sound", problem, kInspectSoundUsage);
    if (parsed.help) {
        std::fputs(kInspectSoundUsage, stdout);
        return ToolOk;
    }
    if (parsed.positional.size() != 1)
        return ToolUsageError("inspect sound", parsed.positional.empty() ? "no FILE given" : "expected exactly one FILE",
                              kInspectSoundUsage);

    WavData wav;
    std::string error;
    if (!ReadWav(parsed.positional[0], wav, error)) {
        PrintJson({{"ok", false}, {"error", error}});
        return ToolBadInput;
    }
    PrintJson({{"ok", true},
               {"channels", wav.channels},
               {"sampleRate", wav.sampleRate},
               {"bitsPerSample", wav.bitsPerSample},
               {"dataSize", wav.data.size()}});
    return ToolOk;
}
