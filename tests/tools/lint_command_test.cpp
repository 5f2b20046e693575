// Runs the built velloran-tool lint on level files next to a small Media/ folder of 3DS models.
#include <gtest/gtest.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <string>
#include <tuple>
#include <vector>

#include "level/level_limits.h"
#include "tests/support/files.h"
#include "tests/support/level_media.h"
#include "tests/support/tool_run.h"
#include "tools/mediagen/max_writer.h"

using mediagen::MaxObject;
using nlohmann::json;

namespace {

const std::string kTool = VELLORAN_GAME_DIR "/velloran-tool lint ";

// A triangle whose farthest vertex from the z axis is `radius` away.
std::vector<uint8_t> DiscModel(float radius) {
    return mediagen::WriteMaxFile(
        {MaxObject{.name = "Disc", .vertices = {{radius, 0, 0}, {0, radius * 0.5f, 3}, {-radius * 0.6f, 0, -3}},
                   .faces = {{0, 1, 2}}}});
}

// The class models of the kinds these tests use, and track models good and bad.
void WriteMedia(const TempDir& dir, bool withBumper) {
    const std::pair<const char*, float> models[] = {
        {"ball.3DS", 0.5f},
        {"DeadBall.3DS", 0.5f},
        {"Peg.3DS", 0.25f},
        {"SpawnerBumper.3DS", 1},
        {"ReverseGravityBumper.3DS", 1},
        {"HingedDoor.3DS", 1},
        {"TeleporterEntrance.3DS", 1},
        {"TeleporterExit.3DS", 1},
        {"turbine2.3DS", 3},
        {"goal.3DS", 2},
        {"track.3DS", 10}};
    for (const auto& [name, radius] : models) WriteBytes(dir.File(std::string("Media/") + name), DiscModel(radius));
    if (withBumper) WriteBytes(dir.File("Media/Bumper.3DS"), DiscModel(1));
    // A floor whose top is y = 0, from x = -100 to 100.
    WriteBytes(dir.File("Media/floor.3DS"), mediagen::WriteMaxFile({MaxBox("floor", {-100, -4, -3}, {100, 0, 3})}));
    WriteBytes(dir.File("Media/empty.3DS"), mediagen::WriteMaxFile({}));
    WriteBytes(dir.File("Media/broken.3DS"),
               mediagen::WriteMaxFile({MaxObject{.name = "Broken", .vertices = {{0, 0, 0}}, .faces = {{0, 0, 7}}}}));
}

std::string WriteLevel(const TempDir& dir, const std::string& name, const std::string& text) {
    WriteText(dir.File(name), text);
    return dir.File(name);
}

const char* kCleanLevel = R"(<VelloranLevel>
<LevelInfo name="Clean"/>
<Tracks><Track name="main" x="0" y="-1" collisionModel="track.3DS" renderModel="track.3DS"/></Tracks>
<Objects>
<Ball name="b" x="0" y="5" radius="0.5" mass="1" health="100">
  <Messages><Message event="Contact" target="g" content="Enable"/></Messages>
</Ball>
<Bumper name="bump" x="2" y="0" radius="1.015" force="10">
  <Messages><Message event="Bump" target="spin" content="SetSpeed 3"/></Messages>
</Bumper>
<Turbine name="spin" x="0" y="0" radius="0" speed="1"/>
<Peg name="p" x="1" y="1" radius="0.25"/>
<TeleportEntrance name="in" x="0" y="0" radius="1">
  <Exits><Exit name="out"/></Exits>
  <Messages><Message event="Enter" target="g" content="Disable"/></Messages>
</TeleportEntrance>
<TeleportExit name="out" x="0" y="0" radius="0">
  <Messages><Message event="Exit" target="in" content="Enable"/></Messages>
</TeleportExit>
<Goal name="g" x="0" y="0" radius="2" quota="0.5"/>
</Objects>
</VelloranLevel>
)";

