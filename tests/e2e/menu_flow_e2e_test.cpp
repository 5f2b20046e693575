// The whole way through the game as a player takes it: the menu, its buttons, the level
// browser, the splash screens and leaving, in the real window under Xvfb with real input.
#include "tests/e2e/game_process.h"
#include "tests/sound/mix_file.h"

namespace {

using namespace e2e;
const std::string kCloseWindow = CLOSE_WINDOW_PROGRAM;

// Button centres in window pixels (the window is 800 x 600 at the screen's corner).
constexpr const char* kNewGame = "100 76";
constexpr const char* kLevelSelect = "120 178";
constexpr const char* kOptions = "180 280";
constexpr const char* kCredits = "260 382";
constexpr const char* kQuit = "380 484";
constexpr const char* kAway = "700 40";  // over no button
// The browser's list: rows of 37.2 pixels from y 135; the level files follow ".." and "benchmarks/".
int RowY(int visibleRow) { return 135 + int(37.2 * (visibleRow + 0.5)); }

// Rows in which the teal frame down the browser panel's left edge shows (of 400); the menu's
// buttons cross that line only at their borders.
int PanelEdgeRows() {
    const Screenshot shot = TakeScreenshot();
    if (shot.Empty()) return -1;
    int rows = 0;
    for (int y = 100; y < 500; ++y)
        rows += shot.Count(62, y, 5, 1, [](const uint8_t* p) { return p[1] > 120 && p[2] > 110 && p[0] < 110; }) > 0;
    return rows;
}

class MenuFlow : public ::testing::Test {
protected:
    // Starts the game in its folder and waits for the menu to settle.
    void Start(const std::string& program = kGame, const std::string& folder = kGameFolder) {
        game = std::make_unique<GameProcess>(program, std::vector<std::string>{}, folder);
        window = game->Window();
        ASSERT_FALSE(window.empty()) << game->ErrorOutput();
        WaitForMenu();
    }
    void WaitForMenu() {
        Xdotool(window, kAway);
        // The New Game button stands on the background once the pictures have loaded.
        ASSERT_TRUE(WaitFor([&] {
            menu = TakeScreenshot();
            return menu.Count(0, 31, 200, 90, [](const uint8_t* p) { return p[0] > 150 || p[1] > 150; }) > 200;
        })) << "the menu never showed its buttons";
    }
    void Click(const std::string& at) { Xdotool(window, at + " click 1"); }
    void ExpectExitCode(int code) { EXPECT_EQ(game->WaitForExit(), code) << game->ErrorOutput(); }
    void CloseWindow() {
        const ToolRun closing = Shell(kCloseWindow + " " + window + " 2>&1");
        EXPECT_EQ(closing.exitCode, 0) << closing.out;
        ExpectExitCode(0);
    }
    bool WaitForBrowser(bool open) {
        return WaitFor([&] {
            const int rows = PanelEdgeRows();
            return open ? rows > 350 : rows >= 0 && rows < 150;
        });
    }
    // Whether the first two buttons (never under the cursor when it goes for the others)
    // stand where they were when the menu showed.
    bool ShowsMenuButtons(const Screenshot& shot) const {
        return shot.Differing(menu, 0, 31, 200, 90) < 100 && shot.Differing(menu, 0, 133, 200, 90) < 100;
    }
    bool CoversMenuButtons(const Screenshot& shot) const {
        return shot.Differing(menu, 0, 31, 200, 90) > 500 && shot.Differing(menu, 0, 133, 200, 90) > 500;
    }
    // A splash covers the whole window, buttons and all.
    Screenshot WaitForSplash() {
        Screenshot splash;
        EXPECT_TRUE(WaitFor([&] {
            splash = TakeScreenshot();
            return CoversMenuButtons(splash);
        })) << "no splash screen";
        return splash;
    }

