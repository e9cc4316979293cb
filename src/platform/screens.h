// Where the screens of the desktop are, and what they show. GUI thread.
#pragma once

#include <vector>

#include "base/geometry.h"
#include "platform/image.h"

namespace kalmora {

// The areas of all screens that windows may use, the main one first, in the coordinates of window frames.
// Empty without a display.
std::vector<Rect> ScreenAreas();

// The rectangle around all screens, panels and docks included. Empty without a display.
Rect DesktopArea();

// What is to be seen in the area (coordinates of window frames), whichever program shows it, with all device
// pixels. Black where no screen is. Empty when the area is empty or touches no screen, and where the system
// does not allow it.
Image GrabScreen(const Rect& area);

}  // namespace kalmora
