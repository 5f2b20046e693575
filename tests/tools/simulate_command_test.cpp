// velloran-tool simulate as a level designer or a script runs it: a level in a folder with
// its Media/, played headless, reported as JSON.
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "tests/support/level_media.h"
#include "tests/support/tool_run.h"

using nlohmann::json;

namespace {

const std::string kSimulate = VELLORAN_GAME_DIR "/velloran-tool simulate ";

const char* kLevel = R"(<VelloranLevel>
  <LevelInfo name="Drop" description="one ball into the goal"/>
  <Tracks><Track name="floor" x="0" y="0" collisionModel="floor.3DS" renderModel="floor.3DS"/></Tracks>
  <Objects>
    <Ball name="hero" x="20" y="6" radius="1" mass="1" health="100"/>
    <Ball name="spare" x="-40" y="1" radius="1" mass="1" health="100"/>
    <Goal name="goal" x="20" y="3" radius="3" quota="0.5">
      <Messages><Message event="Score" target="wheel" content="SetSpeed 2"/></Messages>
    </Goal>
    <Turbine name="wheel" x="-20" y="30" radius="4.5" speed="1"/>
  </Objects>
</VelloranLevel>
)";

class SimulateTool : public ::testing::Test {
protected:
    SimulateTool() {
        WriteLevelMedia(dir.File(""));
        WriteText(dir.File("drop.lvl"), kLevel);
        // Both balls needed, and the second far from the goal: play goes on.
        std::string roam = kLevel;
        roam.replace(roam.find("quota=\"0.5\""), 11, "quota=\"1.0\"");
        roam.replace(roam.find("x=\"20\" y=\"6\""), 13, "x=\"60\" y=\"6\"");
        WriteText(dir.File("roam.lvl"), roam);
    }
    ToolRun Simulate(const std::string& arguments, const std::string& level = "drop.lvl") {
        return Shell(kSimulate + level + " --root " + Quoted(dir.File("")) + " " + arguments);
    }
    TempDir dir;
};

TEST_F(SimulateTool, PlaysALevelToItsEndAndReportsWhatHappened) {
    const ToolRun run = Simulate("");
    ASSERT_EQ(run.exitCode, 0) << run.out;
    const json report = json::parse(run.out);
    json outcome;
    for (const char* key : {"ok", "level", "won", "lost", "finished", "lostAtFrame", "ballCount", "collected",
                            "currentBall", "baseGravity", "errors"})
        outcome[key] = report[key];
    EXPECT_EQ(outcome, json::parse(R"({"ok": true, "level": "Drop", "won": true, "lost": false, "finished": true,
        "lostAtFrame": null, "ballCount": 2, "collected": 1, "currentBall": 0, "baseGravity": [0, -60, 0],
        "errors": []})"));
    const int won = report["wonAtFrame"], finished = report["finishedAtFrame"];
    EXPECT_NEAR(finished - won, 300, 1);
    EXPECT_EQ(report["frames"], finished + 1);

    // The goal scored, its rule reached the turbine, and the report shows the new speed.
    EXPECT_NE(report["events"].dump().find(R"("event":"Score")"), std::string::npos);
    ASSERT_EQ(report["messages"].size(), 1u);
    EXPECT_EQ(report["messages"][0]["object"], "wheel");
    EXPECT_EQ(report["messages"][0]["content"], "SetSpeed 2");
    for (const json& o : report["objects"]) {
        EXPECT_NE(o["name"], "hero") << "collected";
        if (o["kind"] == "Turbine") {
            EXPECT_EQ(o["speed"], 2.0);
        }
    }
    ASSERT_GE(report["sounds"].size(), 1u);
    EXPECT_EQ(report["sounds"][0]["name"], "claves");
}

TEST_F(SimulateTool, ScriptedInputAndSeedsReplayExactly) {
    WriteText(dir.File("input.txt"),
              "# hold left for a second, then nudge\n0-59 left\n60 nudge,zoom   # released at frame 61\n90-91 next\n");
    const std::string arguments = "--frames 200 --seed 9 --input " + Quoted(dir.File("input.txt"));
    const ToolRun first = Simulate(arguments, "roam.lvl");
    const ToolRun second = Simulate(arguments, "roam.lvl");
    ASSERT_EQ(first.exitCode, 0) << first.out;
    EXPECT_EQ(first.out, second.out) << "the same level, seed and input give the same game";
    const json report = json::parse(first.out);
    EXPECT_EQ(report["frames"], 200);
    EXPECT_NEAR(report["tilt"].get<double>(), 3.0, 1e-3);
    EXPECT_EQ(report["won"], false);
    EXPECT_EQ(report["currentBall"], 1) << "next, held over two frames, is released once";

    const ToolRun other = Simulate("--frames 200 --seed 10 --input " + Quoted(dir.File("input.txt")), "roam.lvl");
    EXPECT_NE(json::parse(other.out)["objects"], report["objects"]) << "the nudge is random";

    // The fly-over comes first, its frames counted.
    const json flown = json::parse(Simulate("--frames 700 --intro").out);
    EXPECT_GT(flown["wonAtFrame"].get<int>(), 600);
}

