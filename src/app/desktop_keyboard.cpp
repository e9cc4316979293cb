#include "app/desktop_keyboard.h"

#include "app/rooms_to_come.h"
#include "base/log.h"
#include "platform/hot_keys.h"
#include "views/model/calendar_store.h"

namespace kalmora {

namespace {

const char* Reason(HotKeyResult result) {
    switch (result) {
        case HotKeyResult::Taken:
            return "another program has it";
        case HotKeyResult::Own:
            return "another command has it";
        case HotKeyResult::NoSuchKey:
            return "this keyboard has no such key";
        default:
            return "there is no X display";
    }
}

}  // namespace

void DesktopKeyboard::Send(const KeyStroke& stroke) {
    SendKey(stroke.key, stroke.kind == KeyStroke::Kind::Down ? KeyMotion::Down : KeyMotion::Up);
}

bool DesktopKeyboard::Register(const HotKey& hotKey) {
    // Taken, it would do nothing here and be missed in the programs that use it.
    if (IsOfRoomToCome(hotKey.id)) return true;
    Window* window = MainWindow();
    if (!window) return false;
    // The codes of platform/keys.h are the virtual keys.
    const KeyCombination combination{(hotKey.modifiers & HotKey::kControl) != 0,
                                     (hotKey.modifiers & HotKey::kAlt) != 0,
                                     (hotKey.modifiers & HotKey::kShift) != 0, hotKey.virtualKey};
    const HotKeyResult result = RegisterHotKey(*window, hotKey.id, combination);
    if (result == HotKeyResult::Registered) return true;
    Log("[HotKey] %d: %s", hotKey.id, Reason(result));
    return false;
}

void DesktopKeyboard::Unregister(int command) { UnregisterHotKey(command); }

}  // namespace kalmora
