// velloran-tool track as a level designer runs it, and the thickness every piece must have.
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>

#include "tests/support/files.h"
#include "tests/support/tool_run.h"
#include "tools/mediagen/max_writer.h"
#include "tools/mediagen/media_error.h"
#include "tools/mediagen/track_source.h"

using nlohmann::json;

namespace {

const std::string kTool = VELLORAN_GAME_DIR "/velloran-tool ";

std::string ErrorOf(const std::string& text) {
    try {
        mediagen::ParseTrack(text, "t.track");
    } catch (const mediagen::MediaError& e) {
        return e.what();
    }
    return "";
}

TEST(TrackTool, BuildsTheSameModelAsTheGeneratorWithTextureCoordinates) {
    TempDir dir;
    const std::string text = "depth: 4\npiece: -20,-2  20,-2  20,0  -20,0\npiece: 0,1  6,1  6,6  4,6  4,2  0,2\n";
    WriteText(dir.File("mine.track"), text);
    const ToolRun run = Shell(kTool + "track " + Quoted(dir.File("mine.track")) + " " + Quoted(dir.File("mine.3DS")));
    ASSERT_EQ(run.exitCode, 0) << run.out;
    const json said = json::parse(run.out);
    EXPECT_EQ(said["object"], "mine");
    EXPECT_EQ(said["pieces"], 2);
    EXPECT_EQ(said["bounds"], json::parse(R"({"min": [-20, -2, -2], "max": [20, 6, 2]})"));

    const mediagen::MaxObject built = mediagen::BuildTrack(mediagen::ParseTrack(text, "mine.track"), "mine");
    EXPECT_EQ(ReadBytes(dir.File("mine.3DS")), mediagen::WriteMaxFile({built}));

    // The game's own loader reads it, one sub-model with a texture coordinate per vertex.
    const json model = json::parse(Shell(kTool + "inspect model " + Quoted(dir.File("mine.3DS"))).out);
    ASSERT_EQ(model["subModels"].size(), 1u) << model;
    EXPECT_EQ(model["subModels"][0]["texCoords"], model["subModels"][0]["vertices"]);
}

TEST(TrackTool, BadOutlinesAndArgumentsAreReportedWithTheirFileAndLine) {
    TempDir dir;
    WriteText(dir.File("bad.track"), "depth: 4\n# a comment\npiece: 0,0 4,4 4,0 0,4\n");
    const ToolRun bad = Shell(kTool + "track " + Quoted(dir.File("bad.track")) + " " + Quoted(dir.File("o.3DS")));
    EXPECT_EQ(bad.exitCode, 1);
    EXPECT_EQ(json::parse(bad.out)["error"], dir.File("bad.track") + ":3: piece: edges 1-2 and 3-4 cross or touch");
    EXPECT_FALSE(std::filesystem::exists(dir.File("o.3DS")));

    const ToolRun missing = Shell(kTool + "track " + Quoted(dir.File("none.track")) + " " + Quoted(dir.File("o.3DS")));
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_EQ(json::parse(missing.out)["ok"], false);
    WriteText(dir.File("good.track"), "depth: 4\npiece: 0,0 4,0 4,4 0,4\n");
    const ToolRun unwritable =
        Shell(kTool + "track " + Quoted(dir.File("good.track")) + " " + Quoted(dir.File("no/such/o.3DS")));
    EXPECT_EQ(unwritable.exitCode, 1);
    EXPECT_NE(json::parse(unwritable.out)["error"].get<std::string>().find("cannot write"), std::string::npos);

    EXPECT_EQ(Shell(kTool + "track " + Quoted(dir.File("good.track")) + " 2>/dev/null").exitCode, 2);
    EXPECT_EQ(Shell(kTool + "track a b --depth 3 2>/dev/null").exitCode, 2);
    EXPECT_EQ(ErrorOf("depth: 4\npiece: 0,0 4,0\n"), "t.track:2: piece: an outline needs at least 3 points, this one has 2");
    EXPECT_EQ(ErrorOf("depth: 4\nwall: 0,0 4,0 4,4\n"), "t.track:2: unknown key 'wall' (depth, piece)");
}

// A ball at 300 units/s passes pieces thinner than 1; every thin place is refused, wherever
// it is, and a piece exactly 1 thick, or with ordinary ramp corners, is not.
TEST(TrackThickness, PiecesThinnerThanOneAnywhereAreRefused) {
    const std::string depth = "depth: 4\n";
    EXPECT_EQ(ErrorOf(depth + "piece: 0,0 10,0 10,1 0,1\n"), "");
    EXPECT_EQ(ErrorOf(depth + "piece: 0,0 1,0 1,1 0,1\n"), "");
    EXPECT_EQ(ErrorOf(depth + "piece: -80,34  -40,27  -40,28.5  -80,35.5\n"), "") << "a shipped ramp";

    const auto thin = [&](const std::string& piece) {
        const std::string error = ErrorOf(depth + "# first\n" + piece + "\n");
        EXPECT_EQ(error.rfind("t.track:3: piece: only ", 0), 0u) << piece << ": " << error;
        EXPECT_NE(error.find("at least 1 thick"), std::string::npos) << error;
    };
    thin("piece: 0,0 10,0 10,0.9 0,0.9");                   // a thin slab
    thin("piece: 0,0 0.5,0 0.5,0.5 0,0.5");                  // a speck
    thin("piece: 0,0 4,0 4,1 20,1.4 4,1.8 4,3 0,3");         // a thin spike off a block
    thin("piece: 0,0 8,0 8,4 4.5,4 4.4,0.5 3.6,0.5 3.5,4 0,4");  // a narrow neck between two blocks
    thin("piece: 0,0 40,0 0,5");                             // a wedge whose tip is too sharp
}

TEST(TrackThickness, ShippedTracksPass) {
    const std::filesystem::path tracks = std::filesystem::path(VELLORAN_SOURCE_DIR) / "assets" / "tracks";
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(tracks)) {
        if (entry.path().extension() != ".track") continue;
        ++count;
        EXPECT_NO_THROW(mediagen::ReadTrack(entry.path())) << entry.path();
    }
    EXPECT_GE(count, 3);
}

}  // namespace
