#pragma once
#include <cstdint>

// Virtual-key codes: the numbering the key table and the key bindings use.
namespace vk {
constexpr uint8_t LeftButton = 0x01;
constexpr uint8_t RightButton = 0x02;
constexpr uint8_t MiddleButton = 0x04;
constexpr uint8_t ExtraButton1 = 0x05;
constexpr uint8_t ExtraButton2 = 0x06;
constexpr uint8_t Backspace = 0x08;
constexpr uint8_t Tab = 0x09;
constexpr uint8_t Enter = 0x0D;
constexpr uint8_t Shift = 0x10;
constexpr uint8_t Control = 0x11;
constexpr uint8_t Alt = 0x12;
constexpr uint8_t Pause = 0x13;
constexpr uint8_t CapsLock = 0x14;
constexpr uint8_t Escape = 0x1B;
constexpr uint8_t Space = 0x20;
constexpr uint8_t PageUp = 0x21;
constexpr uint8_t PageDown = 0x22;
constexpr uint8_t End = 0x23;
constexpr uint8_t Home = 0x24;
constexpr uint8_t Left = 0x25;
constexpr uint8_t Up = 0x26;
constexpr uint8_t Right = 0x27;
constexpr uint8_t Down = 0x28;
constexpr uint8_t Insert = 0x2D;
constexpr uint8_t Delete = 0x2E;
constexpr uint8_t Digit0 = 0x30;  // '0' to '9' follow
constexpr uint8_t LetterA = 0x41; // 'A' to 'Z' follow
constexpr uint8_t Numpad0 = 0x60; // numpad 0 to 9 follow
constexpr uint8_t F1 = 0x70;      // F1 to F12 follow
constexpr uint8_t LeftShift = 0xA0;
constexpr uint8_t RightShift = 0xA1;
constexpr uint8_t LeftControl = 0xA2;
constexpr uint8_t RightControl = 0xA3;
constexpr uint8_t LeftAlt = 0xA4;
constexpr uint8_t RightAlt = 0xA5;
}  // namespace vk
