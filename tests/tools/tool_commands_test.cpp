// Runs the built velloran-tool the way a user or script would: the inspect commands, and what
// every command does with bad arguments and odd file names.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>

#include "tests/support/files.h"
#include "tests/support/tga_bytes.h"
#include "tests/support/tool_run.h"
#include "tests/support/wav_file.h"
#include "tools/mediagen/max_writer.h"

using mediagen::MaxObject;
using nlohmann::json;

namespace {

const std::string kTool = VELLORAN_GAME_DIR "/velloran-tool ";

json Inspect(const std::string& what, const std::string& file, int exitCode) {
    const ToolRun run = Shell(kTool + "inspect " + what + " " + Quoted(file));
    EXPECT_EQ(run.exitCode, exitCode) << run.out;
    return json::parse(run.out, nullptr, false);
}

TEST(InspectTool, ReportsTexturesCubeMapsAndModels) {
    TempDir dir;
    WriteBytes(dir.File("wood.tga"), TgaBytes({.width = 256, .height = 128, .depth = 24}));
    for (const char* face : {"posx", "negx", "posy", "negy", "posz", "negz"})
        WriteBytes(dir.File(std::string("sky_") + face + ".tga"), TgaBytes({.width = 8, .height = 8, .depth = 32}));
    EXPECT_EQ(Inspect("texture", dir.File("wood.tga"), 0),
              json::parse(R"({"ok": true, "width": 256, "height": 128, "depth": 24, "bytes": 98304})"));
    EXPECT_EQ(Inspect("texture", dir.File("sky_posx.tga"), 0),
              json::parse(R"({"ok": true, "width": 8, "height": 8, "depth": 32, "bytes": 1536, "faces": 6})"));

    const MaxObject crate{.name = "Crate",
                          .vertices = {{-1, 0, 0}, {3, 0, 0}, {3, 2, 0}, {-1, 2, 0}},
                          .faces = {{0, 1, 2}, {0, 2, 3}},
                          .texCoords = {{0, 0}, {1, 0}, {1, 1}, {0, 1}}};
    const MaxObject wedge{.name = "Wedge", .vertices = {{0, 0, -2}, {1, 0, 0.5f}, {0, 1, 0}}, .faces = {{0, 1, 2}}};
    WriteBytes(dir.File("crate.3DS"), mediagen::WriteMaxFile({crate, mediagen::MaxLight("Sun", {9, 9, 9}), wedge}));
    WriteBytes(dir.File("empty.3DS"), mediagen::WriteMaxFile({}));
    EXPECT_EQ(Inspect("model", dir.File("crate.3DS"), 0), json::parse(R"({"ok": true, "subModels": [
        {"vertices": 4, "triangles": 2, "texCoords": 4, "normals": 4},
        {"vertices": 3, "triangles": 1, "texCoords": 3, "normals": 3}],
        "bounds": {"min": [-1, 0, -2], "max": [3, 2, 0.5]}})"));
    EXPECT_EQ(Inspect("model", dir.File("empty.3DS"), 0),
              json::parse(R"({"ok": true, "subModels": [], "bounds": {"min": [0, 0, 0], "max": [0, 0, 0]}})"));
}

TEST(InspectTool, BadFilesAreReportedAsJson) {
    TempDir dir;
    WriteBytes(dir.File("odd.tga"), TgaBytes({.width = 100, .height = 64}));
    WriteBytes(dir.File("sky_posx.tga"), TgaBytes({}));  // the other five faces are missing
    const MaxObject broken{.name = "Broken", .vertices = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, .faces = {{0, 1, 7}}};
    WriteBytes(dir.File("broken.3DS"), mediagen::WriteMaxFile({broken}));

    EXPECT_EQ(Inspect("texture", dir.File("odd.tga"), 1),
              json({{"ok", false}, {"error", dir.File("odd.tga") + ": width 100 is not a power of two"}}));
    EXPECT_EQ(Inspect("texture", dir.File("sky_posx.tga"), 1)["error"], dir.File("sky_negx.tga") + ": cannot open file");
    EXPECT_EQ(Inspect("model", dir.File("broken.3DS"), 1),
              json({{"ok", false},
                    {"error", dir.File("broken.3DS") + ": object 1: face 0 uses vertex 7 but the mesh has 3 vertices"}}));
    EXPECT_EQ(Inspect("model", dir.File("missing.3DS"), 1)["error"], dir.File("missing.3DS") + ": cannot open file");
}

