#include <cmath>
#include <cstdio>
#include <string>

#include "app/app_hooks.h"
#include "app/app_state.h"
#include "app/main_window.h"
#include "app/main_window_events.h"
#include "platform/clock.h"
#include "platform/shell.h"
#include "views/button_bar.h"
#include "views/calendar_geometry.h"
#include "views/calendar_store.h"
#include "views/commands.h"
#include "views/hooks.h"
#include "views/navigation.h"
#include "views/paint_cell.h"
#include "views/paint_view.h"

namespace kalmora {

namespace {

constexpr int kLongPressMs = 2000;
constexpr double kClickRadius = 2.0;             // pixels; a longer way is a drag
constexpr int kNumberFrom = 10, kNumberTo = 30;  // the day number's square in a cell

void NoteActivity() { State().LastActivity = UptimeMs(); }

Rect ToScreen(const Window& window, const Rect& client) {
    const Point corner = window.ToScreen({client.x, client.y});
    return {corner.x, corner.y, client.width, client.height};
}

bool IsOnDayNumber(const Rect& cell, Point point) {
    const int dx = point.x - cell.x, dy = point.y - cell.y;
    return dx >= kNumberFrom && dx <= kNumberTo && dy >= kNumberFrom && dy <= kNumberTo;
}

MonthGrid MonthInView(const Window& window) {
    const Size client = window.ClientSize();
    return MakeMonthGrid(State().TargetYear, State().TargetMonth, {0, 0, client.width, client.height}, false);
}

std::string PathOfCell(int year, int month, int day) {
    const CellContent content = ContentOfCell(year, month, day);
    return content.count > 0 ? content.entry.path : std::string();
}

// The object that stands for a month drawn as one picture.
std::string PathOfMonth(int year, int month) {
    if (!Calendar().MonthOf(year, month).ready) return {};
    const int day = RepresentativeDay(year, month);
    return day > 0 ? PathOfCell(year, month, day) : std::string();
}

// Something lies under the press: it may be dragged out, and a drop on `area` rates it.
bool HoldObject(const Window& window, const Rect& area, const std::string& path) {
    AppState& state = State();
    state.PressActive = 1;
    state.DragRect = ToScreen(window, area);
    state.DragPath = path;
    if (!path.empty()) state.ObjectHit = 1;
    return true;
}

bool PressInList(const Window& window, const ObjectList& list, Point point) {
    ObjectList::Hit hit;
    if (!list.HitTest(point, &hit)) return false;
    return HoldObject(window, hit.drawn, hit.path);
}

bool PressInYear(const Window& window, Point point) {
    const AppState& state = State();
    const int width = window.ClientSize().width;
    if (const int month = MonthPictureHitTest(width, point); month > 0) {
        ChangeToMonthly(month);
        return true;
    }
    const YearHit hit = YearHitTest(state.TargetYear, width, state.CalendarMode != 0, point);
    if (hit.month < 1) return false;
    if (!state.CalendarMode)
        return HoldObject(window, YearMonthRect(width, hit.month), PathOfMonth(state.TargetYear, hit.month));
    const MonthGrid grid = MakeMonthGrid(state.TargetYear, hit.month, YearMonthRect(width, hit.month), true);
    return HoldObject(window, MonthCellRect(grid, hit.day), PathOfCell(state.TargetYear, hit.month, hit.day));
}

bool PressInMonth(const Window& window, Point point) {
    const AppState& state = State();
    const MonthGrid grid = MonthInView(window);
    const int day = MonthHitTest(grid, point);
    if (day < 1) return false;
    const Rect cell = MonthCellRect(grid, day);
    if (IsOnDayNumber(cell, point)) {
        ChangeToDaily(day);
        return true;
    }
    HoldObject(window, cell, PathOfCell(state.TargetYear, state.TargetMonth, day));
    State().TargetDay = day;
    State().ObjectHit = 1;  // here also for an empty cell
    return true;
}

void OpenText(const std::string& path) {
    if (!path.empty()) shell::OpenWithEditor(State().TextEditor, path);
}

void OpenObject(const std::string& path, ObjectKind kind) {
    if (kind == ObjectKind::Text)
        OpenText(path);
    else if (!path.empty())
        Shell().OpenSlideShowAt(path);
}

void MakeAndOpenText(int day, const std::string& content) {
    const AppState& state = State();
    OpenText(Shell().MakeText(state.TargetYear, state.TargetMonth, day, content));
}

bool OpenHit(const ObjectList& list, Point point) {
    ObjectList::Hit hit;
    if (!list.HitTest(point, &hit)) return false;
    OpenObject(hit.path, hit.kind);
    return true;
}

bool OpenHourNote(const Window& window, Point point) {
    const AppState& state = State();
    const DayLines lines = MakeDayLines(window.ClientSize().height, state.DayNumberOfLine, state.DayDuration,
                                        state.DayStartTime);
    for (int line = lines.lines - 1; line >= 0; --line) {
        if (!lines.HourPictureRect(line).ContainsInclusive(point)) continue;
        char content[64];
        std::snprintf(content, sizeof content, "[Schedule]\n[%04d/%02d/%02d %02d:00]\n",
                      state.TargetYear.load(), state.TargetMonth.load(), state.TargetDay.load(),
                      lines.HourOfLine(line));
        MakeAndOpenText(state.TargetDay, content);
        return true;
    }
    return false;
}

void DoubleClickInDay(const Window& window, Point point) {
    const AppState& state = State();
    if (state.AllViewMode) {
        if (OpenHit(Calendar().CurrentAllViewer().objects, point)) return;
    } else if (OpenHourNote(window, point) || OpenHit(Calendar().CurrentDayViewer().objects, point)) {
        return;
    }
    MakeAndOpenText(state.TargetDay, "");
}

void DoubleClickInMonth(const Window& window, Point point) {
    const AppState& state = State();
    const MonthGrid grid = MonthInView(window);
    const int day = MonthHitTest(grid, point);
    if (day < 1) return;
    if (IsOnDayNumber(MonthCellRect(grid, day), point)) return MakeAndOpenText(day, "");
    const CellContent content = ContentOfCell(state.TargetYear, state.TargetMonth, day);
    if (content.count > 0) OpenObject(content.entry.path, content.entry.kind);
}

void DoubleClickInYear(const Window& window, Point point) {
    const AppState& state = State();
    const YearHit hit =
        YearHitTest(state.TargetYear, window.ClientSize().width, state.CalendarMode != 0, point);
    if (hit.month < 1) return;
    const std::string path = state.CalendarMode ? PathOfCell(state.TargetYear, hit.month, hit.day)
                                                : PathOfMonth(state.TargetYear, hit.month);
    OpenObject(path, ClassifyFile(path));
}

// The path of what lies under the point in any view; empty when nothing does.
std::string PathUnder(const Window& window, Point point) {
    const AppState& state = State();
    ObjectList::Hit hit;
    if (state.AllViewMode) return Calendar().CurrentAllViewer().objects.HitTest(point, &hit) ? hit.path : "";
    if (state.ViewType == kDaily)
        return Calendar().CurrentDayViewer().objects.HitTest(point, &hit) ? hit.path : "";
    if (state.ViewType == kMonthly) {
        const int day = MonthHitTest(MonthInView(window), point);
        return day > 0 ? PathOfCell(state.TargetYear, state.TargetMonth, day) : "";
    }
    const YearHit year =
        YearHitTest(state.TargetYear, window.ClientSize().width, state.CalendarMode != 0, point);
    if (year.month < 1) return {};
    return state.CalendarMode ? PathOfCell(state.TargetYear, year.month, year.day)
                              : PathOfMonth(state.TargetYear, year.month);
}

}  // namespace

bool HandleLeftPress(Window& window, Point point) {
    AppState& state = State();
    switch (PressButton(point)) {
        case ButtonPress::Done:
            window.StopTimer(kTimerLongPress);
            return true;
        case ButtonPress::NoAction:
            state.ObjectHit = 0;
            return false;
        case ButtonPress::None:
            break;
    }
    state.DragPath.clear();
    if (state.AllViewMode) return PressInList(window, Calendar().CurrentAllViewer().objects, point);
    switch (state.ViewType) {
        case kYearly:
            return PressInYear(window, point);
        case kMonthly:
            return PressInMonth(window, point);
        default:
            return PressInList(window, Calendar().CurrentDayViewer().objects, point);
    }
}

bool OnLeftDown(Window& window, const Event& event) {
    AppState& state = State();
    NoteActivity();
    state.DragPath.clear();
    state.SlideOpenedByCommand = 0;
    Shell().CloseSlideShow();
    Shell().HideNeighbor();
    Shell().HideEstimate();
    const bool dayGrid = state.ViewType == kMonthly || (state.ViewType == kYearly && state.CalendarMode);
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
    state.PressActive = 1;
    state.PressPoint = event.point;
    // A button may have opened a dialog, which then saw the release.
    if (!IsLeftButtonDown()) SetPressedButton(event.point, false);
    return used;
}

bool OnLeftUp(Window& window, const Event& event) {
    NoteActivity();
    State().PressActive = 0;
    SetPressedButton(event.point, false);
    window.StopTimer(kTimerLongPress);
    return true;
}

bool OnMouseMove(Window& window, const Event& event) {
    AppState& state = State();
    NoteActivity();
    const double way = std::hypot(event.point.x - state.PressPoint.x, event.point.y - state.PressPoint.y);
    if (!event.leftButton || way <= kClickRadius) return true;
    state.PressActive = 0;
    return state.DragPath.empty() || Shell().StartDragOut(window, state.DragPath);
}

bool OnLeftDoubleClick(Window& window, const Event& event) {
    AppState& state = State();
    NoteActivity();
    state.ObjectHit = 0;
    state.DragPath.clear();
    if (FindButton(event.point, nullptr))
        return OnLeftDown(window, event);  // two quick presses are two presses
    if (state.ViewType == kDaily)
        DoubleClickInDay(window, event.point);
    else if (state.AllViewMode)
        OpenHit(Calendar().CurrentAllViewer().objects, event.point);
    else if (state.ViewType == kMonthly)
        DoubleClickInMonth(window, event.point);
    else
        DoubleClickInYear(window, event.point);
    return true;
}

bool OnRightUp() {
    NoteActivity();
    return true;
}

bool OnRightDoubleClick(const Event& event) {
    NoteActivity();
    const Window* window = MainWindow();
    const std::string path = window ? PathUnder(*window, event.point) : std::string();
    if (!path.empty()) Shell().ShowNeighbor(path);
    return true;
}

bool OnWheel(Window& window, const Event& event) {
    NoteActivity();
    window.SendCommand(event.wheel > 0 ? kCommandThumbnailLarger : kCommandThumbnailSmaller);
    return true;
}

}  // namespace kalmora
