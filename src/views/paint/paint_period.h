// What each kind of view paints over the background, into a picture of the whole window. Any thread. With
// Decode::Later no picture is waited for, and a worker draws later what is still coarse.
#pragma once

#include "pictures/picture_painter.h"
#include "platform/canvas.h"

namespace kalmora {

struct CalendarStore;

// Give how many objects were drawn.
int PaintYear(CalendarStore& calendar, Canvas& canvas, int year, Size client, double scale, Decode decode);
int PaintMonth(CalendarStore& calendar, Canvas& canvas, int year, int month, Size client, double scale,
               Decode decode);
// The pictures of the hours at the heads of a day's lines.
void PaintHours(Canvas& canvas, Size client, double scale);

}  // namespace kalmora
