// One frame of the engine's state machine: menu, fly-over, play and the splash screens.
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "engine/command_line.h"
#include "engine/game_engine.h"
#include "graphics/graphics_system.h"
#include "graphics/texture.h"
#include "engine/player_keys.h"
#include "level/fly_over.h"
#include "level/level.h"
#include "menu/menu.h"
#include "objects/game_object.h"
#include "platform/key_codes.h"
#include "platform/message_box.h"
#include "resources/resource_manager.h"

void GameEngine::Frame() {
    if (input->WasKeyReleased(vk::F1)) showStats = !showStats;
    graphics->BeginFrame();
    switch (state) {
    case StateMenu:
        MenuFrame();
        break;
    case StateIntro:
        IntroFrame();
        break;
    case StatePlaying:
        if (!level) {
            state = StateMenu;
        } else {
            level->Frame(SampleFrame());
            if (level->IsFinished()) state = StateMenu;
        }
        break;
    case StateOptions:
    case StateCredits:
    case StateQuit:
        SplashFrame();
        break;
    }
    if (showStats) DrawStats();
    graphics->EndFrame();
}

void GameEngine::DrawStats() {
    graphics->Begin2D();
    graphics->PrintText(0, 0.03f, 1, 1, 1, 0.03f, "FPS:     %5.2f\nElapsed: %5.2f\nSim time:%5.2f",
                        timer->SmoothedRate(), timer->FrameTime(), timer->Now());
    graphics->PrintText(0, 0.12f, 1, 1, 1, 0.03f, "%s", CommandLine().c_str());
}

// A level chosen from the menu opens with the fly-over; a failed load goes back to the menu.
void GameEngine::LoadFromMenu(const std::string& path) {
    if (!LoadLevel(path)) state = StateMenu;
}

// Says on standard output which level is played, so a player or a test can tell.
bool GameEngine::LoadLevel(const std::string& path) {
    if (!level->Load(path)) {
        platform::ShowMessage("Error loading level");
        return false;
    }
    std::printf("velloran: playing \"%s\" from %s\n", level->GetName().c_str(), path.c_str());
    std::fflush(stdout);
    return true;
}

void GameEngine::MenuFrame() {
    MenuInput pointer;
    pointer.now = timer->Now();
    float cursor[2];
    input->GetCursor(cursor);
    pointer.cursorX = cursor[0];
    pointer.cursorY = cursor[1];
    pointer.leftDown = input->IsKeyDown(vk::LeftButton);
    MenuChoice choice = menu ? menu->Update(pointer) : ChoiceNothing;
    float now = float(timer->Now());
    switch (choice) {
    case ChoiceNewGame:
        SetState(StateIntro);
        LoadFromMenu(mediaFolder + "/intro.lvl");
        break;
    case ChoiceLevelSelect: {
        SetState(StateIntro);
        // The chooser may change the working directory; whatever it answers, it is put back.
        std::error_code ec;
        auto saved = std::filesystem::current_path(ec);
        std::optional<std::string> chosen = chooseLevel ? chooseLevel(mediaFolder) : std::nullopt;
        if (!ec) std::filesystem::current_path(saved, ec);
        if (chosen) {
            LoadFromMenu(*chosen);
        } else {
            state = StateMenu;
        }
        break;
    }
    case ChoiceOptions:
        state = StateOptions;
        optionsShownAt = now;
        break;
    case ChoiceCredits:
        state = StateCredits;
        creditsShownAt = now;
        break;
    case ChoiceQuit:
        state = StateQuit;
        break;
    default:
        break;
    }
}

void GameEngine::SplashFrame() {
    const char* name = "UI_options_splash";
    Texture2D** texture = &optionsSplash;
    bool* lookedUp = &optionsSplashLookedUp;
    float* shownAt = &optionsShownAt;
    if (state == StateCredits) {
        name = "UI_credits_splash";
        texture = &creditsSplash;
        lookedUp = &creditsSplashLookedUp;
        shownAt = &creditsShownAt;
    } else if (state == StateQuit) {
        name = "UI_quit_splash";
        texture = &quitSplash;
        lookedUp = &quitSplashLookedUp;
        shownAt = &quitShownAt;
    }
    float now = float(timer->Now());
    if (!*lookedUp) {
        *texture = GetTexture(*resources, name);
        *lookedUp = true;
        if (state == StateQuit) quitShownAt = now;
    }

    graphics->Begin2D();
    if (*texture && (*texture)->EnsureLoaded()) {
        graphics->DrawQuad(ScreenQuad::Make(0, 0, 1, 1), InsetTexCoords((*texture)->width, (*texture)->height),
                           *texture, 0);
    } else {
        // A missing picture still leaves a screen the player can read and click away.
        graphics->PrintText(0.1f, 0.5f, 1, 1, 1, 0.04f, "The picture %s is missing.\nClick to go on.", name);
    }

    if (input->WasKeyReleased(vk::LeftButton) && now - *shownAt > 1.0f) {
        if (state == StateQuit)
            running = false;
        else
            state = StateMenu;
    }
}

void GameEngine::IntroFrame() {
    if (!level) {
        state = StateMenu;
        return;
    }
    level->SetIntro(true);
    level->Frame(SampleFrame());
    float now = float(timer->Now());
    if (introStart < 0) introStart = now;
    if (!FlyOverStep(*level, now - introStart)) {
        state = StatePlaying;
        level->SetIntro(false);
    }
}

// The clock and the player's actions for this frame of the level.
FrameInput GameEngine::SampleFrame() {
    const float step = timer->TargetRate() > 0 ? float(1.0 / timer->TargetRate()) : 1.0f / 60.0f;
    return ::SampleFrame(*input, timer->Now(), float(timer->FrameTime()), step);
}
