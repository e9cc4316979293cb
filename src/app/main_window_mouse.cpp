#include <cmath>
#include <cstdio>
#include <string>

#include "app/main_window.h"
#include "app/main_window_events.h"
#include "base/commands.h"
#include "platform/clock.h"
#include "platform/shell.h"
#include "state/app_state.h"
#include "views/bar/button_bar.h"
#include "views/control/navigation.h"
#include "views/control/press_button.h"
#include "views/model/calendar_geometry.h"
#include "views/model/calendar_store.h"
#include "views/model/cell_content.h"
#include "views/paint/paint_view.h"

namespace kalmora {

namespace {

constexpr int kLongPressMs = 2000;
constexpr double kClickRadius = 2.0;             // pixels; a longer way is a drag
constexpr int kNumberFrom = 10, kNumberTo = 30;  // the day number's square in a cell

void KeepActivityTime() { State().run.LastActivity = UptimeMs(); }

Rect ToScreen(const Window& window, const Rect& client) {
    const Point corner = window.ToScreen({client.x, client.y});
    return {corner.x, corner.y, client.width, client.height};
}

bool IsOnDayNumber(const Rect& cell, Point point) {
    const int dx = point.x - cell.x, dy = point.y - cell.y;
    return dx >= kNumberFrom && dx <= kNumberTo && dy >= kNumberFrom && dy <= kNumberTo;
}

MonthGrid MonthInView(const Window& window) {
    const CalendarDate date = View().period.date;
    const Size client = window.ClientSize();
    return MakeMonthGrid(date.year, date.month, {0, 0, client.width, client.height}, false);
}

std::string PathOfCell(int year, int month, int day) {
    const CellContent content = ContentOfCell(year, month, day);
    return content.count > 0 ? content.entry.path : std::string();
}

// The object that represents a month drawn as one picture.
std::string PathOfMonth(int year, int month) {
    if (!Calendar().MonthOf(year, month).ready) return {};
    const int day = RepresentativeDay(year, month);
    return day > 0 ? PathOfCell(year, month, day) : std::string();
}

// Something lies under the press: it may be dragged out, and a drop on `area` rates it.
bool HoldObject(const Window& window, const Rect& area, const std::string& path) {
    AppState& state = State();
    state.press.PressActive = 1;
    state.press.DragRect = ToScreen(window, area);
    state.press.DragPath = path;
    if (!path.empty()) state.press.ObjectHit = 1;
    return true;
}

bool PressInList(const Window& window, const ObjectList& list, Point point) {
    ObjectList::Hit hit;
    if (!list.HitTest(point, &hit)) return false;
    return HoldObject(window, hit.drawn, hit.path);
}

bool PressInYear(const Window& window, Point point) {
    const CalendarDate date = View().period.date;
    const AppState& state = State();
    const int width = window.ClientSize().width;
    if (const int month = MonthPictureHitTest(width, point); month > 0) {
        ChangeToMonthly(month);
        return true;
    }
    const YearHit hit = YearHitTest(date.year, width, state.settings.CalendarMode != 0, point);
    if (hit.month < 1) return false;
    if (!state.settings.CalendarMode)
        return HoldObject(window, YearMonthRect(width, hit.month), PathOfMonth(date.year, hit.month));
    const MonthGrid grid = MakeMonthGrid(date.year, hit.month, YearMonthRect(width, hit.month), true);
    return HoldObject(window, MonthCellRect(grid, hit.day), PathOfCell(date.year, hit.month, hit.day));
}

bool PressInMonth(const Window& window, Point point) {
    const CalendarDate date = View().period.date;
    const MonthGrid grid = MonthInView(window);
    const int day = MonthHitTest(grid, point);
    if (day < 1) return false;
    const Rect cell = MonthCellRect(grid, day);
    if (IsOnDayNumber(cell, point)) {
        ChangeToDaily(day);
        return true;
    }
    HoldObject(window, cell, PathOfCell(date.year, date.month, day));
    ChangeView([&](ViewState& view) { view.period.date.day = day; });
    State().press.ObjectHit = 1;  // here also for an empty cell
    return true;
}

void OpenText(const std::string& path) {
    if (!path.empty()) shell::OpenWithEditor(State().settings.TextEditor, path);
}

void OpenObject(const AppParts& parts, const std::string& path, ObjectKind kind) {
    if (kind == ObjectKind::Text)
        OpenText(path);
    else if (!path.empty())
        parts.slideShow.Show(path);
}

void MakeAndOpenText(const AppParts& parts, int day, const std::string& content) {
    const CalendarDate date = View().period.date;
    OpenText(parts.scraps.MakeText({date.year, date.month, day}, content));
}

bool OpenHit(const AppParts& parts, const ObjectList& list, Point point) {
    ObjectList::Hit hit;
    if (!list.HitTest(point, &hit)) return false;
    OpenObject(parts, hit.path, hit.kind);
    return true;
}

bool OpenHourNote(const AppParts& parts, const Window& window, Point point) {
    const CalendarDate date = View().period.date;
    const AppState& state = State();
    const DayLines lines = MakeDayLines(window.ClientSize().height, state.settings.DayNumberOfLine,
                                        state.settings.DayDuration, state.settings.DayStartTime);
    for (int line = lines.lines - 1; line >= 0; --line) {
        if (!lines.HourPictureRect(line).ContainsInclusive(point)) continue;
        char content[64];
        std::snprintf(content, sizeof content, "[Schedule]\n[%04d/%02d/%02d %02d:00]\n", date.year,
                      date.month, date.day, lines.HourOfLine(line));
        MakeAndOpenText(parts, date.day, content);
        return true;
    }
    return false;
}

void DoubleClickInDay(const AppParts& parts, const Window& window, Point point) {
    if (View().scatter) {
        if (OpenHit(parts, Calendar().CurrentAllViewer().objects, point)) return;
    } else if (OpenHourNote(parts, window, point) ||
               OpenHit(parts, Calendar().CurrentDayViewer().objects, point)) {
        return;
    }
    MakeAndOpenText(parts, View().period.date.day, "");
}

void DoubleClickInMonth(const AppParts& parts, const Window& window, Point point) {
    const CalendarDate date = View().period.date;
    const MonthGrid grid = MonthInView(window);
    const int day = MonthHitTest(grid, point);
    if (day < 1) return;
    if (IsOnDayNumber(MonthCellRect(grid, day), point)) return MakeAndOpenText(parts, day, "");
    const CellContent content = ContentOfCell(date.year, date.month, day);
    if (content.count > 0) OpenObject(parts, content.entry.path, content.entry.kind);
}

void DoubleClickInYear(const AppParts& parts, const Window& window, Point point) {
    const CalendarDate date = View().period.date;
    const AppState& state = State();
    const YearHit hit =
        YearHitTest(date.year, window.ClientSize().width, state.settings.CalendarMode != 0, point);
    if (hit.month < 1) return;
    const std::string path = state.settings.CalendarMode ? PathOfCell(date.year, hit.month, hit.day)
                                                         : PathOfMonth(date.year, hit.month);
    OpenObject(parts, path, ClassifyFile(path));
}

// The path of what lies under the point in any view; empty when nothing does.
std::string PathUnder(const Window& window, Point point) {
    const CalendarDate date = View().period.date;
    const AppState& state = State();
    ObjectList::Hit hit;
    if (View().scatter) return Calendar().CurrentAllViewer().objects.HitTest(point, &hit) ? hit.path : "";
    if (View().period.level == Level::Day)
        return Calendar().CurrentDayViewer().objects.HitTest(point, &hit) ? hit.path : "";
    if (View().period.level == Level::Month) {
        const int day = MonthHitTest(MonthInView(window), point);
        return day > 0 ? PathOfCell(date.year, date.month, day) : "";
    }
    const YearHit year =
        YearHitTest(date.year, window.ClientSize().width, state.settings.CalendarMode != 0, point);
    if (year.month < 1) return {};
    return state.settings.CalendarMode ? PathOfCell(date.year, year.month, year.day)
                                       : PathOfMonth(date.year, year.month);
}

}  // namespace

bool HandleLeftPress(Window& window, Point point) {
    AppState& state = State();
    if (PressButton(point) == ButtonPress::Done) {
        window.StopTimer(kTimerLongPress);
        return true;
    }
    state.press.DragPath.clear();
    if (View().scatter) return PressInList(window, Calendar().CurrentAllViewer().objects, point);
    switch (View().period.level) {
        case Level::Year:
            return PressInYear(window, point);
        case Level::Month:
            return PressInMonth(window, point);
        default:
            return PressInList(window, Calendar().CurrentDayViewer().objects, point);
    }
}

bool OnLeftDown(const AppParts& parts, Window& window, const Event& event) {
    AppState& state = State();
    KeepActivityTime();
    state.press.DragPath.clear();
    state.run.SlideOpenedByCommand = 0;
    parts.slideShow.Hide();
    parts.neighbor.Hide();
    parts.petals.Hide();
    const bool dayGrid = View().period.level == Level::Month ||
                         (View().period.level == Level::Year && state.settings.CalendarMode);
    if (event.ctrl && dayGrid) {
        window.StopTimer(kTimerLongPress);
        ChangeToDaily(0);
        return true;
    }
    window.StopTimer(kTimerLongPress);
    window.StartTimer(kTimerLongPress, kLongPressMs);
    ClearButtonFocus();
    SetPressedButton(event.point, true);
    const bool used = HandleLeftPress(window, event.point);
    // On a button too; but a button's work has stopped the timer, so that holding it opens no day.
    state.press.PressActive = 1;
    state.press.PressPoint = event.point;
    // A button may have opened a dialog, which then saw the release.
    if (!IsLeftButtonDown()) SetPressedButton(event.point, false);
    return used;
}

bool OnLeftUp(Window& window, const Event& event) {
    KeepActivityTime();
    State().press.PressActive = 0;
    SetPressedButton(event.point, false);
    window.StopTimer(kTimerLongPress);
    return true;
}

bool OnMouseMove(const AppParts& parts, Window& window, const Event& event) {
    AppState& state = State();
    KeepActivityTime();
    const double way =
        std::hypot(event.point.x - state.press.PressPoint.x, event.point.y - state.press.PressPoint.y);
    if (!event.leftButton || way <= kClickRadius) return true;
    state.press.PressActive = 0;
    return state.press.DragPath.empty() || parts.dragSource.Start(window, state.press.DragPath);
}

bool OnLeftDoubleClick(const AppParts& parts, Window& window, const Event& event) {
    AppState& state = State();
    KeepActivityTime();
    state.press.ObjectHit = 0;
    state.press.DragPath.clear();
    if (FindButton(event.point, nullptr))
        return OnLeftDown(parts, window, event);  // two quick presses are two presses
    if (View().period.level == Level::Day)
        DoubleClickInDay(parts, window, event.point);
    else if (View().scatter)
        OpenHit(parts, Calendar().CurrentAllViewer().objects, event.point);
    else if (View().period.level == Level::Month)
        DoubleClickInMonth(parts, window, event.point);
    else
        DoubleClickInYear(parts, window, event.point);
    return true;
}

bool OnRightUp() {
    KeepActivityTime();
    return true;
}

bool OnRightDoubleClick(const AppParts& parts, const Event& event) {
    KeepActivityTime();
    const Window* window = MainWindow();
    const std::string path = window ? PathUnder(*window, event.point) : std::string();
    if (!path.empty()) parts.neighbor.Show(path);
    return true;
}

bool OnWheel(Window& window, const Event& event) {
    KeepActivityTime();
    window.SendCommand(event.wheel > 0 ? kCommandThumbnailLarger : kCommandThumbnailSmaller);
    return true;
}

}  // namespace kalmora
