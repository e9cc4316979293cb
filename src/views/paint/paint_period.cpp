#include "views/paint/paint_period.h"

#include "pictures/res_pictures.h"
#include "platform/window.h"
#include "state/app_state.h"
#include "views/model/calendar_geometry.h"
#include "views/paint/paint_month.h"
#include "views/paint/paint_on_window.h"

namespace kalmora {

namespace {

Decode DecodePolicy() {
    const Application* application = TheApplication();
    return application && application->IsGuiThread() ? Decode::Later : Decode::Now;
}

// Counts drawn objects; a worker draws the coarse cells again.
int Finish(const MonthDrawing& drawing) {
    for (const CalendarDate& cell : drawing.coarse) RequestCellRedraw(cell.year, cell.month, cell.day);
    return drawing.drawn;
}

}  // namespace

int PaintYear(Canvas& canvas, int year, Size client, double scale) {
    int drawn = 0;
    for (int month = 1; month <= 12; ++month) {
        const Rect area = YearMonthRect(client.width, month);
        drawn += Finish(State().settings.CalendarMode
                            ? DrawMonth(canvas, MakeMonthGrid(year, month, area, true), scale, DecodePolicy())
                            : DrawMonthAsPicture(canvas, year, month, area, scale, DecodePolicy()));
    }
    return drawn;
}

int PaintMonth(Canvas& canvas, int year, int month, Size client, double scale) {
    const MonthGrid grid = MakeMonthGrid(year, month, {0, 0, client.width, client.height}, false);
    return Finish(DrawMonth(canvas, grid, scale, DecodePolicy()));
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
