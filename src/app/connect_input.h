// Puts the keys and the diary of what was looked at in place: the room of input into the shell's hooks.
#pragma once

namespace kalmora {

class KeyConfig;

// The program's key lists. Made on first use. GUI thread.
KeyConfig& Keys();

// Once, at start, before the main window exists.
void ConnectInput();

}  // namespace kalmora
