#pragma once
#include <cstdint>
#include <memory>
#include <string>

#include "platform/input_source.h"

struct SDL_Window;
union SDL_Event;

namespace platform {

enum class PumpResult { Idle, Handled, Quit };

// The one top-level window with its OpenGL compatibility context. Its outer size is the one
// asked for; the context is made separately, when the graphics system starts.
class GameWindow : public InputSource {
public:
    // Opens the window, or gives null and writes the reason to standard error.
    static std::unique_ptr<GameWindow> Create(const std::string& title, int outerWidth, int outerHeight);
    ~GameWindow() override;

    // Handles at most one waiting event without waiting; Quit once the window was closed.
    PumpResult PumpOneEvent();

    bool CreateGLContext();
    void DestroyGLContext();
    bool HasGLContext() const { return glContext != nullptr; }
    void MakeGLCurrent(bool current);
    void SwapBuffers();
    void ClientSize(int& width, int& height) const;

    void ReadKeyTable(uint8_t table[256]) override;
    void ReadCursor(int& x, int& y, ScreenRect& windowRect) override;
    bool ReadClientCursor(int& x, int& y, int& width, int& height) override;
    int TakeWheelSteps() override;

    // The X11 window id, for tests that talk to the window from outside; 0 elsewhere.
    unsigned long NativeId() const;

private:
    GameWindow() = default;
    void TrackInput(const SDL_Event& event);

    SDL_Window* window = nullptr;
    uint8_t keyTable[256] = {};
    int wheelSteps = 0;
    void* glContext = nullptr;
};

}  // namespace platform
