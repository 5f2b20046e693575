// velloran-tool render with no display at all: SDL's offscreen driver draws through EGL.
#include "tests/render/render_fixture.h"

namespace {

const std::string kNoDisplay = "env -u DISPLAY -u WAYLAND_DISPLAY ";

class RenderOffscreen : public RenderFixture {};

TEST_F(RenderOffscreen, DrawsTheSamePictureWithoutAnyDisplay) {
    const json report = Report(Render("", "look.lvl", kNoDisplay));
    EXPECT_EQ(report["ok"], true);
    EXPECT_EQ(report["frames"], 1);
    ExpectFirstFrame(Picture());
}

// The same arguments give the same game as simulate: the drawing changes nothing in play.
TEST_F(RenderOffscreen, PlaysExactlyAsSimulateDoes) {
    WriteText(dir.File("moves.txt"), "0-29 left\n40 nudge\n50-70 right\n");
    // Moves of the player in play; the fly-over, after which the ball is dropped at once.
    const std::vector<std::pair<std::string, std::string>> runs = {
        {"look.lvl", "--frames 120 --seed 9 --input " + Quoted(dir.File("moves.txt"))},
        {"drop.lvl", "--frames 690 --intro"}};
    for (const auto& [level, arguments] : runs) {
        const json drawn = Report(Render(arguments, level, kNoDisplay));
        const json played = json::parse(Shell(VELLORAN_GAME_DIR "/velloran-tool simulate " + level + " --root " +
                                              Quoted(dir.File("")) + " " + arguments)
                                            .out);
        EXPECT_EQ(drawn["frames"], played["frames"]) << arguments;
        ASSERT_EQ(drawn["objects"].size(), played["objects"].size()) << arguments;
        for (size_t i = 0; i < drawn["objects"].size(); ++i) {
            EXPECT_EQ(drawn["objects"][i]["name"], played["objects"][i]["name"]);
            EXPECT_EQ(drawn["objects"][i]["position"], played["objects"][i]["position"]) << arguments;
        }
        // No key is held in the last frame: the tilt it is drawn with is the one play ends with.
        EXPECT_NEAR(drawn["tilt"].get<double>() * 3.1415 / 180, played["tilt"].get<double>(), 1e-4) << arguments;
    }
}

TEST_F(RenderOffscreen, WhatStopsTheDrawingIsReportedAsJson) {
    // A picture that cannot be written names its file.
    const ToolRun lost = Shell(kNoDisplay + VELLORAN_GAME_DIR "/velloran-tool render look.lvl --root " +
                               Quoted(dir.File("")) + " --out " + Quoted(dir.File("no/such/folder/x.png")));
    EXPECT_EQ(lost.exitCode, 1);
    const json said = json::parse(lost.out, nullptr, false);
    EXPECT_EQ(said["ok"], false);
    EXPECT_NE(said["error"].dump().find("no/such/folder/x.png"), std::string::npos) << said;

    // Text needs the font; without it the drawing cannot start.
    std::filesystem::remove(dir.File("Media/font.tga"));
    const ToolRun noFont = Render("", "look.lvl", kNoDisplay);
    EXPECT_EQ(noFont.exitCode, 1);
    const json told = json::parse(noFont.out, nullptr, false);
    EXPECT_EQ(told["ok"], false);
    EXPECT_NE(told["error"].dump().find("font"), std::string::npos) << told;
    EXPECT_FALSE(std::filesystem::exists(Out()));
}

}  // namespace
