// velloran-tool: the command-line companion of the game. JSON on standard output,
// messages on standard error; exit 0 on success, 1 on bad input, 2 on a usage error.
#include <cstdio>
#include <string>
#include <vector>

#include "tools/tool/commands.h"

namespace {

const char* kUsage =
    "usage: velloran-tool COMMAND [ARGS]\n"
    "\n"
    "commands:\n"
    "  inspect texture FILE   check a TGA texture (or a cube map named by its _posx.tga face)\n"
    "                         with the game's own reader: width, height, depth, bytes\n"
    "  inspect model FILE     check a 3DS model with the game's own loader: the counts of\n"
    "                         each sub-model and the bounds of all vertices\n"
    "  inspect sound FILE     check a WAV sound with the game's own reader: channels, sample\n"
    "                         rate, bits per sample and data size\n"
    "  bench physics          time the physics step with 100 to 2000 balls in a mesh arena\n"
    "  bench level LEVEL [--root DIR]\n"
    "                         frames per second of headless play of LEVEL for 60 game seconds\n"
    "  simulate LEVEL [--root DIR] [--frames N] [--input FILE] [--seed S] [--intro]\n"
    "                         play LEVEL headless at 1/60 s per frame and report what happened\n"
    "  render LEVEL [--root DIR] [--frames N] [--input FILE] [--seed S] [--intro] [--out FILE.png]\n"
    "                         play LEVEL as simulate does, drawn as the game draws it, and write\n"
    "                         the last frame as an 800 x 600 PNG (through velloran-render)\n"
    "  track IN.track OUT.3DS build a track outline into the model a level's Track uses,\n"
    "                         as the shipped tracks are built\n"
    "  lint LEVEL [--root DIR]\n"
    "                         check LEVEL and the models it uses (found under DIR): errors\n"
    "                         and warnings, each with its line\n"
    "\n"
    "  --help                 show this text\n";

int Usage(const char* problem) {
    if (problem) std::fprintf(stderr, "velloran-tool: %s\n\n", problem);
    std::fputs(kUsage, problem ? stderr : stdout);
    return problem ? ToolUsage : ToolOk;
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<std::string> args(argv + 1, argv + argc);
    if (args.empty()) return Usage("no command given");
    if (args[0] == "--help" || args[0] == "-h" || args[0] == "help") return Usage(nullptr);
    if (args[0] == "inspect") {
        if (args.size() < 2) return Usage("inspect needs a kind: texture, model or sound");
        std::vector<std::string> rest(args.begin() + 2, args.end());
        if (args[1] == "texture") return RunInspectTexture(rest);
        if (args[1] == "model") return RunInspectModel(rest);
        if (args[1] == "sound") return RunInspectSound(rest);
        return Usage(("unknown kind to inspect: " + args[1]).c_str());
    }
    if (args[0] == "bench") {
        if (args.size() < 2) return Usage("bench needs a kind: physics, level, soak or render");
        std::vector<std::string> rest(args.begin() + 2, args.end());
        if (args[1] == "physics") return RunBenchPhysics(rest);
        if (args[1] == "level") return RunBenchLevel(rest);
        if (args[1] == "soak") return RunBenchSoak(rest);
        if (args[1] == "render") {
            rest.insert(rest.begin(), "bench");
            return RunRender(rest);
        }
        return Usage(("unknown kind to bench: " + args[1]).c_str());
    }
    if (args[0] == "simulate") return RunSimulate(std::vector<std::string>(args.begin() + 1, args.end()));
    if (args[0] == "render") return RunRender(std::vector<std::string>(args.begin() + 1, args.end()));
    if (args[0] == "track") return RunTrack(std::vector<std::string>(args.begin() + 1, args.end()));
    if (args[0] == "lint") return RunLint(std::vector<std::string>(args.begin() + 1, args.end()));
    return Usage(("unknown command: " + args[0]).c_str());
}
