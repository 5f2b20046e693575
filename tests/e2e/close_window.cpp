// close_window WINDOW_ID: asks an X window to close the way a window manager would, with a
// WM_DELETE_WINDOW client message. Xvfb has no window manager and xdotool cannot do this.
#include <X11/Xlib.h>

#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: close_window WINDOW_ID\n");
        return 2;
    }
    Display* display = XOpenDisplay(nullptr);
    if (!display) {
        std::fprintf(stderr, "close_window: cannot open the display\n");
        return 1;
    }
    Window window = std::strtoul(argv[1], nullptr, 0);
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = XInternAtom(display, "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = long(XInternAtom(display, "WM_DELETE_WINDOW", False));
    event.xclient.data.l[1] = CurrentTime;
    Status sent = XSendEvent(display, window, False, NoEventMask, &event);
    XFlush(display);
    XCloseDisplay(display);
    return sent ? 0 : 1;
}
