#include "graphics/window.h"

bool Window::Create(const std::string& title, int width, int height) {
    native = platform::GameWindow::Create(title, width, height);
    return native != nullptr;
}

bool Window::PumpMessage() {
    if (!native) return false;
    return native->PumpOneEvent() != platform::PumpResult::Quit;
}
