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
#include "views/model/calendar_store.h"

namespace kalmora {

namespace {

constexpr int kLongPressMs = 2000;
constexpr double kClickRadius = 2.0;  // pixels; a longer way is a drag

void KeepActivityTime() { State().run.LastActivity = UptimeMs(); }

Rect ToScreen(const Window& window, const Rect& client) {
    const Point corner = window.ToScreen({client.x, client.y});
    return {corner.x, corner.y, client.width, client.height};
}

ViewHit HitUnder(const AppParts& parts, const Window& window, Point point) {
    const ViewState view = View();
    return parts.calendar.ViewOf(view).HitTest(view.period, point, window.ClientSize());
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

void OpenText(const std::string& path) {
    if (!path.empty()) shell::OpenWithEditor(State().settings.TextEditor, path);
}

void OpenObject(const AppParts& parts, const std::string& path, ObjectKind kind) {
    if (kind == ObjectKind::Text)
        OpenText(path);
    else if (!path.empty())
        parts.slideShow.Show(path);
}

void MakeAndOpenText(const AppParts& parts, const CalendarDate& day, const std::string& content) {
    OpenText(parts.scraps.MakeText(day, content));
}

void MakeHourNote(const AppParts& parts, const CalendarDate& day, int hour) {
    char content[64];
    std::snprintf(content, sizeof content, "[Schedule]\n[%04d/%02d/%02d %02d:00]\n", day.year, day.month,
                  day.day, hour);
    MakeAndOpenText(parts, day, content);
}

}  // namespace

bool HandleLeftPress(const AppParts& parts, Window& window, Point point) {
    AppState& state = State();
    if (PressButton(parts.calendar, point) == ButtonPress::Done) {
        window.StopTimer(kTimerLongPress);
        return true;
    }
    state.press.DragPath.clear();
    const ViewHit hit = HitUnder(parts, window, point);
    if (hit.part == ViewHit::Part::MonthHeading) {
        ChangeToMonthly(parts.calendar, hit.date.month);
        return true;
    }
    if (hit.part == ViewHit::Part::DayNumber) {
        ChangeToDaily(parts.calendar, hit.date.day);
        return true;
    }
    if (!hit.hasObject) return false;
    HoldObject(window, hit.area, hit.path);
    if (hit.picksDay) {
        ChangeView([&](ViewState& view) { view.period.date.day = hit.date.day; });
        state.press.ObjectHit = 1;  // here also for an empty cell
    }
    return true;
}

bool OnLeftDown(const AppParts& parts, Window& window, const Event& event) {
    AppState& state = State();
    KeepActivityTime();
    state.press.DragPath.clear();
    state.run.SlideOpenedByCommand = 0;
    parts.slideShow.Hide();
    parts.neighbor.Hide();
    parts.petals.Hide();
    const bool dayGrid = parts.calendar.ViewOf(View()).HasDayCells();
    if (event.ctrl && dayGrid) {
        window.StopTimer(kTimerLongPress);
        ChangeToDaily(parts.calendar, 0);
        return true;
    }
    window.StopTimer(kTimerLongPress);
    window.StartTimer(kTimerLongPress, kLongPressMs);
    ClearButtonFocus();
    SetPressedButton(event.point, true);
    const bool used = HandleLeftPress(parts, window, event.point);
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
    const ViewHit hit = HitUnder(parts, window, event.point);
    if (hit.part == ViewHit::Part::HourPicture)
        MakeHourNote(parts, hit.date, hit.hour);
    else if (hit.part == ViewHit::Part::DayNumber)
        MakeAndOpenText(parts, hit.date, "");
    else if (hit.hasObject)
        OpenObject(parts, hit.path, hit.kind);
    else if (hit.part == ViewHit::Part::DayGround)
        MakeAndOpenText(parts, hit.date, "");
    return true;
}

bool OnRightUp() {
    KeepActivityTime();
    return true;
}

bool OnRightDoubleClick(const AppParts& parts, const Event& event) {
    KeepActivityTime();
    const Window* window = MainWindow();
    const std::string path = window ? HitUnder(parts, *window, event.point).path : std::string();
    if (!path.empty()) parts.neighbor.Show(path);
    return true;
}

bool OnWheel(Window& window, const Event& event) {
    KeepActivityTime();
    window.SendCommand(event.wheel > 0 ? kCommandThumbnailLarger : kCommandThumbnailSmaller);
    return true;
}

}  // namespace kalmora
