#include "views/paint/paint_on_window.h"

#include <mutex>
#include <optional>

#include "base/dates.h"
#include "state/app_state.h"
#include "views/bar/button_bar.h"
#include "views/model/calendar_store.h"
#include "views/model/cell_content.h"
#include "views/paint/background.h"
#include "views/paint/paint_cell.h"
#include "views/paint/paint_month.h"

namespace kalmora {

namespace {

// In which the window shows this month now; nothing when it does not.
std::optional<MonthGrid> GridInView(CalendarStore& calendar, const Window& window, int year, int month) {
    const ViewState view = View();
    return calendar.ViewOf(view).GridOf(view.period, year, month, window.ClientSize());
}

void DrawCell(CalendarStore& calendar, Window& window, const MonthGrid& grid, int day) {
    const PreparedPicture object = PrepareCellObject(
        calendar, grid.year, grid.month, day, {grid.cellWidth, grid.cellHeight}, window.Scale(), Decode::Now);
    // Where nothing can be drawn any more, what was there must not stay.
    if (object.look == PreparedPicture::Look::Nothing &&
        ContentOfCell(calendar, grid.year, grid.month, day).count == 0)
        return;
    const BackgroundPtr background = PaintedBackground(calendar);
    if (GridInView(calendar, window, grid.year, grid.month) != grid) return;
    const auto canvas = window.Draw();
    if (!canvas || canvas->GetSize() != window.ClientSize()) return;
    const Rect cell = MonthCellRect(grid, day);
    DrawUnderButtons(*canvas, cell, [&](Canvas& target, Point origin) {
        const Rect place{cell.x - origin.x, cell.y - origin.y, cell.width, cell.height};
        // A picture of another shape leaves margins: what was there before must not show beside it.
        const Ground ground{background, origin};
        RestoreBackground(target, ground, {place.x + 1, place.y + 1, cell.width, cell.height});
        DrawDayCell(target, ground, place, day, grid.ColumnOf(day), grid.isOfYear, &object);
    });
}

}  // namespace

void DrawCellOnWindow(CalendarStore& calendar, int year, int month, int day) {
    Window* window = MainWindow();
    if (!window) return;
    if (const auto grid = GridInView(calendar, *window, year, month)) DrawCell(calendar, *window, *grid, day);
}

void DrawMonthOnWindow(CalendarStore& calendar, int year, int month) {
    Window* window = MainWindow();
    if (!window) return;
    if (!State().settings.CalendarMode) return DrawMonthPictureOnWindow(calendar, year, month);
    const auto grid = GridInView(calendar, *window, year, month);
    for (int day = 1; grid && day <= grid->days; ++day) {
        if (calendar.MonthOf(year, month).stop) return;
        DrawCell(calendar, *window, *grid, day);
    }
}

void DrawMonthPictureOnWindow(CalendarStore& calendar, int year, int month) {
    Window* window = MainWindow();
    if (!window) return;
    const auto grid = GridInView(calendar, *window, year, month);
    if (!grid || !grid->isOfYear) return;
    const Rect area = grid->area;
    // Into memory first: decoding must not happen while the window is held.
    const auto picture = Surface::Create({area.width, area.height}, window->Scale());
    if (!picture) return;
    const BackgroundPtr background = PaintedBackground(calendar);
    {
        const auto canvas = picture->Draw();
        RestoreBackground(*canvas, {background, {area.x, area.y}}, {0, 0, area.width, area.height});
        DrawMonthAsPicture(calendar, *canvas, year, month, {0, 0, area.width, area.height}, window->Scale(),
                           Decode::Now);
    }
    if (GridInView(calendar, *window, year, month) != grid) return;
    const auto canvas = window->Draw();
    if (!canvas) return;
    DrawUnderButtons(*canvas, area, [&](Canvas& target, Point origin) {
        target.Blit({area.x - origin.x, area.y - origin.y, area.width, area.height}, *picture);
    });
}

bool DrawMonthStep(CalendarStore& calendar, int year, int month) {
    Window* window = MainWindow();
    if (!window) return false;
    YearView& slot = calendar.SlotOf(year);
    MonthView& view = calendar.MonthOf(year, month);
    int phase;
    {
        std::lock_guard lock(slot.mutex);
        if (slot.year != year) return false;
        phase = view.Phase = (view.Phase + 1) % 3;
    }
    const auto grid = GridInView(calendar, *window, year, month);
    if (!grid) return false;
    for (int day = 1; day <= grid->days; ++day) {
        if ((grid->RowOf(day) + grid->ColumnOf(day)) % 3 != phase) continue;
        if (view.stop) return false;
        AdvanceCellPhoto(calendar, year, month, day);
        DrawCell(calendar, *window, *grid, day);
    }
    return true;
}

int StepMonthPicture(CalendarStore& calendar, int year, int month) {
    YearView& slot = calendar.SlotOf(year);
    {
        std::lock_guard lock(slot.mutex);
        if (slot.year != year) return -1;
        MonthView& view = calendar.MonthOf(year, month);
        const int count = view.ObjectCount();
        if (++view.PhotoCursor >= count) view.PhotoCursor = 0;
        if (++view.DayCursor > DaysInMonth(year, month)) view.DayCursor = 1;
    }
    const int day = RepresentativeDay(calendar, year, month);
    if (day == 0) return -1;
    AdvanceCellPhoto(calendar, year, month, day);
    DrawMonthPictureOnWindow(calendar, year, month);
    return 0;
}

}  // namespace kalmora