TEST(LintTool, CleanLevelsHaveNoProblemsAndWarningsAloneLeaveALevelOk) {
    TempDir dir;
    WriteMedia(dir, true);
    const std::string level = WriteLevel(dir, "clean.xml", kCleanLevel);
    const json clean = json::parse(R"({"ok": true, "problems": []})");
    ToolRun run = Shell(kTool + Quoted(level) + " --root " + Quoted(dir.File("")));
    ASSERT_EQ(run.exitCode, 0) << run.out;
    EXPECT_EQ(json::parse(run.out), clean);
    // LEVEL and the models are both found from DIR, as simulate finds them, or from where the
    // tool runs.
    EXPECT_EQ(json::parse(Shell("cd / && " + kTool + "clean.xml --root " + Quoted(dir.File(""))).out), clean);
    EXPECT_EQ(json::parse(Shell("cd " + Quoted(dir.File("")) + " && " + kTool + "clean.xml").out), clean);
    for (const char* shipped : {"intro.lvl", "benchmarks/bench.lvl"}) {
        const std::string path = "Media/" + std::string(shipped);
        EXPECT_EQ(json::parse(Shell("cd / && " + kTool + path + " --root " + VELLORAN_GAME_DIR).out), clean) << shipped;
    }
    // The soak's spawners are oversized on purpose, so their triggers reach the wheel's casing.
    const json soak = json::parse(Shell(kTool + VELLORAN_GAME_DIR "/Media/benchmarks/soak.lvl --root " VELLORAN_GAME_DIR).out);
    EXPECT_EQ(soak["ok"], true);
    for (const json& problem : soak["problems"])
        EXPECT_NE(problem["message"].get<std::string>().find("radius 10 differs"), std::string::npos) << problem;

    const std::string warned = WriteLevel(dir, "warn.xml", R"(<VelloranLevel><Objects>
<Peg name="p" x="0" y="0" radius="0.3"/>
</Objects></VelloranLevel>)");
    ToolRun warning = Shell(kTool + Quoted(warned) + " --root " + Quoted(dir.File("")));
    EXPECT_EQ(warning.exitCode, 0) << warning.out;
    EXPECT_EQ(json::parse(warning.out)["ok"], true);
    EXPECT_EQ(json::parse(warning.out)["problems"][0]["line"], 2);
}

struct Expected {
    const char* severity;
    int line;
    const char* element;
    const char* words;  // part of the message
};

// Lints the level and checks that it reports exactly the expected problems, in line order.
void ExpectProblems(const TempDir& dir, const std::string& level, const std::vector<Expected>& expected) {
    ToolRun run = Shell(kTool + Quoted(level) + " --root " + Quoted(dir.File("")));
    const json result = json::parse(run.out);
    const bool anyError = std::any_of(expected.begin(), expected.end(),
                                      [](const Expected& e) { return std::string(e.severity) == "error"; });
    EXPECT_EQ(run.exitCode, anyError ? 1 : 0) << run.out;
    EXPECT_EQ(result["ok"], !anyError);
    std::vector<json> problems(result["problems"].begin(), result["problems"].end());
    for (size_t i = 1; i < problems.size(); ++i) EXPECT_LE(problems[i - 1]["line"], problems[i]["line"]);
    for (const Expected& e : expected) {
        auto found = std::find_if(problems.begin(), problems.end(), [&](const json& p) {
            return p["severity"] == e.severity && p["line"] == e.line && p["element"] == e.element &&
                   p["message"].get<std::string>().find(e.words) != std::string::npos;
        });
        if (found == problems.end()) {
            ADD_FAILURE() << "no " << e.severity << " on line " << e.line << " (" << e.element << ") saying "
                          << e.words;
        } else {
            problems.erase(found);
        }
    }
    for (const json& extra : problems) ADD_FAILURE() << "unexpected: " << extra.dump();
}

