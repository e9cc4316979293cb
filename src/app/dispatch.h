// The table of commands: every action of the user ends here as a number.
#pragma once

#include "app/app_parts.h"
#include "platform/window.h"

namespace kalmora {

// Runs a command; only the low 16 bits count, and a number that no row has does nothing. Keeps the time of
// the activity. GUI thread; a getter's thread may call it with 1043.
void DispatchCommand(const AppParts& parts, Window& window, int id);

// The way in for accelerators, hot keys and tray items: an id from 50000 to 59999 is a key and is translated
// by the key table first. False when no command is bound to that key, so that the key is passed on to the
// window.
bool RouteCommand(const AppParts& parts, Window& window, int id);

}  // namespace kalmora
