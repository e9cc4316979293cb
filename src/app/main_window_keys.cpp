#include "app/main_window_keys.h"

#include "app/main_window_events.h"
#include "base/commands.h"
#include "input/hot_key_list.h"
#include "platform/keys.h"
#include "views/bar/button_bar.h"
#include "views/control/press_button.h"

namespace kalmora {

std::string KeyOfCommand(const KeyConfig& keys, int command) {
    for (const KeyBinding& binding : keys.Bindings(KeyContext::Main))
        if (binding.id == command && binding.shortcut.key != kNoKey) return HotKeyText(binding.shortcut);
    return {};
}

Tip ButtonTip(const KeyConfig& keys, Point client) {
    ButtonInfo button;
    if (!FindButton(client, &button)) return {};
    // The label of a month goes up a level, as that key does.
    const int command = button.command == kCommandToYearly ? kCommandLevelUp : button.command;
    const std::string key = command == 0 ? std::string() : KeyOfCommand(keys, command);
    return {key.empty() ? button.tip : button.tip + " " + key, button.area};
}

// Tab and its like are no accelerators, so that every button can be reached with any key files.
bool OnKey(const AppParts& parts, const Event& event) {
    if (event.ctrl || event.alt) return false;
    switch (event.key) {
        case keys::kTab:
            MoveButtonFocus(event.shift ? -1 : +1);
            return true;
        case keys::kEnter:
        case keys::kSpace:
            return PressFocusedButton(parts.calendar);
        case keys::kEscape:
            return ClearButtonFocus();
        default:
            return false;
    }
}

}  // namespace kalmora
