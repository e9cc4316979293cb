// The 57 keys that a command can be bound to: their numbers, their names in the key files, their virtual
// keys.
//
// Names and virtual keys are fixed: the key files keep the first, the hot keys are registered under the
// second.
#pragma once

#include <string_view>

namespace kalmora {

// 0 to 56, or kNoKey.
using KeyCode = int;

inline constexpr KeyCode kNoKey = -1;
inline constexpr KeyCode kKeyA = 0;    // to 25, "Z"
inline constexpr KeyCode kKey0 = 26;   // to 35, "9"
inline constexpr KeyCode kKeyF1 = 36;  // to 47, "F12"
inline constexpr KeyCode kKeySpace = 48;
inline constexpr KeyCode kKeyUp = 49;
inline constexpr KeyCode kKeyDown = 50;
inline constexpr KeyCode kKeyLeft = 51;
inline constexpr KeyCode kKeyRight = 52;
inline constexpr KeyCode kKeyPause = 53;
inline constexpr KeyCode kKeyEscape = 54;
inline constexpr KeyCode kKeyHome = 55;
inline constexpr KeyCode kKeyEnd = 56;
inline constexpr int kKeyCount = 57;

// The number under which a key is pressed and released for other programs.
using VirtualKey = int;

inline constexpr VirtualKey kVirtualShift = 0x10;
inline constexpr VirtualKey kVirtualControl = 0x11;
inline constexpr VirtualKey kVirtualAlt = 0x12;

constexpr bool IsKeyCode(KeyCode key) { return key >= 0 && key < kKeyCount; }

// "A", "F12", "SPACE"; empty for a number that is no key.
std::string_view KeyName(KeyCode key);
// 0 for a number that is no key.
VirtualKey VirtualKeyOf(KeyCode key);
// The inverse; kNoKey for a virtual key that is none of the 57.
KeyCode KeyCodeOf(VirtualKey virtualKey);

}  // namespace kalmora
