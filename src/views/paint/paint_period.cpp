#include "views/paint/paint_period.h"

#include "pictures/res_pictures.h"
#include "state/app_state.h"
#include "views/model/calendar_geometry.h"
#include "views/model/calendar_store.h"
#include "views/paint/paint_month.h"

namespace kalmora {

namespace {

// Counts drawn objects; a worker draws the coarse cells again.
int Finish(CalendarStore& calendar, const MonthDrawing& drawing) {
    for (const CalendarDate& cell : drawing.coarse) calendar.cellRedraws.Request(cell);
    return drawing.drawn;
}

}  // namespace

int PaintYear(CalendarStore& calendar, Canvas& canvas, int year, Size client, double scale, Decode decode) {
    int drawn = 0;
    for (int month = 1; month <= 12; ++month) {
        const Rect area = YearMonthRect(client.width, month);
        drawn += Finish(
            calendar, State().settings.CalendarMode
                          ? DrawMonth(calendar, canvas, MakeMonthGrid(year, month, area, true), scale, decode)
                          : DrawMonthAsPicture(calendar, canvas, year, month, area, scale, decode));
    }
    return drawn;
}

int PaintMonth(CalendarStore& calendar, Canvas& canvas, int year, int month, Size client, double scale,
               Decode decode) {
    const MonthGrid grid = MakeMonthGrid(year, month, {0, 0, client.width, client.height}, false);
    return Finish(calendar, DrawMonth(calendar, canvas, grid, scale, decode));
}

void PaintHours(Canvas& canvas, Size client, double scale) {
    const AppState& state = State();
    const DayLines lines = MakeDayLines(client.height, state.settings.DayNumberOfLine,
                                        state.settings.DayDuration, state.settings.DayStartTime);
    for (int line = 0; line < lines.lines; ++line) {
        const Rect area = lines.HourPictureRect(line);
        canvas.DrawImage(
            area, LoadResPicture(HourPictureName(lines.HourOfLine(line)), {area.width, area.height}, scale));
    }
}

}  // namespace kalmora
