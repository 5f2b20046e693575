#pragma once
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "core/random.h"
#include "engine/frame_timer.h"
#include "engine/input_system.h"

class LevelSounds;
class ResourceManager;
class Window;
class GraphicsSystem;
class SoundSystem;
class PhysicsSystem;
class Level;
class Menu;
class Texture2D;
class LevelView;
struct FrameInput;

// The numbers matter: states are compared as numbers.
enum GameState {
    StateMenu = 1,
    StateIntro = 2,
    StatePlaying = 3,
    StateOptions = 4,
    StateCredits = 5,
    StateQuit = 6,
};

// Owns every subsystem, starts them in order, and runs the loop: one window event, one timer
// tick, one input sample and one frame of the state machine per turn.
class GameEngine {
public:
    static GameEngine* GetInstance();

    // The game finds its Media/ in gameFolder; by default the folder the program lives in.
    explicit GameEngine(TimerClock& clock = PlatformTimerClock(), std::string gameFolder = "");
    virtual ~GameEngine();

    // 1 when start-up fails (nothing is shut down then), else runs the loop and gives 0.
    int Run();
    virtual bool Init();
    virtual void Frame();
    virtual void Shutdown();

    SoundSystem* GetSound() const { return sound.get(); }
    InputSystem* GetInput() const { return input.get(); }
    GraphicsSystem* GetGraphics() const { return graphics.get(); }
    FrameTimer* GetTimer() const { return timer.get(); }
    PhysicsSystem* GetPhysics() const { return physics.get(); }
    Level* GetLevel() const { return level.get(); }
    Window* GetWindow() const { return window.get(); }
    ResourceManager* GetResources() const { return resources.get(); }

    GameState GetState() const { return state; }
    // Entering the fly-over starts its clock again.
    void SetState(GameState newState);
    bool IsRunning() const { return running; }
    bool IsShowingStats() const { return showStats; }

    // Replace a subsystem after Init, for tests and tools.
    void SetMenu(std::unique_ptr<Menu> replacement);
    void SetLevel(std::unique_ptr<Level> replacement);
    // Asks the player for a level file; none given means cancelled.
    using LevelChooser = std::function<std::optional<std::string>(const std::string& folder)>;
    void SetLevelChooser(LevelChooser chooser) { chooseLevel = std::move(chooser); }

private:
    void MenuFrame();
    void IntroFrame();
    void SplashFrame();
    // The in-game level browser over the menu, run until the player chooses or cancels; its
    // own turns of the loop take the window's events, the clock, the input and the sound.
    std::optional<std::string> BrowseLevels(const std::string& folder);
    void DrawStats();
    void LoadFromMenu(const std::string& path);
    bool LoadLevel(const std::string& path);
    FrameInput SampleFrame();

    std::string gameFolder;
    std::string mediaFolder;  // gameFolder/Media
    std::unique_ptr<ResourceManager> resources;
    std::unique_ptr<SoundSystem> sound;
    std::unique_ptr<LevelSounds> levelSounds;
    Texture2D* quitSplash = nullptr;
    Texture2D* creditsSplash = nullptr;
    Texture2D* optionsSplash = nullptr;
    // Each splash picture is looked up once, found or not, so a missing one cannot hold the
    // farewell screen's clock at its first frame.
    bool quitSplashLookedUp = false, creditsSplashLookedUp = false, optionsSplashLookedUp = false;
    std::unique_ptr<InputSystem> input;
    std::unique_ptr<Window> window;
    std::unique_ptr<GraphicsSystem> graphics;
    std::unique_ptr<FrameTimer> timer;
    std::unique_ptr<PhysicsSystem> physics;
    std::unique_ptr<Level> level;
    bool running = false;
    bool showStats = false;
    GameState state = StateMenu;
    std::unique_ptr<Menu> menu;
    float quitShownAt = 0, creditsShownAt = 0, optionsShownAt = 0, introStart = -1;
    LevelChooser chooseLevel;
    // Every random effect of play draws from this one source.
    Random random{uint32_t(1)};
    std::unique_ptr<LevelView> levelView;
};
