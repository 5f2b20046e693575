// Runs the built velloran-tool the way a user or script would.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <nlohmann/json.hpp>
#include <string>

#include "tests/support/tga_bytes.h"
#include "tests/support/tool_run.h"

namespace {

ToolRun Tool(const std::string& arguments) { return Shell(std::string(VELLORAN_GAME_DIR "/velloran-tool inspect texture ") + arguments); }


TEST(InspectTextureTool, ReportsATextureAndACubeMap) {
    TempDir dir;
    WriteBytes(dir.File("wood.tga"), TgaBytes({.width = 256, .height = 128, .depth = 24}));
    for (const char* face : {"posx", "negx", "posy", "negy", "posz", "negz"}) {
        WriteBytes(dir.File(std::string("sky_") + face + ".tga"), TgaBytes({.width = 8, .height = 8, .depth = 32}));
    }

    ToolRun flat = Tool(Quoted(dir.File("wood.tga")));
    ASSERT_EQ(flat.exitCode, 0) << flat.out;
    const auto texture = nlohmann::json::parse(flat.out);
    EXPECT_EQ(texture, nlohmann::json::parse(R"({"ok": true, "width": 256, "height": 128, "depth": 24,
                                                 "bytes": 98304})"));

    ToolRun cube = Tool(Quoted(dir.File("sky_posx.tga")));
    ASSERT_EQ(cube.exitCode, 0) << cube.out;
    EXPECT_EQ(nlohmann::json::parse(cube.out), nlohmann::json::parse(R"({"ok": true, "width": 8, "height": 8,
                                                 "depth": 32, "bytes": 1536, "faces": 6})"));
}

TEST(InspectTextureTool, BadFilesAreReportedAsJson) {
    TempDir dir;
    WriteBytes(dir.File("odd.tga"), TgaBytes({.width = 100, .height = 64}));
    WriteBytes(dir.File("sky_posx.tga"), TgaBytes({}));  // the other five faces are missing

    ToolRun odd = Tool(Quoted(dir.File("odd.tga")));
    EXPECT_EQ(odd.exitCode, 1);
    const auto result = nlohmann::json::parse(odd.out);
    EXPECT_EQ(result["ok"], false);
    EXPECT_EQ(result["error"], dir.File("odd.tga") + ": width 100 is not a power of two");

    ToolRun cube = Tool(Quoted(dir.File("sky_posx.tga")));
    EXPECT_EQ(cube.exitCode, 1);
    EXPECT_EQ(nlohmann::json::parse(cube.out)["error"], dir.File("sky_negx.tga") + ": cannot open file");
}

// A file name is whatever bytes the shell passes; every command still answers in valid JSON.
TEST(EveryToolCommand, ReportsAFileNameThatIsNotUtf8AsValidJson) {
    const std::string tool = VELLORAN_GAME_DIR "/velloran-tool ";
    const std::string name = "'no such \xff\xfe file'";
    for (const std::string command : {"inspect texture", "inspect model", "bench level", "simulate", "lint"}) {
        ToolRun run = Shell(tool + command + " \"$(printf " + name + ")\" 2>/dev/null");
        EXPECT_EQ(run.exitCode, 1) << command;
        const auto result = nlohmann::json::parse(run.out, nullptr, false);
        ASSERT_FALSE(result.is_discarded()) << command << ": " << run.out;
        EXPECT_NE(result.dump().find("no such \ufffd\ufffd file"), std::string::npos) << command << ": " << run.out;
    }
}

TEST(InspectTextureTool, UsageErrorsPrintNothingOnStandardOutput) {
    for (const char* arguments : {"", "a.tga b.tga", "--frobnicate a.tga"}) {
        SCOPED_TRACE(arguments);
        ToolRun run = Tool(std::string(arguments) + " 2>/dev/null");
        EXPECT_EQ(run.exitCode, 2);
        EXPECT_EQ(run.out, "");
    }
    ToolRun help = Tool("--help");
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_NE(help.out.find("usage: velloran-tool inspect texture FILE"), std::string::npos);
}

}  // namespace
