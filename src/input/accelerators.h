// The accelerators: which key presses become commands of the main window, and under which numbers.
//
// The number of a key press is 50000 + key + 100 with Alt + 200 with Shift + 1000 with Ctrl. A plain letter,
// digit, SPACE, HOME or END and any key with Shift alone is no accelerator: it reaches the focused window as
// it is, which is how typing opens the editor in the slide show.
#pragma once

#include "input/shortcut.h"
#include "platform/window.h"

namespace kalmora {

inline constexpr int kFirstAccelerator = 50000;
inline constexpr int kLastAccelerator = 51356;
// Every command in this range is taken for a key press, also the numbers that no key press has.
inline constexpr int kLastKeyCommand = 59999;

constexpr bool IsKeyCommand(int id) { return id >= kFirstAccelerator && id <= kLastKeyCommand; }

// The number of a key press; 0 when the accelerators do not have it.
int AcceleratorId(const Shortcut& press);
// The same for a Key event of a window; 0 for every other event.
int AcceleratorOf(const Event& event);

// The key press of a number. The key is what is left when the modifiers are taken away, so that a number
// which no key press has gives a `key` of 57 and more.
Shortcut DecodeAccelerator(int id);

}  // namespace kalmora
