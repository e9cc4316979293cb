// What the key configuration asks of the rest of the program: which of its windows are up, and the machine's
// keyboard. Implemented by the shell, handed over when the key configuration is made. GUI thread.
#pragma once

#include "input/hot_key_list.h"

namespace kalmora {

class OpenWindows {
public:
    virtual ~OpenWindows() = default;
    virtual bool IsEditorOpen() const = 0;
    virtual bool IsSlideShowShown() const = 0;
    virtual bool IsNeighborShown() const = 0;
};

class Keyboard {
public:
    virtual ~Keyboard() = default;
    // Presses or releases a key as the user would, for whichever window has the focus.
    virtual void Send(const KeyStroke& stroke) = 0;
    // False when the key cannot be had, for instance because another program has it.
    virtual bool Register(const HotKey& hotKey) = 0;
    virtual void Unregister(int command) = 0;
};

}  // namespace kalmora
