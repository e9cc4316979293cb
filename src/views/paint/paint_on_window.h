// Cells and months drawn straight onto the window: while loading, by the heartbeat, and by the worker that
// finishes what the GUI thread could only draw coarsely. Nothing is drawn when another period is in view.
#pragma once

namespace kalmora {

void DrawCellOnWindow(int year, int month, int day);
void DrawMonthOnWindow(int year, int month);
void DrawMonthPictureOnWindow(int year, int month);
// Has a worker draw the cell soon; repeated requests for one cell are one. Any thread.
void RequestCellRedraw(int year, int month, int day);
// While one of these exists the worker begins no cell: a full paint holds it back until its picture is on the
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