TEST(LintTool, ReportsEachProblemWithItsSeverityElementAndLine) {
    TempDir dir;
    WriteMedia(dir, false);
    const std::string level = WriteLevel(dir, "bad.xml", R"(<VelloranLevel>
<Tracks>
<Track name="t1" x="0" y="0" collisionModel="missing.3DS" renderModel="track.3DS"/>
<Track name="t2" x="0" y="0" collisionModel="empty.3DS" renderModel="track.3DS"/>
<Track name="t3" x="0" collisionModel="track.3DS" renderModel="broken.3DS"/>
</Tracks>
<Objects>
<Ball name="b" x="0" y="0" radius="0.6" mass="0" health="abc">
  <Messages>
    <Message event="Bump" target="g" content="Disable"/>
    <Message event="Contact" target="nobody" content="Disable"/>
    <Message event="Contact" target="g" content="Open"/>
    <Message event="Exit" target="g" content="Enable"/>
  </Messages>
</Ball>
<Peg name="p" x="0" y="0" radius="0"/>
<Bumper name="bump" x="0" y="0" radius="1" force="5 N"/>
<Widget name="w" x="0" y="0" radius="1"><Messages><Message event="a" target="b" content="c"/></Messages></Widget>
<TeleportEntrance name="in1" x="0" y="0" radius="1"/>
<TeleportEntrance name="in2" x="0" y="0" radius="1"><Exits><Exit name="ghost"/></Exits></TeleportEntrance>
<TeleportEntrance name="in3" x="0" y="0" radius="1"><Exits><Exit name="out"/><Exit name="gone"/></Exits></TeleportEntrance>
<TeleportExit name="out" x="0" y="0" radius="1"><Messages><Message event="Exit" target="t" content="SetSpeed fast"/></Messages></TeleportExit>
<Turbine name="t" x="0" y="0" radius="0" speed="1"/>
<Goal name="g" x="0" y="0" radius="2" quota="0"/>
<Goal name="g" x="0" y="0" radius="2" quota="2"/>
</Objects>
</VelloranLevel>
)");
    ExpectProblems(dir, level, {
        {"error", 3, "Track", "missing.3DS"},
        {"error", 4, "Track", "no sub-model"},
        {"error", 5, "Track", "\"y\""},
        {"error", 5, "Track", "Media/broken.3DS: "},
        {"error", 8, "Ball", "\"health\" holds no number"},
        {"error", 8, "Ball", "no body"},
        {"warning", 8, "Ball", "radius 0.6 differs"},
        {"warning", 10, "Message", "never raises \"Bump\""},
        {"warning", 11, "Message", "\"nobody\" names no object"},
        {"warning", 12, "Message", "understands \"Open\""},
        {"warning", 13, "Message", "lists \"b\" as an exit"},
        {"warning", 16, "Peg", "radius 0 is not above 0"},
        {"warning", 17, "Bumper", "\"force\" has text after its number"},
        {"error", 17, "Bumper", "Bumper model does not load"},
        {"warning", 18, "Widget", "drops its 1 message"},
        {"warning", 19, "TeleportEntrance", "no exits"},
        {"error", 20, "TeleportEntrance", "\"ghost\""},
        {"warning", 21, "TeleportEntrance", "exit \"gone\" names no object"},
        {"warning", 22, "Message", "understands \"SetSpeed fast\""},
        {"warning", 24, "Goal", "won at once"},
        {"warning", 24, "Goal", "line 25"},
        {"warning", 25, "Goal", "quota 2 is above 1"},
    });
}

TEST(LintTool, UnreadableLevelsAreOneErrorWithTheirLine) {
    TempDir dir;
    for (const auto& [text, line, element] : std::vector<std::tuple<std::string, int, std::string>>{
             {"<VelloranLevel>\n<Objects>\n</VelloranLevel>\n", 2, ""},
             {"<?xml version=\"1.0\"?>\n\n<Velloranlevel/>\n", 3, "Velloranlevel"}}) {
        const std::string level = WriteLevel(dir, "level.xml", text);
        const ToolRun run = Shell(kTool + Quoted(level));
        EXPECT_EQ(run.exitCode, 1) << run.out;
        json result = json::parse(run.out);
        EXPECT_NE(result["problems"][0]["message"].get<std::string>().find(level), std::string::npos) << run.out;
        result["problems"][0].erase("message");
        EXPECT_EQ(result, json({{"ok", false},
                                {"problems", json::array({{{"severity", "error"}, {"line", line}, {"element", element}}})}}));
    }
}

