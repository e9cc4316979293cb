// PaintView: the period in view, painted whole.
#pragma once

#include "pictures/picture_painter.h"

namespace kalmora {

struct CalendarStore;

// Paints the base (see paint_base.h), then starts the run that draws a day's or a scatter's objects. Any
// thread. While such a run is going nothing is drawn, and the run itself starts over. `decode`: whether cells
// wait for their pictures (paint_base.h).
void PaintView(CalendarStore& calendar, Decode decode = Decode::Later);

// Starts the run that draws a day's objects, or a period's scatter, over the painted window, one by one, on
// its own thread; nothing in a grid view, while the objects are being loaded, or while a run is going. Any
// thread; does not wait.
void EventPaint(CalendarStore& calendar);

}  // namespace kalmora
