#include "views/model/calendar_geometry.h"

#include <algorithm>

#include "base/dates.h"
#include "pictures/res_pictures.h"
#include "platform/clock.h"
#include "platform/image.h"

namespace kalmora {

namespace {
constexpr int kColumns = 7;
constexpr int kMostHours = 240;  // what a settings file may name; far more than makes sense
}  // namespace

MonthGrid MakeMonthGrid(int year, int month, const Rect& area, bool isOfYear) {
    MonthGrid grid;
    grid.year = year;
    grid.month = month;
    grid.isOfYear = isOfYear;
    grid.area = area;
    grid.cellWidth = std::max(0, area.width) / kColumns;
    grid.cellHeight = grid.cellWidth * 3 / 4;
    grid.headingHeight = grid.cellWidth / 5;
    grid.offset = isOfYear ? MonthPictureSize(month, grid.cellHeight).height : 0;
    grid.firstColumn = (DayOfWeek(year, month, 1) + 6) % 7;
    grid.days = DaysInMonth(year, month);
    return grid;
}

Rect MonthCellRect(const MonthGrid& grid, int day) {
    return {grid.area.x + grid.ColumnOf(day) * grid.cellWidth,
            grid.area.y + grid.offset + grid.RowOf(day) * grid.cellHeight + grid.headingHeight,
            grid.cellWidth, grid.cellHeight};
}

Rect WeekdayRect(const MonthGrid& grid, int column) {
    return {grid.area.x + column * grid.cellWidth, grid.area.y + grid.offset, grid.cellWidth,
            grid.headingHeight};
}

int MonthHitTest(const MonthGrid& grid, Point point) {
    if (grid.cellWidth == 0) return 0;
    for (int day = 1; day <= grid.days; ++day)
        if (MonthCellRect(grid, day).ContainsInclusive(point)) return day;
    return 0;
}

Size MonthPictureSize(int month, int cellHeight) {
    if (month < 1 || month > 12 || cellHeight <= 0) return {};
    const Size natural = MeasureResPicture(MonthPictureName(month));
    if (natural.IsEmpty()) return {};
    return {natural.width * cellHeight / natural.height, cellHeight};
}

Rect YearMonthRect(int clientWidth, int month) {
    const int width = std::max(0, clientWidth) / 4;
    const int height = width * 6 / 7;
    return {(month - 1) % 4 * width, (month - 1) / 4 * height, width, height};
}

Rect MonthPictureRect(int clientWidth, int month) {
    const Rect area = YearMonthRect(clientWidth, month);
    const Size size = MonthPictureSize(month, area.width / kColumns * 3 / 4);
    return {area.x, area.y, size.width, size.height};
}

int MonthPictureHitTest(int clientWidth, Point point) {
    for (int month = 1; month <= 12; ++month) {
        const Rect rect = MonthPictureRect(clientWidth, month);
        if (!rect.IsEmpty() && rect.ContainsInclusive(point)) return month;
    }
    return 0;
}

YearHit YearHitTest(int year, int clientWidth, bool calendarMode, Point point) {
    for (int month = 1; month <= 12; ++month) {
        const Rect rect = YearMonthRect(clientWidth, month);
        if (!rect.ContainsInclusive(point)) continue;
        if (!calendarMode) return {month, -1};
        // A shared edge may lie in the next month's grid too: the walk continues until a day is hit.
        const int day = MonthHitTest(MakeMonthGrid(year, month, rect, true), point);
        if (day >= 1) return {month, day};
    }
    return {};
}

int DayLines::HourOfLine(int line) const {
    const int hour = (line - 1) * duration + startHour;
    return hour > 23 ? hour - 24 : hour;
}

DayLines MakeDayLines(int clientHeight, int numberOfLine, int duration, int startHour) {
    DayLines day;
    day.lines = std::clamp(numberOfLine, 1, kMaxDayLines);
    day.lineHeight = (clientHeight - 60) / day.lines;
    day.thumbWidthAllowance = day.lineHeight * 4 / 3 + 10;
    day.duration = std::clamp(duration, 0, kMostHours);
    day.startHour = std::clamp(startHour, -kMostHours, kMostHours);
    return day;
}

}  // namespace kalmora
