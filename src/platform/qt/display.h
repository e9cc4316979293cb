// Choosing the way to the screen before the toolkit does, which would end the program where there is none.
#pragma once

#include "platform/window.h"

namespace kalmora::qt {

// Sets the toolkit's platform for the display that is wanted, unless the environment names one already. False
// when no screen can be reached. Before the toolkit stands.
bool PreparePlatform(Application::Display display);

}  // namespace kalmora::qt
