// One month of a grid view drawn into a canvas: as a grid of day cells, or as one picture.
#pragma once

#include <vector>

#include "base/dates.h"
#include "platform/canvas.h"
#include "views/model/calendar_geometry.h"
#include "views/paint/paint_cell.h"

namespace kalmora {

struct CalendarStore;

struct MonthDrawing {
    int drawn = 0;                     // objects
    std::vector<CalendarDate> coarse;  // cells whose pictures are still to be decoded: Decode::Later only
};

MonthDrawing DrawMonth(CalendarStore& calendar, Canvas& canvas, const MonthGrid& grid, double scale,
                       Decode decode);
// The month's representative fills the whole area (CalendarMode 0).
MonthDrawing DrawMonthAsPicture(CalendarStore& calendar, Canvas& canvas, int year, int month,
                                const Rect& area, double scale, Decode decode);

}  // namespace kalmora
