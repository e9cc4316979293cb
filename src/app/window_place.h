// Where the main window is put: as its settings say, unless the user could not reach it there.
#pragma once

#include <vector>

#include "base/geometry.h"
#include "state/app_state.h"

namespace kalmora {

// The frame of the rectangle. One that is upside down (its right edge left of its left one, or its lower edge
// above its upper one) takes the size of the default; one of which no screen shows enough to take hold of
// goes to the first screen, no larger than that. Without screens the place stays.
Rect UsableFrame(const WindowRectValue& wanted, const std::vector<Rect>& screens);

}  // namespace kalmora
