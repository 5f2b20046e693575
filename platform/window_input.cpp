// The game window as an input source. The key table follows the key and mouse-button events
// as the loop takes them, one per turn, so a quick tap is seen down in one turn and released
// in a later one instead of falling between two samples.
#include <SDL2/SDL.h>

#include <cstring>

#include "platform/game_window.h"
#include "platform/key_codes.h"

namespace platform {

namespace {

struct KeyMapping {
    SDL_Scancode scancode;
    uint8_t key;
    uint8_t alsoKey;  // the side-neutral code of a modifier, or 0
};

constexpr KeyMapping kNamedKeys[] = {
    {SDL_SCANCODE_BACKSPACE, vk::Backspace, 0}, {SDL_SCANCODE_TAB, vk::Tab, 0},
    {SDL_SCANCODE_RETURN, vk::Enter, 0},        {SDL_SCANCODE_KP_ENTER, vk::Enter, 0},
    {SDL_SCANCODE_PAUSE, vk::Pause, 0},         {SDL_SCANCODE_CAPSLOCK, vk::CapsLock, 0},
    {SDL_SCANCODE_ESCAPE, vk::Escape, 0},       {SDL_SCANCODE_SPACE, vk::Space, 0},
    {SDL_SCANCODE_PAGEUP, vk::PageUp, 0},       {SDL_SCANCODE_PAGEDOWN, vk::PageDown, 0},
    {SDL_SCANCODE_END, vk::End, 0},             {SDL_SCANCODE_HOME, vk::Home, 0},
    {SDL_SCANCODE_LEFT, vk::Left, 0},           {SDL_SCANCODE_UP, vk::Up, 0},
    {SDL_SCANCODE_RIGHT, vk::Right, 0},         {SDL_SCANCODE_DOWN, vk::Down, 0},
    {SDL_SCANCODE_INSERT, vk::Insert, 0},       {SDL_SCANCODE_DELETE, vk::Delete, 0},
    {SDL_SCANCODE_LSHIFT, vk::LeftShift, vk::Shift},   {SDL_SCANCODE_RSHIFT, vk::RightShift, vk::Shift},
    {SDL_SCANCODE_LCTRL, vk::LeftControl, vk::Control}, {SDL_SCANCODE_RCTRL, vk::RightControl, vk::Control},
    {SDL_SCANCODE_LALT, vk::LeftAlt, vk::Alt},         {SDL_SCANCODE_RALT, vk::RightAlt, vk::Alt},
};

constexpr uint8_t kDown = 0x80;

// The virtual key of a scancode (and the neutral modifier code in alsoKey); 0 when unmapped.
uint8_t VirtualKey(SDL_Scancode code, uint8_t& alsoKey) {
    alsoKey = 0;
    if (code >= SDL_SCANCODE_A && code <= SDL_SCANCODE_Z) return uint8_t(vk::LetterA + (code - SDL_SCANCODE_A));
    // SDL numbers the digit rows 1 to 9 and then 0.
    if (code >= SDL_SCANCODE_1 && code <= SDL_SCANCODE_9) return uint8_t(vk::Digit0 + 1 + (code - SDL_SCANCODE_1));
    if (code == SDL_SCANCODE_0) return vk::Digit0;
    if (code >= SDL_SCANCODE_KP_1 && code <= SDL_SCANCODE_KP_9)
        return uint8_t(vk::Numpad0 + 1 + (code - SDL_SCANCODE_KP_1));
    if (code == SDL_SCANCODE_KP_0) return vk::Numpad0;
    if (code >= SDL_SCANCODE_F1 && code <= SDL_SCANCODE_F12) return uint8_t(vk::F1 + (code - SDL_SCANCODE_F1));
    for (const KeyMapping& mapping : kNamedKeys) {
        if (mapping.scancode == code) {
            alsoKey = mapping.alsoKey;
            return mapping.key;
        }
    }
    return 0;
}

uint8_t MouseKey(Uint8 button) {
    switch (button) {
    case SDL_BUTTON_LEFT: return vk::LeftButton;
    case SDL_BUTTON_RIGHT: return vk::RightButton;
    case SDL_BUTTON_MIDDLE: return vk::MiddleButton;
    case SDL_BUTTON_X1: return vk::ExtraButton1;
    case SDL_BUTTON_X2: return vk::ExtraButton2;
    default: return 0;
    }
}

void SetKey(uint8_t table[256], uint8_t key, bool down) {
    if (key == 0) return;
    table[key] = down ? kDown : 0;
}

}  // namespace

void GameWindow::TrackInput(const SDL_Event& event) {
    switch (event.type) {
    case SDL_KEYDOWN:
    case SDL_KEYUP: {
        uint8_t alsoKey = 0;
        uint8_t key = VirtualKey(event.key.keysym.scancode, alsoKey);
        SetKey(keyTable, key, event.type == SDL_KEYDOWN);
        SetKey(keyTable, alsoKey, event.type == SDL_KEYDOWN);
        break;
    }
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP:
        SetKey(keyTable, MouseKey(event.button.button), event.type == SDL_MOUSEBUTTONDOWN);
        break;
    case SDL_MOUSEWHEEL:
        wheelSteps += event.wheel.direction == SDL_MOUSEWHEEL_FLIPPED ? -event.wheel.y : event.wheel.y;
        break;
    case SDL_WINDOWEVENT:
        // Keys let go while the window was away would otherwise stay down for good.
        if (event.window.event == SDL_WINDOWEVENT_FOCUS_LOST) std::memset(keyTable, 0, sizeof keyTable);
        break;
    default:
        break;
    }
}

void GameWindow::ReadKeyTable(uint8_t table[256]) { std::memcpy(table, keyTable, sizeof keyTable); }

void GameWindow::ReadCursor(int& x, int& y, ScreenRect& windowRect) {
    // The window-relative state stays current where the global one can go stale (Xvfb).
    int cx = 0, cy = 0, wx = 0, wy = 0, w = 0, h = 0;
    SDL_GetMouseState(&cx, &cy);
    SDL_GetWindowPosition(window, &wx, &wy);
    SDL_GetWindowSize(window, &w, &h);
    int top = 0, left = 0, bottom = 0, right = 0;
    SDL_GetWindowBordersSize(window, &top, &left, &bottom, &right);
    x = wx + cx;
    y = wy + cy;
    windowRect = {wx - left, wy - top, wx + w + right, wy + h + bottom};
}

bool GameWindow::ReadClientCursor(int& x, int& y, int& width, int& height) {
    SDL_GetMouseState(&x, &y);
    SDL_GetWindowSize(window, &width, &height);
    return width > 0 && height > 0;
}

int GameWindow::TakeWheelSteps() {
    const int steps = wheelSteps;
    wheelSteps = 0;
    return steps;
}

}  // namespace platform