TEST_F(SimulateTool, BadInputIsReportedAsJson) {
    WriteText(dir.File("bad.txt"), "0 left\n12 jump\n");
    const ToolRun bad = Simulate("--input " + Quoted(dir.File("bad.txt")));
    EXPECT_EQ(bad.exitCode, 1);
    const json said = json::parse(bad.out);
    EXPECT_EQ(said["ok"], false);
    EXPECT_NE(said["error"].get<std::string>().find("bad.txt: line 2: unknown action 'jump'"), std::string::npos);
    const ToolRun endless = Simulate("--input /dev/zero");
    EXPECT_EQ(endless.exitCode, 1);
    EXPECT_EQ(json::parse(endless.out)["error"], "/dev/zero: file is larger than 1 MiB");

}

// Every message the game shows for a level that does not load, in the game's order: the fixed
// resources are looked up once the file is well-formed, whatever element it holds, or none.
TEST_F(SimulateTool, AFailedLoadListsEveryMessageTheGameShows) {
    WriteText(dir.File("broken.lvl"), "<VelloranLevel><Objects>");
    WriteText(dir.File("wrongroot.lvl"), "<Level/>");
    WriteText(dir.File("noelement.lvl"), "<?xml version=\"1.0\"?>\n<!-- nothing yet -->\n");
    const json onlyLevel = json::parse(R"(["Error loading level"])");
    const json skyFirst = json::parse(R"(["Error loading skybox", "Error loading level"])");
    for (const char* level : {"broken.lvl", "wrongroot.lvl", "noelement.lvl", "missing.lvl"}) {
        const ToolRun run = Simulate("", level);
        EXPECT_EQ(run.exitCode, 1) << level;
        const json said = json::parse(run.out);
        EXPECT_EQ(said["ok"], false) << level;
        EXPECT_EQ(said["errors"], onlyLevel) << level;
    }

    std::filesystem::remove(dir.File("Media/sky_posx.tga"));
    for (const char* level : {"drop.lvl", "wrongroot.lvl", "noelement.lvl"})
        EXPECT_EQ(json::parse(Simulate("", level).out)["errors"], skyFirst) << level;
    // A file that is not XML, or not there, fails before any resource is looked up.
    for (const char* level : {"broken.lvl", "missing.lvl"})
        EXPECT_EQ(json::parse(Simulate("", level).out)["errors"], onlyLevel) << level;
}

// Numbers that overflow the physics never reach the report as NaN: impossible bodies are not
// made, and a ball kicked past the float range is switched off, by name, while play goes on.
TEST_F(SimulateTool, ImpossibleNumbersGiveNoNaN) {
    WriteText(dir.File("wild.lvl"), R"(<VelloranLevel>
  <Tracks><Track name="floor" x="0" y="0" collisionModel="floor.3DS" renderModel="floor.3DS"/></Tracks>
  <Objects>
    <Ball name="heavy" x="-20" y="2" radius="1" mass="1e38" health="100"/>
    <Ball name="faint" x="-10" y="2" radius="1e-40" mass="1" health="100"/>
    <Ball name="kicked" x="0" y="4" radius="1" mass="1" health="100"/>
    <Bumper name="kicker" x="0" y="0" radius="2" force="3e38"/>
    <Ball name="bystander" x="20" y="1" radius="1" mass="1" health="100"/>
    <Goal name="goal" x="60" y="3" radius="3" quota="1"/>
  </Objects>
</VelloranLevel>
)");
    const ToolRun run = Simulate("--frames 120", "wild.lvl");
    ASSERT_EQ(run.exitCode, 0) << run.out;
    const json report = json::parse(run.out);
    for (const json& o : report["objects"]) {
        for (const char* field : {"position", "velocity"})
            for (const json& value : o[field]) EXPECT_TRUE(value.is_number()) << o;  // NaN prints as null
    }
    EXPECT_EQ(report["frames"], 120);
    ASSERT_EQ(report["switchedOff"].size(), 1u) << report["switchedOff"];
    EXPECT_EQ(report["switchedOff"][0]["object"], "kicked");
    EXPECT_EQ(report["switchedOff"][0]["reason"], "its position or motion stopped being a finite number");
    for (const json& o : report["objects"]) {
        if (o["name"] != "bystander") continue;
        EXPECT_NEAR(o["position"][1].get<double>(), 1.0, 0.1) << "still resting";
    }
}

TEST(ShippedIntro, IsLostWithoutPlayingAndWonByTurningTheLevelOver) {
    const std::string intro = kSimulate + "Media/intro.lvl --root " + Quoted(VELLORAN_GAME_DIR);
    const json idle = json::parse(Shell(intro).out);
    EXPECT_EQ(idle["won"], false);
    EXPECT_EQ(idle["lost"], true);

    TempDir dir;
    WriteText(dir.File("flip.txt"), "0-29 left\n300-333 left\n");
    const json played = json::parse(Shell(intro + " --input " + Quoted(dir.File("flip.txt"))).out);
    EXPECT_EQ(played["won"], true);
    EXPECT_LT(played["wonAtFrame"].get<int>(), 60 * 30);
}

}  // namespace
