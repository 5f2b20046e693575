// The level browser's own loop. Like a modal dialog it keeps the window alive while the menu's
// frame waits for its answer: one window event, one clock tick, one input sample and one
// drawing of the menu with the browser over it per turn.
#include "engine/game_engine.h"
#include "engine/level_summary.h"
#include "graphics/graphics_system.h"
#include "graphics/window.h"
#include "menu/browser_drawing.h"
#include "menu/level_browser.h"
#include "menu/menu.h"
#include "platform/key_codes.h"
#include "sound/sound_system.h"

namespace {

BrowserInput ReadBrowserInput(const InputSystem& input, double now) {
    BrowserInput in;
    in.now = now;
    float cursor[2];
    input.GetClientCursor(cursor);
    in.cursorX = cursor[0];
    in.cursorY = cursor[1];
    in.leftDown = input.IsKeyDown(vk::LeftButton);
    in.wheel = input.WheelSteps();
    in.up = input.IsKeyDown(vk::Up);
    in.down = input.IsKeyDown(vk::Down);
    in.pageUp = input.IsKeyDown(vk::PageUp);
    in.pageDown = input.IsKeyDown(vk::PageDown);
    in.home = input.IsKeyDown(vk::Home);
    in.end = input.IsKeyDown(vk::End);
    in.enter = input.IsKeyDown(vk::Enter);
    in.escape = input.IsKeyDown(vk::Escape);
    in.backspace = input.IsKeyDown(vk::Backspace);
    in.tab = input.IsKeyDown(vk::Tab);
    return in;
}

}  // namespace

std::optional<std::string> GameEngine::BrowseLevels(const std::string& folder) {
    LevelBrowser browser(folder, DescribeLevelFile);
    int counter = 0;
    while (running) {
        if (!window->PumpMessage()) {
            running = false;  // the window was closed: the main loop ends too
            return std::nullopt;
        }
        counter = (counter + 1) % 10000;
        timer->Tick();
        sound->Advance(timer->FrameTime());
        input->Update();
        const LevelBrowser::Outcome outcome = browser.Step(ReadBrowserInput(*input, timer->Now()));
        if (outcome == LevelBrowser::Outcome::Chosen) return browser.Chosen().string();
        if (outcome == LevelBrowser::Outcome::Cancelled) return std::nullopt;

        graphics->BeginFrame();
        if (menu) menu->DrawBackdrop(timer->Now());
        DrawLevelBrowser(browser, *graphics);
        graphics->EndFrame();
        if (counter % 3 == 0) sound->Commit();
    }
    return std::nullopt;
}
