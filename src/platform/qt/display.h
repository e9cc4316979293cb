// Choosing the way to the screen before the toolkit does, which would end the program where there is none.
#pragma once

#include "platform/window.h"

namespace kalmora::qt {

// The environment variable that names the toolkit's platform.
inline constexpr char kPlatformVariable[] = "QT_QPA_PLATFORM";

// Sets the toolkit's platform for the display that is wanted, unless the environment names one already. False
// when no screen can be reached. Before the toolkit is started.
bool PreparePlatform(Application::Display display);

// False on an X display on which no window manager runs, and without a display: what is minimised there is
// never seen again. GUI thread.
bool IsWindowManagerThere();

// True when a tray of the X display takes icons in: it owns the selection named after the tray. False without
// an X display. Asks the X server. GUI thread.
bool HasTrayOwner();

}  // namespace kalmora::qt
