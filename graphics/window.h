#pragma once
#include <memory>
#include <string>

#include "platform/game_window.h"

// The game's one window. The engine creates it first and pumps one of its events per turn.
class Window {
public:
    bool Create(const std::string& title, int width, int height);
    // Handles at most one waiting event; false once the quit event has been taken.
    bool PumpMessage();
    platform::GameWindow* Handle() const { return native.get(); }
    void Release() { native.reset(); }

private:
    std::unique_ptr<platform::GameWindow> native;
};