TEST(LintTool, WarnsAboutNumbersOutsideThePlayableRanges) {
    TempDir dir;
    WriteMedia(dir, true);
    // 3e38 still reads as a float; 1e39 does not, and is only reported as no number.
    const std::string level = WriteLevel(dir, "numbers.xml", R"(<VelloranLevel>
<Tracks><Track name="far" x="3e38" y="1e39" collisionModel="track.3DS" renderModel="track.3DS"/></Tracks>
<Objects>
<Ball name="b" x="0" y="20" radius="0.5" mass="1e38" health="-1"/>
<Ball name="flat" x="2" y="20" radius="0" mass="1" health="100"/>
<Peg name="speck" x="4" y="20" radius="1e-40"/>
<Turbine name="t" x="0" y="-20000" radius="0" speed="1e6"/>
<HingedDoor name="d" x="9" y="9" radius="6" mass="2" initialAngle="720"/>
<SpawnerBumper name="s" x="30" y="30" radius="1" force="20000" count="7"/>
<Goal name="g" x="-30" y="30" radius="2" quota="1.5"/>
</Objects>
</VelloranLevel>
)");
    ExpectProblems(dir, level, {
        {"error", 2, "Track", "\"y\" holds no number"},
        {"warning", 2, "Track",
         "Track \"far\": x 3e+38 is outside the playable range -10000 to 10000; the physics loses precision"},
        {"warning", 4, "Ball",
         "Ball \"b\": mass 1e+38 is outside the playable range 0.01 to 10000; the physics may refuse it or make NaN"},
        {"warning", 4, "Ball", "health -1 is outside the playable range 0 to 1e+06"},
        {"warning", 5, "Ball", "radius 0 is not above 0"},  // and no second warning for its range
        {"warning", 6, "Peg", "is outside the playable range 0.1 to 100"},
        {"warning", 6, "Peg", "differs from the size of its model"},
        {"warning", 7, "Turbine", "y -20000 is outside the playable range -10000 to 10000"},
        {"warning", 7, "Turbine", "speed 1e+06 is outside the playable range -100 to 100"},
        {"warning", 8, "HingedDoor", "initialAngle 720 is outside the playable range -360 to 360"},
        {"warning", 9, "SpawnerBumper", "force 20000 is outside the playable range 0 to 1000"},
        {"warning", 9, "SpawnerBumper", "count 7 is not 1, 2 or 3, so it makes 3 balls"},
        {"warning", 10, "Goal", "quota 1.5 is above 1, more than every ball the level ever had, so it is never met"},
    });
}

TEST(LintTool, WarnsAboutBallsThatStartInsideAnotherBallAPostOrATrack) {
    TempDir dir;
    WriteMedia(dir, true);
    // The floor's top is at y = -10 once the track moves it. Balls have radius 0.5; "resting"
    // sinks 0.002 into it, within the tolerance.
    const std::string level = WriteLevel(dir, "overlaps.xml", R"(<VelloranLevel>
<Tracks><Track name="floor" x="3" y="-10" collisionModel="floor.3DS" renderModel="floor.3DS"/></Tracks>
<Objects>
<Ball name="resting" x="0" y="-9.502" radius="0.5" mass="1" health="100"/>
<Ball name="sunk" x="5" y="-9.7" radius="0.5" mass="1" health="100"/>
<Ball name="first" x="20" y="0" radius="0.5" mass="1" health="100"/>
<Ball name="second" x="20.5" y="0" radius="0.5" mass="1" health="100"/>
<Ball name="left" x="30" y="0" radius="0.5" mass="1" health="100"/>
<DeadBall name="right" x="31" y="0" radius="0.5" mass="1"/>
<Ball name="pinned" x="40" y="0" radius="0.5" mass="1" health="100"/>
<Peg name="pin" x="40.5" y="0" radius="0.25"/>
<DeadBall name="bumped" x="50" y="0" radius="0.5" mass="1"/>
<Bumper name="post" x="51" y="0" radius="1" force="0"/>
<Ball name="bodiless" x="40" y="0.2" radius="0.5" mass="0" health="100"/>
</Objects>
</VelloranLevel>
)");
    ExpectProblems(dir, level, {
        {"warning", 5, "Ball",
         "Ball \"sunk\" on line 5 starts 0.2 deep inside Track \"floor\" on line 2: the physics shoves it out"},
        {"warning", 7, "Ball", "Ball \"second\" on line 7 starts 0.5 deep inside Ball \"first\" on line 6"},
        {"warning", 10, "Ball", "Ball \"pinned\" on line 10 starts 0.25 deep inside Peg \"pin\" on line 11"},
        {"warning", 12, "DeadBall", "starts 0.5 deep inside Bumper \"post\" on line 13"},
        {"warning", 13, "Bumper", "has no trigger"},
        {"error", 14, "Ball", "no body"},
    });

    // A pile on one spot: each ball names the first few it starts in and counts the rest.
    std::string pile = "<VelloranLevel><Objects>\n";
    for (int i = 0; i < 6; ++i) pile += "<Ball name=\"b\" x=\"0\" y=\"0\" radius=\"0.5\" mass=\"1\" health=\"1\"/>\n";
    pile += "</Objects></VelloranLevel>\n";
    const json piled = json::parse(Shell(kTool + Quoted(WriteLevel(dir, "pile.xml", pile)) + " --root " +
                                         Quoted(dir.File(""))).out);
    std::vector<std::string> lastBall;
    for (const json& problem : piled["problems"]) {
        if (problem["line"] == 7) lastBall.push_back(problem["message"]);
    }
    ASSERT_EQ(lastBall.size(), 4u) << piled.dump();
    EXPECT_EQ(lastBall[3], "Ball \"b\" on line 7 also starts inside 2 more objects or tracks");
}

