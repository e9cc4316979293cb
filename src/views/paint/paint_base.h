// PaintBase: the whole picture of the period in view, drawn off the screen and shown at once.
#pragma once

#include "pictures/picture_painter.h"

namespace kalmora {

struct CalendarStore;

// Background, grid or hour pictures, and buttons; without the objects of a day or a scatter. Any thread, also
// while objects are being drawn. Of two that run at the same time the one that began later stays on the
// window. With Decode::Later a cell shows what is in memory and is drawn again when its picture is there: for
// who must show the window soon. With Decode::Now each cell waits for its picture.
void PaintBase(CalendarStore& calendar, Decode decode = Decode::Later);

}  // namespace kalmora
