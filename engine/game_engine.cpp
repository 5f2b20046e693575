#include "engine/game_engine.h"

#include <filesystem>

#include "engine/command_line.h"
#include "engine/level_sound_bridge.h"
#include "engine/player_keys.h"
#include "graphics/graphics_system.h"
#include "graphics/window.h"
#include "level/level.h"
#include "level/level_view.h"
#include "menu/menu.h"
#include "physics/physics_system.h"
#include "platform/key_codes.h"
#include "platform/message_box.h"
#include "platform/program_folder.h"
#include "resources/resource_manager.h"
#include "sound/sound_system.h"
#include "view/level_renderer.h"

GameEngine* GameEngine::GetInstance() {
    static GameEngine engine;
    return &engine;
}

GameEngine::GameEngine(TimerClock& clock, std::string folder)
    : gameFolder(folder.empty() ? platform::ProgramFolder() : std::move(folder)),
      mediaFolder((std::filesystem::path(gameFolder) / "Media").string()),
      resources(std::make_unique<ResourceManager>(gameFolder)),
      sound(std::make_unique<SoundSystem>()),
      input(std::make_unique<InputSystem>()),
      window(std::make_unique<Window>()),
      graphics(std::make_unique<GraphicsSystem>()),
      timer(std::make_unique<FrameTimer>(clock)),
      physics(std::make_unique<PhysicsSystem>()) {}

// The sound system, the physics object, the menu and the resources live until the engine goes.
GameEngine::~GameEngine() = default;

bool GameEngine::Init() {
    running = false;
    bool started = false;
    if (window->Create("Velloran", 800, 600) && input->Init(window->Handle())) {
        if (!sound->Startup(*resources)) {
            platform::ShowMessage("SoundSystem failed t start!");
        } else if (!graphics->Init(window.get(), *resources)) {
            platform::ShowMessage("GraphicsSystem failed to start!");
        } else if (timer->Start()) {
            FrameTimer* clock = timer.get();
            resources->SetClock([clock] { return clock->Now(); });
            if (!physics->Startup()) {
                platform::ShowMessage("Physics failed to startup!");
            } else {
                started = true;
            }
        }
    }
    running = started;
    if (!running) {
        platform::ShowMessage(
            "Error on startup.  Please check that this computer meets the minimum requirements.");
        return false;
    }

    levelView = std::make_unique<LevelRenderer>(*graphics, *resources);
    levelSounds = std::make_unique<LevelSoundBridge>(*resources);
    LevelServices services;
    services.physics = physics.get();
    services.random = &random;
    services.resources = resources.get();
    services.mediaFolder = mediaFolder;
    services.sounds = levelSounds.get();
    services.view = levelView.get();
    services.showMessage = [](const std::string& text) { platform::ShowMessage(text); };
    level = std::make_unique<Level>(std::move(services));
    if (!CommandLine().empty()) {
        LoadLevel(CommandLine());
        state = StatePlaying;
    }

    BindPlayerKeys(*input);

    if (!chooseLevel) chooseLevel = [this](const std::string& folder) { return BrowseLevels(folder); };
    menu = std::make_unique<Menu>(*resources, graphics.get(), mediaFolder);
    return true;
}

int GameEngine::Run() {
    if (!Init()) return 1;
    timer->SetTargetRate(60.0);
    int counter = 0;
    while (running) {
        if (!window->PumpMessage()) {
            running = false;
            continue;
        }
        counter = (counter + 1) % 10000;
        timer->Tick();
        sound->Advance(timer->FrameTime());
        input->Update();
        Frame();
        if (counter % 3 == 0) sound->Commit();
    }
    Shutdown();
    return 0;
}

void GameEngine::Shutdown() {
    input->Shutdown();
    graphics->Shutdown();
    physics->Shutdown();
    level.reset();
    resources->SetClock(nullptr);
    timer.reset();
    input.reset();
    graphics.reset();
    window->Release();
}

void GameEngine::SetState(GameState newState) {
    if (newState == StateIntro) introStart = -1;
    state = newState;
}

void GameEngine::SetMenu(std::unique_ptr<Menu> replacement) { menu = std::move(replacement); }

void GameEngine::SetLevel(std::unique_ptr<Level> replacement) { level = std::move(replacement); }
