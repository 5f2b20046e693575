#include "engine/input_system.h"

#include <cstring>

bool InputSystem::Init(platform::InputSource* inputSource) {
    source = inputSource;
    std::memset(current, 0, sizeof current);
    std::memset(previous, 0, sizeof previous);
    return true;
}

void InputSystem::Update() {
    std::memcpy(previous, current, sizeof current);
    wheel = 0;
    if (source) {
        source->ReadKeyTable(current);
        wheel = source->TakeWheelSteps();
    }
}

void InputSystem::BindKey(uint8_t action, uint8_t key) { bindings[action].push_back(key); }

// An action never bound gets an empty list entered by the lookup and answers false.
bool InputSystem::IsActionDown(uint8_t action) {
    for (uint8_t key : bindings[action])
        if (IsKeyDown(key)) return true;
    return false;
}

bool InputSystem::WasActionReleased(uint8_t action) {
    for (uint8_t key : bindings[action])
        if (WasKeyReleased(key)) return true;
    return false;
}

const std::vector<uint8_t>* InputSystem::BoundKeys(uint8_t action) const {
    auto it = bindings.find(action);
    return it == bindings.end() ? nullptr : &it->second;
}

void InputSystem::GetCursor(float out[2]) const {
    out[0] = out[1] = 0.0f;
    if (!source) return;
    int cx = 0, cy = 0;
    platform::ScreenRect rect;
    source->ReadCursor(cx, cy, rect);
    int width = rect.right - rect.left, height = rect.bottom - rect.top;
    if (width == 0 || height == 0) return;
    out[0] = float(cx - rect.left) / float(width);
    out[1] = 1.0f + float(cy - rect.bottom) / float(height);
}

void InputSystem::GetClientCursor(float out[2]) const {
    int x = 0, y = 0, width = 0, height = 0;
    if (!source || !source->ReadClientCursor(x, y, width, height)) {
        GetCursor(out);
        return;
    }
    out[0] = float(x) / float(width);
    out[1] = float(y) / float(height);
}
