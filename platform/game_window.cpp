#include "platform/game_window.h"

#include <SDL2/SDL.h>
#include <SDL2/SDL_syswm.h>

#include <cstdio>

namespace platform {

namespace {

bool InitVideo() {
    if (SDL_WasInit(SDL_INIT_VIDEO)) return true;
    if (SDL_InitSubSystem(SDL_INIT_VIDEO) != 0) {
        std::fprintf(stderr, "Cannot start the video system: %s\n", SDL_GetError());
        return false;
    }
    return true;
}

void RequestPixelFormat(int depthBits) {
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_PROFILE_MASK, SDL_GL_CONTEXT_PROFILE_COMPATIBILITY);
    SDL_GL_SetAttribute(SDL_GL_RED_SIZE, 8);
    SDL_GL_SetAttribute(SDL_GL_GREEN_SIZE, 8);
    SDL_GL_SetAttribute(SDL_GL_BLUE_SIZE, 8);
    SDL_GL_SetAttribute(SDL_GL_ALPHA_SIZE, 8);
    SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, depthBits);
    SDL_GL_SetAttribute(SDL_GL_STENCIL_SIZE, 0);
    SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1);
}

}  // namespace

std::unique_ptr<GameWindow> GameWindow::Create(const std::string& title, int outerWidth, int outerHeight) {
    if (!InitVideo()) return nullptr;
    std::unique_ptr<GameWindow> result(new GameWindow());
    // The closest pixel format: 32 depth bits where offered, else 24, else 16.
    for (int depth : {32, 24, 16}) {
        RequestPixelFormat(depth);
        result->window = SDL_CreateWindow(title.c_str(), 0, 0, outerWidth, outerHeight,
                                          SDL_WINDOW_OPENGL | SDL_WINDOW_RESIZABLE | SDL_WINDOW_SHOWN);
        if (result->window) break;
    }
    if (!result->window) {
        std::fprintf(stderr, "Cannot open the game window: %s\n", SDL_GetError());
        return nullptr;
    }
    // The size asked for is the outer one; take the frame off the client area.
    int top = 0, left = 0, bottom = 0, right = 0;
    if (SDL_GetWindowBordersSize(result->window, &top, &left, &bottom, &right) == 0 &&
        (top | left | bottom | right) != 0) {
        SDL_SetWindowSize(result->window, outerWidth - left - right, outerHeight - top - bottom);
        SDL_SetWindowPosition(result->window, left, top);
    }
    // The cursor is read as state each frame; its motion events would only pile up.
    SDL_EventState(SDL_MOUSEMOTION, SDL_IGNORE);
    SDL_EventState(SDL_TEXTINPUT, SDL_IGNORE);
    SDL_EventState(SDL_TEXTEDITING, SDL_IGNORE);
    SDL_StopTextInput();
    return result;
}

GameWindow::~GameWindow() {
    DestroyGLContext();
    if (window) SDL_DestroyWindow(window);
    SDL_QuitSubSystem(SDL_INIT_VIDEO);
}

PumpResult GameWindow::PumpOneEvent() {
    SDL_Event event;
    if (!SDL_PollEvent(&event)) return PumpResult::Idle;
    TrackInput(event);
    if (event.type == SDL_QUIT) return PumpResult::Quit;
    if (event.type == SDL_WINDOWEVENT && event.window.event == SDL_WINDOWEVENT_CLOSE) return PumpResult::Quit;
    return PumpResult::Handled;
}

bool GameWindow::CreateGLContext() {
    if (glContext) return true;
    glContext = SDL_GL_CreateContext(window);
    if (!glContext) {
        std::fprintf(stderr, "Cannot make an OpenGL context: %s\n", SDL_GetError());
        return false;
    }
    // Frames are paced by the game's own timer, not by the display.
    SDL_GL_SetSwapInterval(0);
    return true;
}

void GameWindow::DestroyGLContext() {
    if (!glContext) return;
    SDL_GL_MakeCurrent(window, nullptr);
    SDL_GL_DeleteContext(glContext);
    glContext = nullptr;
}

void GameWindow::MakeGLCurrent(bool current) {
    if (glContext) SDL_GL_MakeCurrent(window, current ? glContext : nullptr);
}

void GameWindow::SwapBuffers() { SDL_GL_SwapWindow(window); }

void GameWindow::ClientSize(int& width, int& height) const { SDL_GL_GetDrawableSize(window, &width, &height); }

unsigned long GameWindow::NativeId() const {
    SDL_SysWMinfo info;
    SDL_VERSION(&info.version);
    if (!SDL_GetWindowWMInfo(window, &info)) return 0;
#if defined(SDL_VIDEO_DRIVER_X11)
    if (info.subsystem == SDL_SYSWM_X11) return static_cast<unsigned long>(info.info.x11.window);
#endif
    return 0;
}

}  // namespace platform
