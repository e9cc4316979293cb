#include "input/accelerators.h"

#include <array>

namespace kalmora {

namespace {

struct ModifierRange {
    int first;  // and the 99 numbers that follow
    bool ctrl, alt, shift;
};

constexpr std::array<ModifierRange, 6> kModifierRanges = {{
    {50100, false, true, false},
    {50300, false, true, true},
    {51000, true, false, false},
    {51100, true, true, false},
    {51200, true, false, true},
    {51300, true, true, true},
}};

int Number(const Shortcut& press) {
    return kFirstAccelerator + press.key + 1000 * press.ctrl + 200 * press.shift + 100 * press.alt;
}

bool IsPlainAccelerator(KeyCode key) { return key >= kKeyF1 && key <= kKeyEscape && key != kKeySpace; }

}  // namespace

int AcceleratorId(const Shortcut& press) {
    if (!IsKeyCode(press.key)) return 0;
    if (!press.ctrl && !press.alt && (press.shift || !IsPlainAccelerator(press.key))) return 0;
    return Number(press);
}

int AcceleratorOf(const Event& event) {
    if (event.type != EventType::Key) return 0;
    // The codes of platform/keys.h are the virtual keys; held by PlainAccelerators.EachKeyOfAnEventIsKnown.
    return AcceleratorId(Shortcut{event.ctrl, event.alt, event.shift, KeyCodeOf(event.key)});
}

Shortcut DecodeAccelerator(int id) {
    Shortcut press;
    for (const ModifierRange& range : kModifierRanges) {
        if (id < range.first || id > range.first + 99) continue;
        press.ctrl = range.ctrl;
        press.alt = range.alt;
        press.shift = range.shift;
    }
    press.key = 0;
    press.key = id - Number(press);
    return press;
}

}  // namespace kalmora
