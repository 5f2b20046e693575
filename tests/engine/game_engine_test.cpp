// The engine's state machine in a real window (under Xvfb), with the clock, the input, the
// menu and the level replaced by scripted ones.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "engine/game_engine.h"
#include "level/level.h"
#include "menu/menu.h"
#include "objects/game_object.h"
#include "platform/key_codes.h"
#include "tests/engine/manual_clock.h"
#include "tests/support/tga_bytes.h"

namespace fs = std::filesystem;

namespace {

class ScriptedInput : public platform::InputSource {
public:
    void ReadKeyTable(uint8_t table[256]) override {
        for (int i = 0; i < 256; ++i) table[i] = down[i] ? 0x80 : 0;
    }
    void ReadCursor(int& x, int& y, platform::ScreenRect& rect) override {
        x = y = 0;
        rect = {0, 0, 800, 600};
    }
    bool down[256] = {};
};

class ScriptedMenu : public Menu {
public:
    MenuChoice Update(const MenuInput&) override {
        MenuChoice choice = next;
        next = ChoiceNothing;
        return choice;
    }
    MenuChoice next = ChoiceNothing;
};

class Marker : public GameObject {
public:
    Marker(Level& level, Vector3 at) : GameObject(level, "marker"), at(at) {}
    Vector3 GetPosition() const override { return at; }
    const char* KindName() const override { return "Marker"; }
    Vector3 at;
};

class ScriptedLevel : public Level {
public:
    bool Load(const std::string& path) override {
        loads.push_back(path);
        return loadSucceeds;
    }
    void Frame(const FrameInput&) override { ++frames; }
    GameObject* GetCurrentBall() const override { return ball; }
    GameObject* GetGoal() const override { return goalObject; }
    void Finish() { finished = true; }

    GameObject* ball = nullptr;
    GameObject* goalObject = nullptr;
    bool loadSucceeds = true;
    std::vector<std::string> loads;
    int frames = 0;
};

class GameEngineTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        folder = fs::temp_directory_path() / ("velloran-engine-" + std::to_string(getpid()));
        fs::create_directories(folder / "Media");
        WriteBlockFont(folder / "Media" / "font.tga");
        for (const char* name : {"UI_options_splash", "UI_credits_splash", "UI_quit_splash"})
            WriteTga32(folder / "Media" / (std::string(name) + ".tga"), 4, 4,
                       [](int, int) { return Bgra{0, 0, 255, 255}; });
        fs::current_path(folder);
        clock.frequency = 1000;
        engine = new GameEngine(clock, folder.string());
        ASSERT_TRUE(engine->Init());
    }
    static void TearDownTestSuite() {
        engine->Shutdown();
        delete engine;
        fs::current_path(fs::temp_directory_path());
        fs::remove_all(folder);
    }

    void SetUp() override {
        engine->GetInput()->Init(&keys);
        auto scriptedMenu = std::make_unique<ScriptedMenu>();
        menu = scriptedMenu.get();
        engine->SetMenu(std::move(scriptedMenu));
        auto scriptedLevel = std::make_unique<ScriptedLevel>();
        level = scriptedLevel.get();
        engine->SetLevel(std::move(scriptedLevel));
        engine->SetState(StateMenu);
        // The engine's clock never runs backwards, so each test's times start past the last.
        start = clock.count + 1000000;
    }

    // One turn of the main loop at the given running time, counted from this test's start.
    void Turn(double seconds) {
        clock.count = start + int64_t(seconds * 1000 + 0.5);
        engine->GetTimer()->Tick();
        engine->GetInput()->Update();
        engine->Frame();
    }
    // The key held from one turn and let go at the next.
    void Press(uint8_t key, double down, double up) {
        keys.down[key] = true;
        Turn(down);
        keys.down[key] = false;
        Turn(up);
    }

    static inline fs::path folder;
    static inline ManualClock clock;
    static inline GameEngine* engine = nullptr;
    int64_t start = 0;
    ScriptedInput keys;
    ScriptedMenu* menu = nullptr;
    ScriptedLevel* level = nullptr;
};

TEST_F(GameEngineTest, SplashScreensIgnoreClicksInTheirFirstSecond) {
    struct Case {
        MenuChoice choice;
        GameState state;
    };
    double t = 100;
    for (Case c : {Case{ChoiceOptions, StateOptions}, Case{ChoiceCredits, StateCredits}}) {
        menu->next = c.choice;
        Turn(t);
        EXPECT_EQ(engine->GetState(), c.state);
        Press(vk::LeftButton, t + 0.5, t + 0.9);
        EXPECT_EQ(engine->GetState(), c.state) << "a release within the first second does nothing";
        keys.down[vk::LeftButton] = true;
        Turn(t + 1.2);
        EXPECT_EQ(engine->GetState(), c.state) << "pressing is not releasing";
        keys.down[vk::LeftButton] = false;
        Turn(t + 1.3);
        EXPECT_EQ(engine->GetState(), StateMenu);
        t += 10;
    }
}

TEST_F(GameEngineTest, FarewellScreenEndsTheLoopAfterASecondFromItsFirstShowing) {
    menu->next = ChoiceQuit;
    Turn(200);
    EXPECT_EQ(engine->GetState(), StateQuit);
    Turn(200.5);  // the picture is first shown here, so the second counts from now
    Press(vk::LeftButton, 201.2, 201.4);
    EXPECT_TRUE(engine->IsRunning()) << "only 0.9 s since the screen first showed";
    Press(vk::LeftButton, 201.6, 201.7);
    EXPECT_FALSE(engine->IsRunning());
}

