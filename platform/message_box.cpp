#include "platform/message_box.h"

#include <SDL2/SDL.h>

#include <cstdio>
#include <cstdlib>

namespace platform {

namespace {

bool Set(const char* name) {
    const char* value = std::getenv(name);
    return value && *value;
}

bool BoxesPossible() {
    if (Set("VELLORAN_MESSAGES_TO_STDERR")) return false;
    if (!Set("DISPLAY") && !Set("WAYLAND_DISPLAY")) return false;
    const char* driver = std::getenv("SDL_VIDEODRIVER");
    if (driver && (std::string(driver) == "offscreen" || std::string(driver) == "dummy")) return false;
    return true;
}

}  // namespace

void ShowMessage(const std::string& text) {
    std::fprintf(stderr, "%s\n", text.c_str());
    std::fflush(stderr);
    if (BoxesPossible()) SDL_ShowSimpleMessageBox(SDL_MESSAGEBOX_INFORMATION, "", text.c_str(), nullptr);
}

}  // namespace platform
