// The table of commands: every action of the user ends here as a number.
#pragma once

#include "platform/window.h"

namespace kalmora {

// Runs a command; only the low 16 bits count, and a number that no row has does nothing. Notes the activity.
// GUI thread; a getter's thread may call it with 1043.
void DispatchCommand(Window& window, int id);

// The way in for accelerators, hot keys and tray items: an id from 50000 to 59999 is a key and is translated
// by the key table first. False when no command is bound to that key, so that the key goes on to the window.
bool RouteCommand(Window& window, int id);

}  // namespace kalmora
