// The objects of a day or a scatter, drawn one by one onto the painted window.
#pragma once

#include "base/geometry.h"
#include "views/model/viewers.h"

namespace kalmora {

struct CalendarStore;

// Where a scatter's objects lie: the window without the strip of the buttons.
Size ObjectArea();

// Draws one object of the day in view where it belongs and remembers where it lies. False when nothing was
// drawn. By the thread that has the viewer's ticket.
bool DrawDayObject(CalendarStore& calendar, DayViewer& viewer, const PlacedObjectPtr& object);
// The same in the scatter.
bool DrawAllObject(CalendarStore& calendar, AllViewer& viewer, const PlacedObjectPtr& object);

}  // namespace kalmora
