// PressState: the mouse button that is held down, and on what. Written by the GUI thread; the heartbeat's
// thread reads what is atomic.
#pragma once

#include <string>

#include "base/geometry.h"
#include "state/shared_values.h"

namespace kalmora {

struct PressState {
    SharedFlag PressActive = 0;
    Point PressPoint;  // client coordinates
    SharedFlag ObjectHit = 0;
    std::string DragPath;  // path of the object under the last press
    Rect DragRect;         // screen rectangle of a rating drop
};

}  // namespace kalmora
