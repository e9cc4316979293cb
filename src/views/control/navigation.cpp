#include "views/control/navigation.h"

#include <algorithm>
#include <optional>

#include "base/dates.h"
#include "base/random.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/window.h"
#include "state/app_state.h"
#include "store/data_folder.h"
#include "store/date_tree.h"
#include "views/bar/button_bar.h"
#include "views/control/navigation_guard.h"
#include "views/load/object_loader.h"
#include "views/model/calendar_store.h"
#include "views/model/stop_load.h"
#include "views/paint/paint_view.h"

namespace kalmora {

namespace {

void AdvanceRing(CalendarStore& calendar) {
    if (View().scatter)
        calendar.AdvanceAllRing();
    else
        calendar.AdvanceDayRing();
}

void ReloadPeriod(CalendarStore& calendar) {
    SetButtonStates();
    UpdateObjects(calendar);
}

void BeginMonthStep(CalendarStore& calendar) {
    StopCurrentLoad(calendar);
    if (View().scatter) calendar.AdvanceAllRing();
}

Period WithPreviousMonth(Period period) {
    CalendarDate& date = period.date;
    if (date.month <= 1) {
        date.month = 12;
        --date.year;
    } else {
        --date.month;
    }
    if (period.level == Level::Day) date.day = std::min(date.day, DaysInMonth(date.year, date.month));
    return period;
}

Period WithNextMonth(Period period) {
    CalendarDate& date = period.date;
    if (date.month >= 12) {
        date.month = 1;
        ++date.year;
    } else {
        ++date.month;
    }
    if (period.level == Level::Day) date.day = std::min(date.day, DaysInMonth(date.year, date.month));
    return period;
}

bool IsLastDay(const CalendarDate& date) { return date.day == DaysInMonth(date.year, date.month); }

// The day under the cursor in a grid of days.
std::optional<CalendarDate> DayUnderCursor(CalendarStore& calendar) {
    const Window* window = MainWindow();
    if (!window) return std::nullopt;
    const ViewState view = View();
    return calendar.ViewOf(view).DayUnder(view.period, window->ToClient(CursorPosition()),
                                          window->ClientSize());
}

void OpenMonthOfYear(CalendarStore& calendar, const SystemTime& today) {
    StopCurrentLoad(calendar);
    Period target{Level::Month, View().period.date};
    if (today.year == target.date.year) {
        // Today's month goes into the day, not into the month: a slip that is kept as it is.
        target.date.day = today.month;
    } else {
        int found = 0;
        for (int month = 1; month <= 12 && found == 0; ++month)
            if (files::IsFolder(MakeMonthFolderPath(MainRoot(), target.date.year, month))) found = month;
        target.date.month = found > 0 ? found : Random() % 12 + 1;
    }
    ChangeView([&](ViewState& view) { view.period = target; });
    SetButtonStates();
    DrawButtonsOnWindow();
    // Draws the month at random, without regard to what was found before: kept as it is.
    ChangeToMonthly(calendar, 0);
    SetButtonStates();
    DrawButtonsOnWindow();
    UpdateObjects(calendar);
}

void OpenDayOfMonth(CalendarStore& calendar, const SystemTime& today) {
    StopCurrentLoad(calendar);
    Period target{Level::Day, View().period.date};
    CalendarDate& date = target.date;
    if (today.year == date.year && today.month == date.month) {
        date.day = today.day;
    } else {
        int found = 0;
        for (int day = 1; day <= 31 && found == 0; ++day)
            if (files::IsFolder(MakeDayFolderPath(MainRoot(), date.year, date.month, day))) found = day;
        date.day = found > 0 ? found : 15;
    }
    ChangeView([&](ViewState& view) { view.period = target; });
    SetButtonStates();
    DrawButtonsOnWindow();
    // The view is a day already, so this only clears what is pressed.
    ChangeToDaily(calendar, 0);
    SetButtonStates();
    DrawButtonsOnWindow();
    UpdateObjects(calendar);
}

// A mode of the filters.
void FlipFilter(CalendarStore& calendar, SharedFlag& mode) {
    const NavigationGuard guard;
    if (!guard) return;
    mode = mode ? 0 : 1;
    UpdateObjects(calendar);
}

}  // namespace

void StepPeriod(CalendarStore& calendar, Step step) {
    const NavigationGuard guard;
    if (!guard) return;
    UpdateObjectsSoon(calendar);
    calendar.ViewOf(View()).MakeStep(step);
    SetButtonStates();
}

void StepYears(int years) {
    ChangeView([&](ViewState& view) { view.period.date.year += years; });
}

void PrevMonth(CalendarStore& calendar) {
    BeginMonthStep(calendar);
    ChangeView([](ViewState& view) { view.period = WithPreviousMonth(view.period); });
}

void NextMonth(CalendarStore& calendar) {
    BeginMonthStep(calendar);
    ChangeView([](ViewState& view) { view.period = WithNextMonth(view.period); });
}

void PrevDay(CalendarStore& calendar) {
    StopCurrentLoad(calendar);
    AdvanceRing(calendar);
    // Over the month's edge this advances the scatter's ring a second time; kept as it is.
    if (View().period.date.day == 1) BeginMonthStep(calendar);
    ChangeView([](ViewState& view) {
        CalendarDate& date = view.period.date;
        if (date.day != 1) {
            --date.day;
            return;
        }
        view.period = WithPreviousMonth(view.period);
        date.day = DaysInMonth(date.year, date.month);
    });
}

void NextDay(CalendarStore& calendar) {
    StopCurrentLoad(calendar);
    AdvanceRing(calendar);
    if (IsLastDay(View().period.date)) BeginMonthStep(calendar);
    ChangeView([](ViewState& view) {
        CalendarDate& date = view.period.date;
        if (!IsLastDay(date)) {
            ++date.day;
            return;
        }
        view.period = WithNextMonth(view.period);
        date.day = 1;
    });
}

void ToYearly(CalendarStore& calendar) {
    if (View().period.level != Level::Month) return;
    if (State().run.ObjectGate.IsStopRequested()) return;
    StopCurrentLoad(calendar);
    // Ahead of the guard: when that refuses, the next heartbeat finds the year unloaded and loads it. Kept.
    ChangeView([](ViewState& view) { view.period.level = Level::Year; });
    const NavigationGuard guard;
    if (guard) ReloadPeriod(calendar);
}

void OneLevelUp(CalendarStore& calendar) {
    const Level level = View().period.level;
    if (level == Level::Year) return;
    if (State().run.ObjectGate.IsStopRequested()) return;
    StopCurrentLoad(calendar);
    ChangeView(
        [&](ViewState& view) { view.period.level = level == Level::Day ? Level::Month : Level::Year; });
    const NavigationGuard guard;
    if (guard) ReloadPeriod(calendar);
}

void OpenTodayLevel(CalendarStore& calendar) {
    const Level level = View().period.level;
    if (level == Level::Day) return;
    // Only the first half of the guard: the changes below enter the queue by themselves.
    if (State().run.ObjectGate.IsStopRequested()) return;
    const SystemTime today = LocalTime();
    if (level == Level::Year)
        OpenMonthOfYear(calendar, today);
    else
        OpenDayOfMonth(calendar, today);
}

void ChangeToMonthly(CalendarStore& calendar, int month) {
    AppState& state = State();
    StopCurrentLoad(calendar);
    state.press.ObjectHit = 0;
    state.press.PressActive = 0;
    if (month < 1) month = Random() % 12 + 1;
    if (View().scatter) calendar.AdvanceAllRing();
    ChangeView([&](ViewState& view) {
        view.period.level = Level::Month;
        view.period.date.month = month;
    });
    state.run.TicksInView = 0;
    UpdateObjects(calendar);
    if (Window* window = MainWindow()) window->Invalidate();
}

void ChangeToDaily(CalendarStore& calendar, int day) {
    AppState& state = State();
    state.press.ObjectHit = 0;
    state.press.PressActive = 0;
    CalendarDate target = View().period.date;
    if (day < 1) {
        const auto found = DayUnderCursor(calendar);
        if (!found) return;
        target = *found;
    } else {
        target.day = day;
    }
    // Only now: a press that leads to no day leaves the view at work.
    StopCurrentLoad(calendar);
    AdvanceRing(calendar);
    ChangeView([&](ViewState& view) { view.period = {Level::Day, target}; });
    state.run.TicksInView = 0;
    UpdateObjects(calendar);
    if (Window* window = MainWindow()) window->Invalidate();
}

void JumpTo(CalendarStore& calendar, int year, int month, int day) {
    TicketGuard guard(State().run.ObjectQueue, 1, 100);
    if (!guard) return;
    StopCurrentLoad(calendar);
    const bool toDay = month > 0 && day >= 1;
    if (toDay)
        AdvanceRing(calendar);
    else if (View().scatter)
        calendar.AdvanceAllRing();
    const Level level = month <= 0 ? Level::Year : toDay ? Level::Day : Level::Month;
    ChangeView([&](ViewState& view) { view.period = {level, {year, month, day}}; });
    SetButtonStates();
    DrawButtonsOnWindow();
    UpdateObjects(calendar);
}

void JumpToToday(CalendarStore& calendar) {
    const SystemTime today = LocalTime();
    JumpTo(calendar, today.year, today.month, today.day);
}

void ToggleAllView(CalendarStore& calendar) {
    const NavigationGuard guard;
    if (!guard) return;
    StopCurrentLoad(calendar);
    ChangeView([](ViewState& view) { view.scatter = !view.scatter; });
    ReloadPeriod(calendar);
}

void TogglePublicMode(CalendarStore& calendar) { FlipFilter(calendar, State().settings.PublicMode); }

void ToggleGoodMode(CalendarStore& calendar) { FlipFilter(calendar, State().settings.GoodMode); }

void ToggleAutoNavigate() {
    State().settings.AutoNavigate = State().settings.AutoNavigate ? 0 : 1;
    SetButtonStates();
    DrawButtonsOnWindow();
}

void TogglePaused() {
    State().run.Paused = State().run.Paused ? 0 : 1;
    SetButtonStates();
    DrawButtonsOnWindow();
}

}  // namespace kalmora