TEST_F(GameEngineTest, F1TogglesTheOverlayOnKeyUpInAnyState) {
    bool before = engine->IsShowingStats();
    keys.down[vk::F1] = true;
    Turn(300);
    EXPECT_EQ(engine->IsShowingStats(), before);
    keys.down[vk::F1] = false;
    Turn(300.1);
    EXPECT_NE(engine->IsShowingStats(), before);
    engine->SetState(StatePlaying);
    Press(vk::F1, 300.2, 300.3);
    EXPECT_EQ(engine->IsShowingStats(), before);
}

TEST_F(GameEngineTest, NewGameLoadsTheIntroLevelOrStaysInTheMenu) {
    menu->next = ChoiceNewGame;
    Turn(400);
    ASSERT_EQ(level->loads, std::vector<std::string>{(folder / "Media" / "intro.lvl").string()})
        << "found beside the game, whatever the working directory";
    EXPECT_EQ(engine->GetState(), StateIntro);

    engine->SetState(StateMenu);
    level->loadSucceeds = false;
    menu->next = ChoiceNewGame;
    Turn(401);
    EXPECT_EQ(engine->GetState(), StateMenu);
}

TEST_F(GameEngineTest, LevelSelectionRestoresTheWorkingDirectory) {
    fs::path before = fs::current_path();
    engine->SetLevelChooser([](const std::string& folderName) -> std::optional<std::string> {
        EXPECT_EQ(folderName, (folder / "Media").string());
        fs::current_path(fs::temp_directory_path());
        return std::string("Media/mine.lvl");
    });
    menu->next = ChoiceLevelSelect;
    Turn(500);
    EXPECT_EQ(fs::current_path(), before);
    EXPECT_EQ(level->loads, std::vector<std::string>{"Media/mine.lvl"});
    EXPECT_EQ(engine->GetState(), StateIntro);

    engine->SetState(StateMenu);
    engine->SetLevelChooser([](const std::string&) {
        fs::current_path(fs::temp_directory_path());
        return std::optional<std::string>();
    });
    menu->next = ChoiceLevelSelect;
    Turn(501);
    EXPECT_EQ(engine->GetState(), StateMenu) << "a cancelled choice goes back to the menu";
    EXPECT_EQ(fs::current_path(), before) << "and leaves the working directory as it was";
    engine->SetLevelChooser(nullptr);
}

TEST_F(GameEngineTest, FlyOverGlidesFromBallToGoalAndBackThenPlays) {
    Marker ball(*level, {0, 0, 0}), goal(*level, {30, 0, 0});
    level->ball = &ball;
    level->goalObject = &goal;
    engine->SetState(StateIntro);
    PositionLookAtCamera& camera = level->GetCamera();

    Turn(600);  // t = 0: high above the ball
    EXPECT_TRUE(level->IsIntro());
    EXPECT_FLOAT_EQ(camera.TargetPosition().z, 100);
    EXPECT_FLOAT_EQ(camera.PositionRate(), 1.0f);
    Turn(604.5);  // halfway from ball to goal
    EXPECT_FLOAT_EQ(camera.TargetLookAt().x, 15);
    EXPECT_FLOAT_EQ(camera.TargetPosition().z, 75);
    EXPECT_FLOAT_EQ(camera.PositionRate(), 0.75f);
    Turn(607);  // resting on the goal
    EXPECT_FLOAT_EQ(camera.TargetLookAt().x, 30);
    EXPECT_FLOAT_EQ(camera.TargetPosition().z, 100);
    Turn(610);  // sinking over the ball again
    EXPECT_FLOAT_EQ(camera.TargetLookAt().x, 0);
    EXPECT_FLOAT_EQ(camera.TargetPosition().z, 75);
    EXPECT_EQ(engine->GetState(), StateIntro);
    Turn(611);
    EXPECT_EQ(engine->GetState(), StatePlaying);
    EXPECT_FALSE(level->IsIntro());
    level->ball = level->goalObject = nullptr;
}

TEST_F(GameEngineTest, FlyOverEndsAtOnceWithoutABallAndAtThreeSecondsWithoutAGoal) {
    engine->SetState(StateIntro);
    Turn(700);
    EXPECT_EQ(engine->GetState(), StatePlaying) << "no ball: the first frame goes to play";

    Marker ball(*level, {0, 0, 0});
    level->ball = &ball;
    menu->next = ChoiceNewGame;
    engine->SetState(StateMenu);
    Turn(710);  // loads and starts the fly-over clock on the next frame
    Turn(710.1);
    Turn(712.9);
    EXPECT_EQ(engine->GetState(), StateIntro);
    Turn(713.2);
    EXPECT_EQ(engine->GetState(), StatePlaying);
    level->ball = nullptr;
}

TEST_F(GameEngineTest, PlayRunsTheLevelUntilItIsFinished) {
    engine->SetState(StatePlaying);
    Turn(800);
    Turn(800.1);
    EXPECT_EQ(level->frames, 2);
    EXPECT_EQ(engine->GetState(), StatePlaying);
    level->Finish();
    Turn(800.2);
    EXPECT_EQ(engine->GetState(), StateMenu);

    engine->SetLevel(nullptr);
    engine->SetState(StatePlaying);
    Turn(800.3);
    EXPECT_EQ(engine->GetState(), StateMenu) << "no level at all";
}

}  // namespace
