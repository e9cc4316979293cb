#include "views/paint/paint_base.h"

#include <memory>

#include "pictures/res_pictures.h"
#include "platform/window.h"
#include "state/app_state.h"
#include "views/bar/button_bar.h"
#include "views/model/calendar_geometry.h"
#include "views/model/calendar_store.h"
#include "views/paint/background.h"
#include "views/paint/missing_folder.h"
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

int DrawYear(Canvas& canvas, int year, Size client, double scale) {
    int drawn = 0;
    for (int month = 1; month <= 12; ++month) {
        const Rect area = YearMonthRect(client.width, month);
        drawn += Finish(
            State().settings.CalendarMode
                ? DrawMonth(canvas, MakeMonthGrid(year, month, area, true), true, scale, DecodePolicy())
                : DrawMonthAsPicture(canvas, year, month, area, scale, DecodePolicy()));
    }
    return drawn;
}

void DrawHours(Canvas& canvas, Size client, double scale) {
    const AppState& state = State();
    const DayLines lines = MakeDayLines(client.height, state.settings.DayNumberOfLine,
                                        state.settings.DayDuration, state.settings.DayStartTime);
    for (int line = 0; line < lines.lines; ++line) {
        const Rect area = lines.HourPictureRect(line);
        canvas.DrawImage(
            area, LoadResPicture(HourPictureName(lines.HourOfLine(line)), {area.width, area.height}, scale));
    }
}

void DrawPeriod(Canvas& canvas, const ViewState& view, Size client, double scale) {
    if (view.scatter) return;
    const CalendarDate& date = view.period.date;
    switch (view.period.level) {
        case Level::Year:
            Calendar().objectsDrawn = DrawYear(canvas, date.year, client, scale);
            break;
        case Level::Month:
            Calendar().objectsDrawn = Finish(DrawMonth(
                canvas, MakeMonthGrid(date.year, date.month, {0, 0, client.width, client.height}, false),
                false, scale, DecodePolicy()));
            break;
        case Level::Day:
            DrawHours(canvas, client, scale);
            break;
    }
}

}  // namespace

void PaintBase() {
    Window* window = MainWindow();
    if (!window) return;
    SetButtonStates();
    const Size size = window->ClientSize();
    const double scale = window->Scale();
    const std::unique_ptr<Surface> surface = Surface::Create(size, scale);
    if (!surface) return;
    const BackgroundPtr background = RenewBackground();
    const CellRedrawPause pause;
    {
        const auto canvas = surface->Draw();
        RestoreBackground(*canvas, background, {0, 0, size.width, size.height});
        DrawPeriod(*canvas, View(), size, scale);
        if (LastSeenDataFolder() == DataFolder::Away) DrawMissingFolder(*canvas, size);
    }
    SetBarGround(*surface);
    if (const auto canvas = window->Draw()) {
        canvas->Blit({0, 0, size.width, size.height}, *surface);
        DrawButtons(*canvas);
    }
    if (!State().run.FirstPaintDone.exchange(1)) Calendar().partners.observer.OnFirstPaint();
}

}  // namespace kalmora
