// A hot key, which works whichever program has the focus: what is registered for a command of
// kHotKeyCommands.
#pragma once

#include <string>

#include "input/shortcut.h"

namespace kalmora {

// A key going down or up, as it is handed to the machine.
struct KeyStroke {
    enum class Kind { Down, Up };
    VirtualKey key = 0;
    Kind kind = Kind::Down;
    friend bool operator==(const KeyStroke&, const KeyStroke&) = default;
};

struct HotKey {
    // Bits of `modifiers`.
    static constexpr int kAlt = 1, kControl = 2, kShift = 4;

    int id = 0;  // the command
    int modifiers = 0;
    VirtualKey virtualKey = 0;  // 0 is no key: registering it fails
    friend bool operator==(const HotKey&, const HotKey&) = default;
};

// The virtual key that a hot key is registered with. `before` is that of the hot key before: "1" to "9",
// HOME and END have none of their own here and take it. That is meant, and differs from VirtualKeyOf.
VirtualKey HotKeyVirtualKey(KeyCode key, VirtualKey before);

HotKey MakeHotKey(int command, const Shortcut& shortcut, VirtualKey before);

// "[Ctrl+Alt+Shift+X]", for the log.
std::string HotKeyText(const Shortcut& shortcut);

}  // namespace kalmora
