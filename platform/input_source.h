#pragma once
#include <cstdint>

namespace platform {

// A rectangle in screen pixels; right and bottom are one past the last pixel.
struct ScreenRect {
    int left = 0, top = 0, right = 0, bottom = 0;
};

// Where the input system reads the keyboard, mouse buttons and cursor. The game window
// provides one; tests provide their own.
class InputSource {
public:
    virtual ~InputSource() = default;
    // Fills a 256-entry table indexed by virtual-key code; a key is down when its byte has
    // the high bit (0x80) set. Mouse buttons are keys 1 (left), 2 (right), 4 (middle), 5 and 6.
    virtual void ReadKeyTable(uint8_t table[256]) = 0;
    // The cursor and the window's outer rectangle (frame included), both in screen pixels.
    virtual void ReadCursor(int& x, int& y, ScreenRect& windowRect) = 0;
    // The cursor in pixels of the drawing area (no frame), and that area's size; false when
    // the source has no window.
    virtual bool ReadClientCursor(int& x, int& y, int& width, int& height) {
        x = y = width = height = 0;
        return false;
    }
    // Wheel steps since the last call: positive away from the player (scroll up).
    virtual int TakeWheelSteps() { return 0; }
};

}  // namespace platform