TEST(LintTool, WarnsAboutSpawnersThatCanFeedOnTheCurrentBallAndBumpersWithoutATrigger) {
    TempDir dir;
    WriteMedia(dir, true);
    // Quiet: the peg (pegs do not kick), s4 and flip (4.5 apart), s5 and still, s6 and kicker
    // (one of each pair has no trigger).
    const std::string level = WriteLevel(dir, "spawners.xml", R"(<VelloranLevel><Objects>
<SpawnerBumper name="s1" x="0" y="0" radius="1" force="30" count="1"/>
<Bumper name="near" x="4" y="0" radius="1" force="30"/>
<Peg name="pin" x="0" y="2.5" radius="0.25"/>
<SpawnerBumper name="s2" x="20" y="0" radius="1" force="30" count="2"/>
<SpawnerBumper name="s3" x="23" y="0" radius="1" force="30" count="3"/>
<SpawnerBumper name="s4" x="40" y="0" radius="1" force="30" count="1"/>
<RevGravBumper name="flip" x="46.5" y="0" radius="1" force="30"/>
<SpawnerBumper name="s5" x="60" y="0" radius="1" force="30" count="1"/>
<Bumper name="still" x="63" y="0" radius="1" force="0"/>
<SpawnerBumper name="s6" x="80" y="0" radius="1" force="-1" count="1"/>
<Bumper name="kicker" x="83" y="0" radius="1" force="30"/>
</Objects></VelloranLevel>
)");
    ExpectProblems(dir, level, {
        {"warning", 2, "SpawnerBumper",
         "SpawnerBumper \"s1\" on line 2 and Bumper \"near\" on line 3: their posts are 2 apart, less than two ball "
         "diameters (4), so the current ball can bounce between them"},
        {"warning", 6, "SpawnerBumper", "\"s3\" on line 6 and SpawnerBumper \"s2\" on line 5: their posts are 1 apart"},
        {"warning", 10, "Bumper", "Bumper \"still\": force 0 is not above 0, so it has no trigger"},
        {"warning", 11, "SpawnerBumper",
         "force -1 is not above 0, so it has no trigger: it never kicks, makes new balls"},
    });
}

TEST(LintTool, WarnsAboutManyElementsAndReportsTooManyAsAnError) {
    TempDir dir;
    WriteMedia(dir, true);
    const auto pegs = [&](size_t count) {
        std::string text = "<VelloranLevel><Objects>\n";
        for (size_t i = 0; i < count; ++i) text += "<Peg name=\"p\" x=\"0\" y=\"0\" radius=\"0.25\"/>\n";
        return WriteLevel(dir, "pegs.xml", text + "</Objects></VelloranLevel>\n");
    };
    // Pegs start on line 2: the first one past a limit of n is on line n + 2.
    const int many = int(level_limits::kManyElements), most = int(level_limits::kMaxElements);
    ExpectProblems(dir, pegs(level_limits::kManyElements), {});
    ExpectProblems(dir, pegs(level_limits::kManyElements + 1),
                   {{"warning", many + 2, "Peg", "every frame slows down"}});
    const std::string refused = std::to_string(most + 1) + " tracks and objects: the game refuses to load a level "
                                "with more than " + std::to_string(most);
    ExpectProblems(dir, pegs(level_limits::kMaxElements + 1), {{"error", most + 2, "Peg", refused.c_str()}});
}

}  // namespace
