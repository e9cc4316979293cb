#include "input/key_names.h"

#include <array>
#include <cstddef>

namespace kalmora {

namespace {

struct KeyRow {
    std::string_view name;
    VirtualKey virtualKey;
};

// In the order of the key codes.
constexpr std::array<KeyRow, kKeyCount> kKeys = {{
    {"A", 0x41},      {"B", 0x42},    {"C", 0x43},    {"D", 0x44},    {"E", 0x45},     {"F", 0x46},
    {"G", 0x47},      {"H", 0x48},    {"I", 0x49},    {"J", 0x4A},    {"K", 0x4B},     {"L", 0x4C},
    {"M", 0x4D},      {"N", 0x4E},    {"O", 0x4F},    {"P", 0x50},    {"Q", 0x51},     {"R", 0x52},
    {"S", 0x53},      {"T", 0x54},    {"U", 0x55},    {"V", 0x56},    {"W", 0x57},     {"X", 0x58},
    {"Y", 0x59},      {"Z", 0x5A},  //
    {"0", 0x30},      {"1", 0x31},    {"2", 0x32},    {"3", 0x33},    {"4", 0x34},     {"5", 0x35},
    {"6", 0x36},      {"7", 0x37},    {"8", 0x38},    {"9", 0x39},  //
    {"F1", 0x70},     {"F2", 0x71},   {"F3", 0x72},   {"F4", 0x73},   {"F5", 0x74},    {"F6", 0x75},
    {"F7", 0x76},     {"F8", 0x77},   {"F9", 0x78},   {"F10", 0x79},  {"F11", 0x7A},   {"F12", 0x7B},
    {"SPACE", 0x20},  {"UP", 0x26},   {"DOWN", 0x28}, {"LEFT", 0x25}, {"RIGHT", 0x27}, {"PAUSE", 0x13},
    {"ESCAPE", 0x1B}, {"HOME", 0x24}, {"END", 0x23},
}};

const KeyRow& RowOf(KeyCode key) { return kKeys[static_cast<std::size_t>(key)]; }

}  // namespace

std::string_view KeyName(KeyCode key) { return IsKeyCode(key) ? RowOf(key).name : std::string_view{}; }

VirtualKey VirtualKeyOf(KeyCode key) { return IsKeyCode(key) ? RowOf(key).virtualKey : 0; }

KeyCode KeyCodeOf(VirtualKey virtualKey) {
    for (KeyCode key = 0; key < kKeyCount; ++key) {
        if (RowOf(key).virtualKey == virtualKey) return key;
    }
    return kNoKey;
}

}  // namespace kalmora
