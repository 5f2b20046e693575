// Runs the built velloran-tool lint on level files next to a small Media/ folder of 3DS models.
#include <gtest/gtest.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <string>
#include <tuple>
#include <vector>

#include "tests/support/files.h"
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
        {"ball.3DS", 0.5f},  {"Peg.3DS", 0.25f}, {"TeleporterEntrance.3DS", 1}, {"TeleporterExit.3DS", 1},
        {"turbine2.3DS", 3}, {"goal.3DS", 2},    {"track.3DS", 10}};
    for (const auto& [name, radius] : models) WriteBytes(dir.File(std::string("Media/") + name), DiscModel(radius));
    if (withBumper) WriteBytes(dir.File("Media/Bumper.3DS"), DiscModel(1));
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
<Goal name="g" x="0" y="0" radius="2" quota="3"/>
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
    // Without --root, LEVEL and the models are both found from where the tool runs.
    EXPECT_EQ(json::parse(Shell("cd " + Quoted(dir.File("")) + " && " + kTool + "clean.xml").out), clean);
    for (const char* shipped : {"intro.lvl", "bench.lvl"}) {
        const std::string path = VELLORAN_GAME_DIR "/Media/" + std::string(shipped);
        EXPECT_EQ(json::parse(Shell(kTool + path + " --root " + VELLORAN_GAME_DIR).out), clean) << shipped;
    }

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
    ToolRun run = Shell(kTool + Quoted(level) + " --root " + Quoted(dir.File("")));
    ASSERT_EQ(run.exitCode, 1) << run.out;
    const json result = json::parse(run.out);
    EXPECT_EQ(result["ok"], false);

    std::vector<Expected> expected = {
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
    };
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

}  // namespace
