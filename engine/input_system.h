#pragma once
#include <cstdint>
#include <map>
#include <vector>

#include "platform/input_source.h"

// Samples keys and mouse buttons once per loop turn. A release is an edge between two
// samples: a key held over many turns is released in exactly one, the first that finds it up.
class InputSystem {
public:
    virtual ~InputSystem() = default;
    virtual bool Init(platform::InputSource* source);
    virtual void Shutdown() {}
    virtual void Update();

    void BindKey(uint8_t action, uint8_t key);
    bool IsKeyDown(uint8_t key) const { return (current[key] & 0x80) != 0; }
    bool WasKeyReleased(uint8_t key) const { return !(current[key] & 0x80) && (previous[key] & 0x80); }
    bool WasKeyPressed(uint8_t key) const { return (current[key] & 0x80) && !(previous[key] & 0x80); }
    bool IsActionDown(uint8_t action);
    bool WasActionReleased(uint8_t action);
    // The cursor in units of the window's outer rectangle: (0, 0) top left, (1, 1) bottom right.
    void GetCursor(float out[2]) const;
    // The cursor in 2D screen units of the drawing area, where the game draws its panels;
    // the window's outer units where the source cannot tell the two apart.
    void GetClientCursor(float out[2]) const;
    // Wheel steps taken in the last Update: positive scrolls up.
    int WheelSteps() const { return wheel; }

    const std::vector<uint8_t>* BoundKeys(uint8_t action) const;

private:
    platform::InputSource* source = nullptr;
    std::map<uint8_t, std::vector<uint8_t>> bindings;
    uint8_t current[256] = {};
    uint8_t previous[256] = {};
    int wheel = 0;
};
