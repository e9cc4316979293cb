// One picture a month: the year view without day grids.
#include "base/dates.h"
#include "pictures/res_pictures.h"
#include "state/app_state.h"
#include "views/model/calendar_store.h"
#include "views/paint/paint_cell.h"
#include "views/paint/paint_view.h"

namespace kalmora {

namespace {

constexpr Color kFrame{43, 53, 73, 150};

Rect Inner(const Rect& area) { return {area.x + 1, area.y + 1, area.width - 2, area.height - 2}; }

void DrawHeadingAndFrame(Canvas& canvas, int month, const Rect& area) {
    const Rect heading = MonthPictureRect(area.width * 4, month);
    canvas.DrawImage(
        {area.x, area.y, heading.width, heading.height},
        LoadResPicture(MonthPictureName(month), {heading.width, heading.height}, canvas.Scale()));
    const Point topLeft{area.x, area.y}, bottomRight{area.Right() - 1, area.Bottom() - 1};
    canvas.Line(topLeft, {bottomRight.x, topLeft.y}, kFrame);
    canvas.Line({bottomRight.x, topLeft.y}, bottomRight, kFrame);
    canvas.Line(bottomRight, {topLeft.x, bottomRight.y}, kFrame);
    canvas.Line({topLeft.x, bottomRight.y}, topLeft, kFrame);
}

}  // namespace

// none.
int RepresentativeDay(int year, int month) {
    YearView& slot = Calendar().SlotOf(year);
    std::lock_guard lock(slot.mutex);
    if (slot.year != year) return 0;
    const MonthView& view = Calendar().MonthOf(year, month);
    const int days = DaysInMonth(year, month);
    for (int step = 0; step < days; ++step) {
        const int day = (view.DayCursor - 1 + step) % days + 1;
        if (!view.days[static_cast<std::size_t>(day - 1)].objects.empty()) return day;
    }
    return 0;
}

int DrawMonthAsPicture(Canvas& canvas, int year, int month, const Rect& area, double scale, Decode decode) {
    if (month < 1 || month > 12 || area.width < 8) return 0;
    const Rect inner = Inner(area);
    const int day = RepresentativeDay(year, month);
    bool drawn = false;
    if (day > 0) {
        const PreparedObject object =
            PrepareCellObject(year, month, day, {inner.width, inner.height}, scale, decode);
        drawn = DrawCellObject(canvas, inner, object) == 0;
        if (!object.complete) RequestCellRedraw(year, month, day);
    }
    DrawHeadingAndFrame(canvas, month, area);
    return drawn ? 1 : 0;
}

int StepMonthPicture(int year, int month) {
    YearView& slot = Calendar().SlotOf(year);
    {
        std::lock_guard lock(slot.mutex);
        if (slot.year != year) return -1;
        MonthView& view = Calendar().MonthOf(year, month);
        const int count = view.ObjectCount();
        if (++view.PhotoCursor >= count) view.PhotoCursor = 0;
        if (++view.DayCursor > DaysInMonth(year, month)) view.DayCursor = 1;
    }
    const int day = RepresentativeDay(year, month);
    if (day == 0) return -1;
    AdvanceCellPhoto(year, month, day);
    DrawMonthPictureOnWindow(year, month);
    return 0;
}

}  // namespace kalmora
