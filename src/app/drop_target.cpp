#include "app/drop_target.h"

#include "state/app_state.h"
#include "views/model/calendar_geometry.h"
#include "views/model/calendar_store.h"

namespace kalmora {

namespace {

bool IsInWindow(Point point, Size client) {
    return point.x >= 0 && point.y >= 0 && point.x < client.width && point.y < client.height;
}

bool IsOnAMonth(Point point, int clientWidth) {
    for (int month = 1; month <= 12; ++month)
        if (YearMonthRect(clientWidth, month).ContainsInclusive(point)) return true;
    return false;
}

DropTarget TargetInDay(Point point, Size client, const CalendarDate& view) {
    const AppState& state = State();
    const DayLines lines = MakeDayLines(client.height, state.settings.DayNumberOfLine,
                                        state.settings.DayDuration, state.settings.DayStartTime);
    return {view, point.x < kDayLeftMargin || point.y >= lines.LineTop(lines.lines)};
}

std::optional<DropTarget> TargetInMonth(Point point, Size client, CalendarDate view) {
    const MonthGrid grid = MakeMonthGrid(view.year, view.month, {0, 0, client.width, client.height}, false);
    view.day = MonthHitTest(grid, point);
    return DropTarget{view, view.day == 0};
}

std::optional<DropTarget> TargetInYear(Point point, Size client, const CalendarDate& view) {
    if (!IsOnAMonth(point, client.width)) return DropTarget{{view.year, 0, 0}, true};
    if (State().settings.CalendarMode == 0) return std::nullopt;
    if (const YearHit hit = YearHitTest(view.year, client.width, true, point); hit.day >= 1)
        return DropTarget{{view.year, hit.month, hit.day}, false};
    // Beside the days of a month: its background, as far as the year view can set one.
    const YearHit month = YearHitTest(view.year, client.width, false, point);
    return month.month >= 1 ? std::optional(DropTarget{{view.year, month.month, 0}, true}) : std::nullopt;
}

}  // namespace

std::optional<DropTarget> FindDropTarget(Point point) {
    const ViewState view = View();
    const Size client = ClientSize();
    const CalendarDate& date = view.period.date;
    if (view.period.level == Level::Day) return TargetInDay(point, client, date);
    if (view.scatter) return DropTarget{date, false};
    if (!IsInWindow(point, client)) return std::nullopt;
    return view.period.level == Level::Month ? TargetInMonth(point, client, date)
                                             : TargetInYear(point, client, date);
}

}  // namespace kalmora
