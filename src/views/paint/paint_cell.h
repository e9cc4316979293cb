// One day cell: what it shows and how it is drawn, on the window or into a picture of the whole grid.
#pragma once

#include "pictures/picture_painter.h"
#include "platform/canvas.h"
#include "views/model/calendar_geometry.h"
#include "views/model/year_view.h"
#include "views/paint/background.h"

namespace kalmora {

struct CalendarStore;

// True when drawing the cell needs no decoding (it has no picture, or the picture is in memory).
bool IsCellPictureCached(CalendarStore& calendar, int year, int month, int day);

// Reads and decodes what is at the cell's PhotoIndex. Entries whose file has vanished are dropped from
// the cell until one is left that exists (the only one is kept). Where that entry cannot be drawn,
// because it is broken or filtered out, the next one that can be comes to represent the day. Nothing when the
// cell is not active or holds nothing that can be drawn; with Decode::Later it is then not complete, and a
// worker has to draw the cell again.
PreparedPicture PrepareCellObject(CalendarStore& calendar, int year, int month, int day, Size cell,
                                  double scale, Decode decode);

// The cell with its number and frame; `object` may be null for a cell without its photo. The frame's lines
// are drawn on the bare background, so that they look the same however often cells are drawn that share them.
void DrawDayCell(Canvas& canvas, const Ground& ground, const Rect& cell, int day, int column, bool yearly,
                 const PreparedPicture* object);

}  // namespace kalmora
