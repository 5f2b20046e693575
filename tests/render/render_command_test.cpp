// velloran-tool render's answers before anything is drawn: usage, bad input, and the
// renderer it hands over to. None of these opens a window.
#include "tests/render/render_fixture.h"

namespace {

class RenderCommand : public RenderFixture {};

TEST_F(RenderCommand, BadArgumentsAreUsageErrors) {
    const std::string tool = VELLORAN_GAME_DIR "/velloran-tool render ";
    const std::string root = " --root " + Quoted(dir.File(""));
    for (const std::string& arguments : std::vector<std::string>{
             "", "look.lvl drop.lvl" + root, "look.lvl --frames 0" + root, "look.lvl --frames x" + root,
             "look.lvl --seed -1" + root, "look.lvl" + root + " --out", "look.lvl --bogus" + root,
             "look.lvl --root " + Quoted(dir.File("missing"))}) {
        const ToolRun run = Shell(tool + arguments + " 2>/dev/null");
        EXPECT_EQ(run.exitCode, 2) << arguments;
        EXPECT_EQ(run.out, "") << arguments << ": the usage goes to standard error";
    }
    EXPECT_FALSE(std::filesystem::exists(Out()));
}

TEST_F(RenderCommand, LevelsAndScriptsThatCannotBeReadAreBadInput) {
    WriteText(dir.File("broken.lvl"), "<VelloranLevel><Objects>");
    const ToolRun broken = Render("", "broken.lvl");
    EXPECT_EQ(broken.exitCode, 1);
    const json level = json::parse(broken.out, nullptr, false);
    EXPECT_EQ(level["ok"], false);
    EXPECT_EQ(level["level"], "broken.lvl");

    // Without its sky the level does not load, and the game's own messages are reported.
    std::filesystem::remove(dir.File("Media/sky_posx.tga"));
    const json noSky = json::parse(Render("").out, nullptr, false);
    EXPECT_EQ(noSky["ok"], false);
    EXPECT_EQ(noSky["errors"], json::parse(R"(["Error loading skybox", "Error loading level"])"));

    WriteText(dir.File("bad.txt"), "0 left\n12 jump\n");
    const ToolRun script = Render("--input " + Quoted(dir.File("bad.txt")));
    EXPECT_EQ(script.exitCode, 1);
    EXPECT_NE(json::parse(script.out, nullptr, false)["error"].dump().find("bad.txt: line 2: unknown action 'jump'"),
              std::string::npos)
        << script.out;
    const ToolRun endless = Render("--input /dev/zero");
    EXPECT_EQ(endless.exitCode, 1);
    EXPECT_EQ(json::parse(endless.out, nullptr, false)["error"], "/dev/zero: file is larger than 1 MiB");
    EXPECT_FALSE(std::filesystem::exists(Out()));
}

TEST_F(RenderCommand, TheToolHandsOverToTheRendererBesideIt) {
    const ToolRun help = Shell(VELLORAN_GAME_DIR "/velloran-tool render --help");
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_EQ(help.out.rfind("usage: velloran-tool render LEVEL", 0), 0u) << help.out;
    EXPECT_NE(Shell(VELLORAN_GAME_DIR "/velloran-tool --help").out.find("  render LEVEL"), std::string::npos);

    // A copy of the tool alone in a folder has no renderer to hand over to, and says so.
    std::filesystem::copy_file(VELLORAN_GAME_DIR "/velloran-tool", dir.File("velloran-tool"));
    const ToolRun alone = Shell(Quoted(dir.File("velloran-tool")) + " render look.lvl --root " + Quoted(dir.File("")));
    EXPECT_EQ(alone.exitCode, 1);
    const json said = json::parse(alone.out, nullptr, false);
    EXPECT_EQ(said["ok"], false);
    EXPECT_NE(said["error"].dump().find(dir.File("velloran-render")), std::string::npos) << said;
}

}  // namespace
