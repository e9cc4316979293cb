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

// A copy of what a cell shows; not active when the slot holds another year or the day was not loaded.
CellContent ContentOfCell(int year, int month, int day);
// True when drawing the cell needs no decoding (it has no picture, or the picture is in memory).
bool IsCellPictureCached(int year, int month, int day);

// The next entry that can be shown; false when the cell is not loaded or is empty.
bool AdvanceCellPhoto(int year, int month, int day);

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

// A whole month into a canvas. Counts drawn objects.
int DrawMonth(Canvas& canvas, const MonthGrid& grid, bool yearly, double scale, Decode decode);
// The day that stands for a month drawn as one picture: the first with objects from the month's DayCursor on,
// then from the first of the month; 0 when there is none.
int RepresentativeDay(int year, int month);
// One month as one picture, the representative of the month (CalendarMode 0). Counts drawn objects.
int DrawMonthAsPicture(Canvas& canvas, int year, int month, const Rect& area, double scale, Decode decode);

// ---- straight onto the window, for workers and the heartbeat; nothing when another period is in view
void DrawCellOnWindow(int year, int month, int day);
void DrawMonthOnWindow(int year, int month);
void DrawMonthPictureOnWindow(int year, int month);
// Has a worker draw the cell soon; repeated wishes for one cell are one. Any thread.
void RequestCellRedraw(int year, int month, int day);
// While one of these stands the worker begins no cell: a full paint holds it back until its picture is on the
// window, which would otherwise cover the worker's newer cell.
class CellRedrawPause {
public:
    CellRedrawPause();
    ~CellRedrawPause();
    CellRedrawPause(const CellRedrawPause&) = delete;
    CellRedrawPause& operator=(const CellRedrawPause&) = delete;
};
// True when no cell waits to be drawn by the worker.
bool AreCellRedrawsDone();

// DrawMonthStep: the next third of the month's cells shows its next photos. False when the month was stopped.
bool DrawMonthStep(int year, int month);
// The month-picture step: the next day with objects shows its next photo. -1 when the month has none.
int StepMonthPicture(int year, int month);

}  // namespace kalmora