    std::unique_ptr<GameProcess> game;
    std::string window;
    Screenshot menu;
};

TEST_F(MenuFlow, HoveringAButtonSwapsItsPictureAndLeavingSwapsItBack) {
    Start();
    // Only the New Game button changes: its neighbours and the left edge stay as they were.
    Xdotool(window, kNewGame);
    EXPECT_TRUE(WaitFor([&] { return TakeScreenshot().Differing(menu, 0, 31, 200, 90) > 400; }))
        << "no hover picture";
    EXPECT_LT(TakeScreenshot().Differing(menu, 0, 133, 200, 90), 50) << "Level Select changed too";
    Xdotool(window, kAway);
    EXPECT_TRUE(WaitFor([&] { return TakeScreenshot().Differing(menu, 0, 31, 200, 90) < 50; }))
        << "the normal picture did not come back";
    CloseWindow();
}

TEST_F(MenuFlow, EnteringAButtonClicksOnceHoweverLongTheCursorStays) {
    // What the game plays goes into a file through OpenAL's file output.
    TempDir folder;
    const std::string heard = folder.File("heard.wav"), conf = folder.File("openal.conf");
    WriteText(conf, "[wave]\nfile=" + heard + "\n");
    setenv("ALSOFT_CONF", conf.c_str(), 1);
    setenv("ALSOFT_DRIVERS", "wave", 1);
    Start();
    unsetenv("ALSOFT_CONF");
    unsetenv("ALSOFT_DRIVERS");
    // Onto New Game, resting there, then on to Level Select.
    Xdotool(window, kNewGame);
    for (const char* at : {"110 80", "120 70", "90 90"}) {
        std::this_thread::sleep_for(400ms);
        Xdotool(window, at);
    }
    std::this_thread::sleep_for(400ms);
    Xdotool(window, kLevelSelect);
    std::this_thread::sleep_for(400ms);
    CloseWindow();

    const Mix mix = ReadMix(heard);
    ASSERT_GT(mix.rate, 0) << "nothing was written to " << heard;
    // Clicks: stretches louder than a trace, apart by more than a tenth of a second. A click
    // played again on every move or every frame would sound longer than one click lasts.
    std::vector<std::pair<size_t, size_t>> clicks;  // first and last loud sample
    const size_t gap = size_t(mix.rate / 10) * size_t(mix.channels);
    float loudest = 0;
    for (size_t i = 0; i < mix.samples.size(); ++i) {
        if (std::fabs(mix.samples[i]) < 0.005f) continue;
        if (clicks.empty() || i - clicks.back().second > gap) clicks.push_back({i, i});
        clicks.back().second = i;
        loudest = std::max(loudest, std::fabs(mix.samples[i]));
    }
    EXPECT_EQ(clicks.size(), 2u);
    for (const auto& [first, last] : clicks)
        EXPECT_LT(double(last - first) / mix.channels / mix.rate, 0.2) << "longer than one click";
    // "claves" peaks at -1 dBFS and the menu plays it at -20 dB.
    EXPECT_GT(loudest, 0.03f);
    EXPECT_LT(loudest, 0.2f);
}

TEST_F(MenuFlow, NewGameFliesOverTheIntroAndThenTheClockRuns) {
    Start();
    Click(kNewGame);
    ASSERT_TRUE(game->WaitForPlaying("Intro")) << game->Output() << game->ErrorOutput();
    // "Time: 180.0" stands still through the fly-over; once play starts its digits change.
    const auto digits = [] {
        std::vector<bool> mask;
        const Screenshot shot = TakeScreenshot();
        for (int y = 0; y < 30; ++y)
            for (int x = 200; x < 420; ++x) mask.push_back(!shot.Empty() && IsWhite(shot.At(x, y)));
        return mask;
    };
    const std::vector<bool> start = digits();
    EXPECT_TRUE(WaitFor(
        [&] {
            const std::vector<bool> now = digits();
            int changed = 0;
            for (size_t i = 0; i < now.size() && i < start.size(); ++i) changed += now[i] != start[i];
            return changed > 40;
        },
        30s))
        << "the clock never ran";
    CloseWindow();
}

TEST_F(MenuFlow, TheBrowserListsTheLevelsAndTheKeyboardPicksOne) {
    Start();
    Click(kLevelSelect);
    ASSERT_TRUE(WaitForBrowser(true)) << "the level browser did not open";
    // Every row under ".." holds a name in white or gold: Media has more than enough levels.
    const Screenshot list = TakeScreenshot();
    for (int row = 1; row < 8; ++row)
        EXPECT_GT(list.Count(90, RowY(row) - 16, 300, 18, [](const uint8_t* p) { return p[0] > 190 && p[1] > 150; }),
                  60)
            << "row " << row;
    // The first level file is ready to open; one down is the next one.
    Xdotool(window, "400 300 key Down key Return");
    EXPECT_TRUE(game->WaitForPlaying("Dead Weight")) << game->Output() << game->ErrorOutput();
    EXPECT_TRUE(WaitForBrowser(false));
    CloseWindow();
}

TEST_F(MenuFlow, TheWheelScrollsTheBrowserAndADoubleClickPlaysALevel) {
    Start();
    Click(kLevelSelect);
    ASSERT_TRUE(WaitForBrowser(true));
    // One step down moves the list three rows: the fifth row shows the eighth entry, gravity.lvl.
    Xdotool(window, "400 " + std::to_string(RowY(4)) + " click 5");
    Xdotool(window, "400 " + std::to_string(RowY(4)) + " click --repeat 2 --delay 120 1");
    EXPECT_TRUE(game->WaitForPlaying("Upside Down")) << game->Output() << game->ErrorOutput();
    CloseWindow();
}

TEST_F(MenuFlow, EscapeCancelsTheBrowserAndTheMenuCarriesOn) {
    Start();
    Click(kLevelSelect);
    ASSERT_TRUE(WaitForBrowser(true));
    Xdotool(window, "400 300 key Escape");
    ASSERT_TRUE(WaitForBrowser(false)) << "Escape left the browser open";
    EXPECT_EQ(game->Output().find("playing"), std::string::npos);
    // Relative paths still resolve: New Game finds Media/intro.lvl.
    Click(kNewGame);
    EXPECT_TRUE(game->WaitForPlaying("Intro")) << game->Output() << game->ErrorOutput();
    CloseWindow();
}

TEST_F(MenuFlow, OptionsAndCreditsIgnoreAClickInTheirFirstSecond) {
    Start();
    for (const char* button : {kOptions, kCredits}) {
        Click(button);
        const Screenshot splash = WaitForSplash();
        Click(kAway);  // at once: too early
        std::this_thread::sleep_for(1200ms);  // past the splash's first second, whatever the clicks did
        EXPECT_LT(TakeScreenshot().Differing(splash, 0, 0, 800, 600), 2000) << button << ": an early click closed it";
        Click(kAway);
        EXPECT_TRUE(WaitFor([&] { return ShowsMenuButtons(TakeScreenshot()); }))
            << button << ": a later click did not close it";
    }
    CloseWindow();
}

TEST_F(MenuFlow, QuitShowsTheFarewellAndAClickEndsTheGameWithZero) {
    Start();
    Click(kQuit);
    WaitForSplash();
    Click(kAway);
    std::this_thread::sleep_for(1200ms);
    EXPECT_FALSE(game->HasEnded()) << "a click in the first second ended the game";
    Click(kAway);
    ExpectExitCode(0);
}

TEST_F(MenuFlow, AMissingFarewellPictureStillLetsThePlayerLeave) {
    // A game folder like the real one but without the farewell picture.
    TempDir folder;
    const fs::path media = fs::path(folder.File("Media"));
    fs::create_directories(media);
    for (const auto& entry : fs::directory_iterator(kGameFolder + "/Media"))
        if (entry.path().filename() != "UI_quit_splash.tga") fs::create_symlink(entry.path(), media / entry.path().filename());
    fs::copy_file(kGame, folder.File("velloran"));
    Start(folder.File("velloran"), folder.File(""));
    Click(kQuit);
    EXPECT_TRUE(WaitFor([] { return BrightPixels(0, 250, 800, 100) > 300; })) << "no word of the missing picture";
    std::this_thread::sleep_for(1200ms);
    Click(kAway);
    ExpectExitCode(0);
}

TEST_F(MenuFlow, AWonLevelShowsItsDialogueAndThenTheMenuComesBack) {
    // One ball that drops straight into the goal.
    TempDir folder;
    WriteText(folder.File("quick.lvl"), R"(<VelloranLevel>
  <LevelInfo name="Quick Win" description="One ball over the goal."/>
  <Tracks><Track name="track" x="0" y="0" collisionModel="intro_track.3DS" renderModel="intro_track.3DS"/></Tracks>
  <Objects>
    <Ball name="ball" x="-30" y="-22" radius="1" mass="1" health="100"/>
    <Goal name="goal" x="-30" y="-27" radius="3" quota="1"/>
  </Objects>
</VelloranLevel>)");
    Start();  // a picture of the menu to know it again by
    CloseWindow();
    game = std::make_unique<GameProcess>(kGame, std::vector<std::string>{folder.File("quick.lvl")}, kGameFolder);
    window = game->Window();
    ASSERT_FALSE(window.empty()) << game->ErrorOutput();
    ASSERT_TRUE(game->WaitForPlaying("Quick Win")) << game->Output() << game->ErrorOutput();
    Xdotool(window, kAway);
    ASSERT_TRUE(WaitFor([&] { return ShowsMenuButtons(TakeScreenshot()); })) << "no menu after the win";
    // And from there the next game starts as from a fresh menu.
    Click(kNewGame);
    EXPECT_TRUE(game->WaitForPlaying("Intro")) << game->Output() << game->ErrorOutput();
    CloseWindow();
}

TEST_F(MenuFlow, ClosingTheWindowEndsTheGameWithZeroInEveryState) {
    // Each state is reached by one button; the check that it was reached follows the click.
    const struct {
        const char* state;
        const char* button;
    } cases[] = {{"browser", kLevelSelect}, {"fly-over", kNewGame}, {"options", kOptions}, {"farewell", kQuit}};
    for (const auto& test : cases) {
        SCOPED_TRACE(test.state);
        Start();
        Click(test.button);
        if (test.button == kLevelSelect)
            EXPECT_TRUE(WaitForBrowser(true));
        else if (test.button == kNewGame)
            EXPECT_TRUE(game->WaitForPlaying("Intro"));
        else
            WaitForSplash();
        CloseWindow();
    }
}

}  // namespace
