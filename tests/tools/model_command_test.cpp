// Runs the built velloran-tool on 3DS files the way a user or script would.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <nlohmann/json.hpp>
#include <string>

#include "tests/support/tga_bytes.h"
#include "tests/support/tool_run.h"
#include "tools/mediagen/max_writer.h"

using mediagen::MaxObject;

namespace {

ToolRun Tool(const std::string& arguments) { return Shell(std::string(VELLORAN_GAME_DIR "/velloran-tool inspect model ") + arguments); }


TEST(InspectModelTool, ReportsEachSubModelAndTheBoundsOfAll) {
    TempDir dir;
    const MaxObject crate{.name = "Crate",
                          .vertices = {{-1, 0, 0}, {3, 0, 0}, {3, 2, 0}, {-1, 2, 0}},
                          .faces = {{0, 1, 2}, {0, 2, 3}},
                          .texCoords = {{0, 0}, {1, 0}, {1, 1}, {0, 1}}};
    const MaxObject wedge{.name = "Wedge", .vertices = {{0, 0, -2}, {1, 0, 0.5f}, {0, 1, 0}}, .faces = {{0, 1, 2}}};
    WriteBytes(dir.File("crate.3DS"), mediagen::WriteMaxFile({crate, mediagen::MaxLight("Sun", {9, 9, 9}), wedge}));
    WriteBytes(dir.File("empty.3DS"), mediagen::WriteMaxFile({}));

    ToolRun run = Tool(Quoted(dir.File("crate.3DS")));
    ASSERT_EQ(run.exitCode, 0) << run.out;
    EXPECT_EQ(nlohmann::json::parse(run.out), nlohmann::json::parse(R"({"ok": true, "subModels": [
        {"vertices": 4, "triangles": 2, "texCoords": 4, "normals": 4},
        {"vertices": 3, "triangles": 1, "texCoords": 3, "normals": 3}],
        "bounds": {"min": [-1, 0, -2], "max": [3, 2, 0.5]}})"));

    ToolRun empty = Tool(Quoted(dir.File("empty.3DS")));
    ASSERT_EQ(empty.exitCode, 0) << empty.out;
    EXPECT_EQ(nlohmann::json::parse(empty.out), nlohmann::json::parse(R"({"ok": true, "subModels": [],
        "bounds": {"min": [0, 0, 0], "max": [0, 0, 0]}})"));
}

TEST(InspectModelTool, BadFilesAreReportedAsJson) {
    TempDir dir;
    const MaxObject broken{.name = "Broken", .vertices = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, .faces = {{0, 1, 7}}};
    WriteBytes(dir.File("broken.3DS"), mediagen::WriteMaxFile({broken}));

    ToolRun bad = Tool(Quoted(dir.File("broken.3DS")));
    EXPECT_EQ(bad.exitCode, 1);
    EXPECT_EQ(nlohmann::json::parse(bad.out),
              nlohmann::json({{"ok", false},
                              {"error", dir.File("broken.3DS") +
                                            ": object 1: face 0 uses vertex 7 but the mesh has 3 vertices"}}));

    ToolRun missing = Tool(Quoted(dir.File("missing.3DS")));
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_EQ(nlohmann::json::parse(missing.out)["error"], dir.File("missing.3DS") + ": cannot open file");
}

TEST(InspectModelTool, UsageErrorsPrintNothingOnStandardOutput) {
    for (const char* arguments : {"", "a.3DS b.3DS", "--frobnicate a.3DS"}) {
        SCOPED_TRACE(arguments);
        ToolRun run = Tool(std::string(arguments) + " 2>/dev/null");
        EXPECT_EQ(run.exitCode, 2);
        EXPECT_EQ(run.out, "");
    }
    ToolRun help = Tool("--help");
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_NE(help.out.find("usage: velloran-tool inspect model FILE"), std::string::npos);
}

}  // namespace
