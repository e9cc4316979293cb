// Cells and months drawn straight onto the window: while loading, by the heartbeat, and by the worker that
// finishes what the GUI thread could only draw coarsely. Nothing is drawn when another period is in view.
#pragma once

namespace kalmora {

struct CalendarStore;

void DrawCellOnWindow(CalendarStore& calendar, int year, int month, int day);
void DrawMonthOnWindow(CalendarStore& calendar, int year, int month);
void DrawMonthPictureOnWindow(CalendarStore& calendar, int year, int month);

// DrawMonthStep: the next third of the month's cells shows its next photos. False when the month was stopped.
bool DrawMonthStep(CalendarStore& calendar, int year, int month);
// The month-picture step: the next day with objects shows its next photo. -1 when the month has none.
int StepMonthPicture(CalendarStore& calendar, int year, int month);

}  // namespace kalmora
