// Where the screens of the desktop are.
#pragma once

#include <vector>

#include "base/geometry.h"

namespace kalmora {

// The areas of all screens that windows may use, the main one first, in the coordinates of window frames.
// Empty without a display. GUI thread.
std::vector<Rect> ScreenAreas();

}  // namespace kalmora