TEST(InspectTool, ReportsSoundsWithTheGamesReader) {
    TempDir dir;
    WriteBytes(dir.File("tone.wav"), ToneWav(2, 11025, 0.5, 0.5));
    std::vector<uint8_t> cut = ToneWav(1, 8000, 0.1, 0.5);
    cut.resize(cut.size() - 100);  // the data chunk still states its whole size
    WriteBytes(dir.File("cut.wav"), cut);
    WriteBytes(dir.File("text.wav"), std::vector<uint8_t>{'h', 'e', 'l', 'l', 'o'});

    EXPECT_EQ(Inspect("sound", dir.File("tone.wav"), 0),
              json::parse(R"({"ok": true, "channels": 2, "sampleRate": 11025, "bitsPerSample": 16, "dataSize": 22048})"));
    EXPECT_EQ(Inspect("sound", dir.File("cut.wav"), 0)["dataSize"], 1600);
    EXPECT_EQ(Inspect("sound", dir.File("text.wav"), 1)["ok"], false);
    EXPECT_EQ(Inspect("sound", dir.File("none.wav"), 1)["error"], dir.File("none.wav") + ": cannot open file");
}

TEST(EveryToolCommand, AUsageErrorPrintsNothingOnStandardOutputAndHelpPrintsTheUsage) {
    struct Command {
        std::string name, usage;
        std::vector<std::string> badArguments;
    };
    for (const Command& c : std::vector<Command>{
             {"inspect texture", "FILE", {"", "a.tga b.tga", "--frobnicate a.tga"}},
             {"inspect model", "FILE", {"", "a.3DS b.3DS", "--frobnicate a.3DS"}},
             {"inspect sound", "FILE", {"", "a.wav b.wav", "--frobnicate a.wav"}},
             {"lint", "LEVEL [--root DIR]", {"", "a b", "a --root", "--frobnicate a", "a --root x --root y"}},
             {"simulate", "LEVEL [--root DIR]", {"", "a --frames many", "a --seed 1 --seed 2"}},
             {"bench soak", "LEVEL [--root DIR]", {"", "a b", "a --seconds ever"}}}) {
        for (const std::string& arguments : c.badArguments) {
            const ToolRun run = Shell(kTool + c.name + " " + arguments + " 2>/dev/null");
            EXPECT_EQ(run.exitCode, 2) << c.name << " " << arguments;
            EXPECT_EQ(run.out, "") << c.name << " " << arguments;
        }
        const ToolRun help = Shell(kTool + c.name + " --help");
        EXPECT_EQ(help.exitCode, 0) << c.name;
        EXPECT_NE(help.out.find("usage: velloran-tool " + c.name + " " + c.usage), std::string::npos) << help.out;
    }
}

// A file name is whatever bytes the shell passes; every command still answers in valid JSON.
TEST(EveryToolCommand, ReportsAFileNameThatIsNotUtf8AsValidJson) {
    const std::string name = "'no such \xff\xfe file'";
    for (const std::string command : {"inspect texture", "inspect model", "inspect sound", "bench level", "bench soak", "simulate", "lint"}) {
        const ToolRun run = Shell(kTool + command + " \"$(printf " + name + ")\" 2>/dev/null");
        EXPECT_EQ(run.exitCode, 1) << command;
        const json result = json::parse(run.out, nullptr, false);
        ASSERT_FALSE(result.is_discarded()) << command << ": " << run.out;
        EXPECT_NE(result.dump().find("no such \ufffd\ufffd file"), std::string::npos) << command << ": " << run.out;
    }
}

// The first seconds of the soak: the spawner chain multiplies balls, and nothing goes wrong.
TEST(BenchSoak, TheSpawnerChainMultipliesBallsWithNothingSwitchedOff) {
    const ToolRun run =
        Shell(kTool + "bench soak Media/benchmarks/soak.lvl --seconds 10 --root " + VELLORAN_GAME_DIR " 2>/dev/null");
    ASSERT_EQ(run.exitCode, 0) << run.out;
    const json report = json::parse(run.out);
    EXPECT_EQ(report["frames"], 600);
    EXPECT_GT(report["peakLiveBalls"].get<int>(), 200);
    EXPECT_EQ(report["switchedOff"], 0);
    EXPECT_EQ(report["nonFiniteValues"], 0);
}

// The yardstick runs the very scene ours does, wheel and door included, and both keep the balls.
TEST(BenchPhysics, TheBaselineTakesTurnsOnTheSameSceneWithAWheelAndADoor) {
    const ToolRun run = Shell(kTool + "bench physics --balls 60 --baseline --joints 2>/dev/null");
    ASSERT_EQ(run.exitCode, 0) << run.out;
    const json row = json::parse(run.out)["physics"].at(0);
    EXPECT_EQ(row["balls"], 60);
    EXPECT_EQ(row["joints"], true);
    for (const char* key : {"moving", "settled", "baselineMoving", "baselineSettled", "ratioMoving", "ratioSettled"})
        EXPECT_GT(row[key].get<double>(), 0.0) << key;
    EXPECT_GT(row["settleSteps"].get<int>(), 0);
    for (const char* key : {"overlap", "baselineOverlap"}) EXPECT_LT(row[key].get<double>(), 0.1) << key;
    const json plain = json::parse(Shell(kTool + "bench physics --balls 60 2>/dev/null").out)["physics"].at(0);
    EXPECT_EQ(plain["joints"], false);
    EXPECT_FALSE(plain.contains("ratioMoving"));
}

}  // namespace
