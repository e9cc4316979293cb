// One day cell: what it shows and how it is drawn, on the window or into a picture of the whole grid.
#pragma once

#include <string>

#include "platform/canvas.h"
#include "views/model/calendar_geometry.h"
#include "views/model/year_view.h"

namespace kalmora {

// Whether a picture that is not decoded yet is waited for. The GUI thread never waits: it draws the best that
// is in memory and has the cell drawn again, properly, by a worker.
enum class Decode { Now, Later };

// True when drawing the cell needs no decoding (it has no picture, or the picture is in memory).
bool IsCellPictureCached(int year, int month, int day);

// DrawCellObject, in two steps: what is slow, and the drawing itself.
struct PreparedObject {
    enum class Look { Nothing, Picture, Movie, Text, Path } look = Look::Nothing;
    Image picture;
    std::string text;      // of a text: its head, decoded; of anything else: its path
    bool complete = true;  // false: the picture is not (or only coarsely) there yet
};
// Reads and decodes what stands at the cell's PhotoIndex. Entries whose file has vanished are dropped from
// the cell until one stands (the only one is kept). Nothing when the cell is not active or has no objects.
PreparedObject PrepareCellObject(int year, int month, int day, Size cell, double scale, Decode decode);
// -1 when nothing was drawn, 0 otherwise.
int DrawCellObject(Canvas& canvas, const Rect& cell, const PreparedObject& object);

// The cell with its number and frame; `object` may be null for a cell without its photo.
void DrawDayCell(Canvas& canvas, const Rect& cell, int day, int column, bool yearly,
                 const PreparedObject* object);

}  // namespace kalmora
