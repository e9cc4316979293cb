// Keys for the whole desktop: hot keys that work whichever program has the focus, and keys that are pressed
// for another program as if by hand. GUI thread.
//
// Both want an X display. A hot key is refused where there is none, and where the keyboard has no such key or
// another program holds it; a stroke is dropped.
#pragma once

#include "platform/window.h"

namespace kalmora {

struct KeyCombination {
    bool ctrl = false;
    bool alt = false;
    bool shift = false;
    int key = 0;  // a code of keys.h
    friend bool operator==(const KeyCombination&, const KeyCombination&) = default;
};

enum class HotKeyResult {
    Registered,
    Taken,      // by another program
    Own,        // by this one under another id
    NoSuchKey,  // not on this keyboard
    NoDisplay,  // no X display: no program can have a hot key here
};

// From now on the combination sends Command `id` to the window, once a press: a key that is held down repeats
// nothing. CapsLock and NumLock do not matter. The same id again takes the place of the first. A press while
// the window no longer exists does nothing.
HotKeyResult RegisterHotKey(Window& target, int id, const KeyCombination& combination);
// Nothing is done for an id that is not registered.
void UnregisterHotKey(int id);

enum class KeyMotion { Down, Up };
// Moves a key (a code of keys.h, the modifiers included) for whichever window has the focus. False when there
// is no way to do so or no such key.
bool SendKey(int key, KeyMotion motion);

}  // namespace kalmora
