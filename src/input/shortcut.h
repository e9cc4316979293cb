// One key with its modifiers, as a command is bound to it and as a line of a key file spells it.
#pragma once

#include <string>
#include <string_view>

#include "input/key_names.h"

namespace kalmora {

struct Shortcut {
    bool ctrl = false;
    bool alt = false;
    bool shift = false;
    KeyCode key = kNoKey;
    friend bool operator==(const Shortcut&, const Shortcut&) = default;
};

// Adds what the text spells to the shortcut: "C+A+S+END". A modifier is only ever set, the last key wins, and
// everything unknown is passed over, so any text is taken: "ENTER" spells the key E, "BACKSPACE" the key
// SPACE.
void ParseShortcut(std::string_view text, Shortcut& shortcut);

// "C+A+S+END"; without a key only the modifiers. ParseShortcut of it gives the same shortcut.
std::string ShortcutText(const Shortcut& shortcut);

}  // namespace kalmora
