#include "views/paint/paint_month.h"

#include <string>

#include "pictures/res_pictures.h"
#include "views/model/cell_content.h"
#include "views/paint/background.h"

namespace kalmora {

namespace {

constexpr Color kMonthFrame{43, 53, 73, 150};
constexpr int kLegibleWeekday = 12;  // device pixels of height at which the whole drawing can be read

Rect Inner(const Rect& area) { return {area.x + 1, area.y + 1, area.width - 2, area.height - 2}; }

void DrawHeadingAndFrame(Canvas& canvas, int month, const Rect& area) {
    const Rect heading = MonthPictureRect(area.width * 4, month);
    canvas.DrawImage(
        {area.x, area.y, heading.width, heading.height},
        LoadResPicture(MonthPictureName(month), {heading.width, heading.height}, canvas.Scale()));
    const Point topLeft{area.x, area.y}, bottomRight{area.Right() - 1, area.Bottom() - 1};
    canvas.Line(topLeft, {bottomRight.x, topLeft.y}, kMonthFrame);
    canvas.Line({bottomRight.x, topLeft.y}, bottomRight, kMonthFrame);
    canvas.Line(bottomRight, {topLeft.x, bottomRight.y}, kMonthFrame);
    canvas.Line({topLeft.x, bottomRight.y}, topLeft, kMonthFrame);
}

}  // namespace

MonthDrawing DrawMonth(CalendarStore& calendar, Canvas& canvas, const MonthGrid& grid, double scale,
                       Decode decode) {
    // A whole window: the background of the full paint that this belongs to.
    const Ground ground{PaintedBackground(calendar), {}};
    if (grid.month < 1 || grid.month > 12 || grid.cellWidth < 1) return {};
    if (grid.offset > 0) {
        const Size size = MonthPictureSize(grid.month, grid.cellHeight);
        canvas.DrawImage({grid.area.x, grid.area.y, size.width, size.height},
                         LoadResPicture(MonthPictureName(grid.month), size, scale));
    }
    for (int column = 0; column < 7; ++column) {
        const Rect area = WeekdayRect(grid, column);
        const std::string name = WeekdayPictureName(
            column, area.height * scale < kLegibleWeekday ? WeekdayDrawing::Plain : WeekdayDrawing::Whole);
        canvas.DrawImage(area, LoadResPicture(name, {area.width, area.height}, scale));
    }
    MonthDrawing drawing;
    for (int day = 1; day <= grid.days; ++day) {
        const PreparedPicture object = PrepareCellObject(calendar, grid.year, grid.month, day,
                                                         {grid.cellWidth, grid.cellHeight}, scale, decode);
        DrawDayCell(canvas, ground, MonthCellRect(grid, day), day, grid.ColumnOf(day), grid.isOfYear,
                    &object);
        if (object.look != PreparedPicture::Look::Nothing) ++drawing.drawn;
        if (!object.complete) drawing.coarse.push_back({grid.year, grid.month, day});
    }
    return drawing;
}

MonthDrawing DrawMonthAsPicture(CalendarStore& calendar, Canvas& canvas, int year, int month,
                                const Rect& area, double scale, Decode decode) {
    if (month < 1 || month > 12 || area.width < 8) return {};
    const Rect inner = Inner(area);
    MonthDrawing drawing;
    const std::vector<int> days = DaysWithObjects(calendar, year, month);
    for (const int day : days) {
        const PreparedPicture object =
            PrepareCellObject(calendar, year, month, day, {inner.width, inner.height}, scale, decode);
        if (!object.complete) drawing.coarse.push_back({year, month, day});
        if (object.look == PreparedPicture::Look::Nothing && object.complete) continue;
        drawing.drawn = DrawPicture(canvas, inner, object, kCellStyle) ? 1 : 0;
        // What is pressed is what is seen.
        if (day != days.front()) RepresentMonthBy(calendar, year, month, day);
        break;
    }
    DrawHeadingAndFrame(canvas, month, area);
    return drawing;
}

}  // namespace kalmora
