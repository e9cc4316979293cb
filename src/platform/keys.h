// The codes that say which key was pressed (Event::key): the key itself, not the character that it makes
// with the modifiers. Letters and digits have their ASCII codes, 'A' to 'Z' and '0' to '9'.
#pragma once

namespace kalmora::keys {

inline constexpr int kNone = 0;  // a key that has no code here; its text may still arrive as a Character
inline constexpr int kBackspace = 0x08;
inline constexpr int kTab = 0x09;
inline constexpr int kEnter = 0x0D;
inline constexpr int kShift = 0x10;  // the modifiers are only ever sent (hot_keys.h)
inline constexpr int kControl = 0x11;
inline constexpr int kAlt = 0x12;
inline constexpr int kPause = 0x13;
inline constexpr int kEscape = 0x1B;
inline constexpr int kSpace = 0x20;
inline constexpr int kPageUp = 0x21;
inline constexpr int kPageDown = 0x22;
inline constexpr int kEnd = 0x23;
inline constexpr int kHome = 0x24;
inline constexpr int kLeft = 0x25;
inline constexpr int kUp = 0x26;
inline constexpr int kRight = 0x27;
inline constexpr int kDown = 0x28;
inline constexpr int kInsert = 0x2D;
inline constexpr int kDelete = 0x2E;
inline constexpr int kF1 = 0x70;  // F2 to F12 follow

constexpr int Letter(char upperCase) { return upperCase; }
constexpr int Digit(int digit) { return '0' + digit; }
constexpr int Function(int number) { return kF1 + number - 1; }

}  // namespace kalmora::keys
