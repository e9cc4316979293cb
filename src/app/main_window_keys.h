// The keyboard's way to the buttons, and the tip of a button. GUI thread.
#pragma once

#include <string>

#include "input/key_config.h"
#include "platform/window.h"

namespace kalmora {

// "Next [RIGHT]": what the button under the point does, and the key that does the same. Empty without a
// button.
Tip ButtonTip(const KeyConfig& keys, Point client);

// The key that the main list binds to a command, as "[Ctrl+F1]"; empty for none.
std::string KeyOfCommand(const KeyConfig& keys, int command);

}  // namespace kalmora
