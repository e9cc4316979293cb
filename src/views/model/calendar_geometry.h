// Where everything is: the month grid, the year grid, the lines of a day. Pure arithmetic in logical
// pixels, all divisions truncating; hit tests, drawing and loading share it. Any thread.
#pragma once

#include "base/geometry.h"

namespace kalmora {

constexpr bool IsInWindow(Point point, Size client) {
    return point.x >= 0 && point.y >= 0 && point.x < client.width && point.y < client.height;
}

// ---- one month as a grid: seven columns, Monday first, up to six rows
struct MonthGrid {
    int year = 0;
    int month = 0;
    bool isOfYear = false;  // one of the twelve of a year, with the month's picture on top
    Rect area;              // the rectangle that the grid was made for; only left, top and width decide
    int cellWidth = 0;      // area.width / 7
    int cellHeight = 0;     // three quarters of it
    int headingHeight = 0;  // of the weekday pictures: a fifth of the cell's width
    int offset = 0;         // what is above the weekdays: 0, or the month picture's drawn height
    int firstColumn = 0;    // of the first of the month, Monday 0
    int days = 0;

    int ColumnOf(int day) const { return (firstColumn + day - 1) % 7; }
    int RowOf(int day) const { return (firstColumn + day - 1) / 7; }
    friend bool operator==(const MonthGrid&, const MonthGrid&) = default;
};

MonthGrid MakeMonthGrid(int year, int month, const Rect& area, bool isOfYear);
Rect MonthCellRect(const MonthGrid& grid, int day);
// The weekday picture over a column, 0 Monday to 6 Sunday.
Rect WeekdayRect(const MonthGrid& grid, int column);
// The day under the point, 0 when there is none. A point on an edge that two cells share belongs to the
// earlier.
int MonthHitTest(const MonthGrid& grid, Point point);

// The size at which a month's picture is drawn when its height is that of a day cell; empty when the picture
// cannot be read. The file is looked at once a run.
Size MonthPictureSize(int month, int cellHeight);

// ---- the year: four columns and three rows of months from the top left
Rect YearMonthRect(int clientWidth, int month);
Rect MonthPictureRect(int clientWidth, int month);      // the month's heading in the year view
int MonthPictureHitTest(int clientWidth, Point point);  // 1 to 12, 0 when none

struct YearHit {
    int month = -1;  // 1 to 12, -1 when no month was hit
    int day = -1;    // with day grids only; -1 when no day was hit
};
// calendarMode: the months show day grids, and only a day is a hit.
YearHit YearHitTest(int year, int clientWidth, bool calendarMode, Point point);

// ---- the lines of a day
inline constexpr int kDayLeftMargin = 55;
inline constexpr int kDayLineGap = 5;
inline constexpr int kHourPictureSize = 36;
inline constexpr int kMaxDayLines = 24;

struct DayLines {
    int lines = 1;  // 1 to 24; the setting is cut to the rows of the place grid
    int lineHeight = 0;
    int thumbWidthAllowance = 0;
    int duration = 1;  // hours a line
    int startHour = 0;

    int LineTop(int line) const { return lineHeight * line + 10; }
    int ThumbnailHeight() const { return lineHeight - kDayLineGap; }
    // The hour shown at a line's head. Line 0 shows the hour before the start; hours can repeat.
    int HourOfLine(int line) const;
    Rect HourPictureRect(int line) const { return {10, LineTop(line), kHourPictureSize, kHourPictureSize}; }
};
DayLines MakeDayLines(int clientHeight, int numberOfLine, int duration, int startHour);

}  // namespace kalmora
