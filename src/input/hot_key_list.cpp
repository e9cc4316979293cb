#include "input/hot_key_list.h"

namespace kalmora {

VirtualKey HotKeyVirtualKey(KeyCode key, VirtualKey before) {
    // Held by HotKeys.DigitsButZeroAndHomeAndEndTakeTheKeyOfTheEntryBefore.
    const bool isMapped = IsKeyCode(key) && (key <= kKey0 || (key >= kKeyF1 && key <= kKeyEscape));
    return isMapped ? VirtualKeyOf(key) : before;
}

HotKey MakeHotKey(int command, const Shortcut& shortcut, VirtualKey before) {
    HotKey hotKey;
    hotKey.id = command;
    if (shortcut.ctrl) hotKey.modifiers |= HotKey::kControl;
    if (shortcut.alt) hotKey.modifiers |= HotKey::kAlt;
    if (shortcut.shift) hotKey.modifiers |= HotKey::kShift;
    hotKey.virtualKey = HotKeyVirtualKey(shortcut.key, before);
    return hotKey;
}

std::string HotKeyText(const Shortcut& shortcut) {
    std::string text = "[";
    if (shortcut.ctrl) text += "Ctrl+";
    if (shortcut.alt) text += "Alt+";
    if (shortcut.shift) text += "Shift+";
    text += KeyName(shortcut.key);
    text += "]";
    return text;
}

}  // namespace kalmora
