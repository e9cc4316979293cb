#include "views/control/navigation.h"

#include <algorithm>

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
#include "views/model/calendar_geometry.h"
#include "views/model/calendar_store.h"
#include "views/model/stop_load.h"
#include "views/paint/paint_view.h"

namespace kalmora {

namespace {

void AdvanceRing() {
    if (State().view.AllViewMode)
        Calendar().AdvanceAllRing();
    else
        Calendar().AdvanceDayRing();
}

void ReloadPeriod() {
    SetButtonStates();
    UpdateObjects();
}

void ClampDay() {
    AppState& state = State();
    if (state.view.ViewType == kDaily)
        state.view.TargetDay =
            std::min(state.view.TargetDay.load(), DaysInMonth(state.view.TargetYear, state.view.TargetMonth));
}

void BeginMonthStep() {
    StopCurrentLoad();
    if (State().view.AllViewMode) Calendar().AdvanceAllRing();
}

void StepYears(int years) { State().view.TargetYear = State().view.TargetYear + years; }

void MakeStep(Step step) {
    const int view = State().view.ViewType;
    switch (step) {
        case Step::OuterNext:
            if (view == kDaily) return NextMonth();
            return StepYears(view == kYearly ? 2 : 1);
        case Step::Next:
            if (view == kDaily) return NextDay();
            return view == kYearly ? StepYears(1) : NextMonth();
        case Step::Previous:
            if (view == kDaily) return PrevDay();
            return view == kYearly ? StepYears(-1) : PrevMonth();
        case Step::OuterPrevious:
            if (view == kDaily) return PrevMonth();
            return StepYears(view == kYearly ? -2 : -1);
    }
}

// The day under the cursor; may set TargetMonth. 0 when there is none.
int DayUnderCursor() {
    AppState& state = State();
    const Window* window = MainWindow();
    if (!window) return 0;
    const Point point = window->ToClient(CursorPosition());
    const Size client = window->ClientSize();
    if (state.view.ViewType == kMonthly)
        return MonthHitTest(MakeMonthGrid(state.view.TargetYear, state.view.TargetMonth,
                                          {0, 0, client.width, client.height}, false),
                            point);
    if (state.view.ViewType != kYearly || !state.settings.CalendarMode) return 0;
    const YearHit hit = YearHitTest(state.view.TargetYear, client.width, true, point);
    if (hit.day < 1) return 0;
    state.view.TargetMonth = hit.month;
    return hit.day;
}

// A change that came to nothing has stopped the view: what is loaded already shall move on.
void LetViewGoOn() {
    const AppState& state = State();
    if (state.view.AllViewMode || state.view.ViewType == kDaily) return;  // the next walk clears its own stop
    YearView& slot = Calendar().SlotOf(state.view.TargetYear);
    if (slot.ready) slot.stop = false;
    for (MonthView& month : slot.months)
        if (month.ready) month.LowerStop();
}

void OpenMonthOfYear(const SystemTime& today) {
    AppState& state = State();
    StopCurrentLoad();
    state.view.ViewType = kMonthly;
    SetButtonStates();
    DrawButtonsOnWindow();
    if (today.year == state.view.TargetYear) {
        // Today's month goes into the day, not into the month: a slip that is kept as it is.
        state.view.TargetDay = today.month;
    } else {
        int found = 0;
        for (int month = 1; month <= 12 && found == 0; ++month)
            if (files::IsFolder(MakeMonthFolderPath(MainRoot(), state.view.TargetYear, month))) found = month;
        state.view.TargetMonth = found > 0 ? found : Random() % 12 + 1;
    }
    // Draws the month at random, whatever was found before: kept as it is.
    ChangeToMonthly(0);
    SetButtonStates();
    DrawButtonsOnWindow();
    UpdateObjects();
}

void OpenDayOfMonth(const SystemTime& today) {
    AppState& state = State();
    StopCurrentLoad();
    state.view.ViewType = kDaily;
    SetButtonStates();
    DrawButtonsOnWindow();
    if (today.year == state.view.TargetYear && today.month == state.view.TargetMonth) {
        state.view.TargetDay = today.day;
    } else {
        int found = 0;
        for (int day = 1; day <= 31 && found == 0; ++day)
            if (files::IsFolder(
                    MakeDayFolderPath(MainRoot(), state.view.TargetYear, state.view.TargetMonth, day)))
                found = day;
        state.view.TargetDay = found > 0 ? found : 15;
    }
    // The view is a day already, so this only stops and clears.
    ChangeToDaily(0);
    SetButtonStates();
    DrawButtonsOnWindow();
    UpdateObjects();
}

void ReloadMode(SharedFlag& mode, bool setButtons) {
    if (setButtons) StopCurrentLoad();
    const NavigationGuard guard;
    if (!guard) return;
    mode = mode ? 0 : 1;
    if (setButtons) SetButtonStates();
    UpdateObjects();
}

}  // namespace

void StepPeriod(Step step) {
    const NavigationGuard guard;
    if (!guard) return;
    MakeStep(step);
    ReloadPeriod();
}

void PrevMonth() {
    BeginMonthStep();
    AppState& state = State();
    if (state.view.TargetMonth <= 1) {
        state.view.TargetMonth = 12;
        StepYears(-1);
    } else {
        state.view.TargetMonth = state.view.TargetMonth - 1;
    }
    ClampDay();
}

void NextMonth() {
    BeginMonthStep();
    AppState& state = State();
    if (state.view.TargetMonth >= 12) {
        state.view.TargetMonth = 1;
        StepYears(1);
    } else {
        state.view.TargetMonth = state.view.TargetMonth + 1;
    }
    ClampDay();
}

void PrevDay() {
    StopCurrentLoad();
    AdvanceRing();
    AppState& state = State();
    if (state.view.TargetDay != 1) {
        state.view.TargetDay = state.view.TargetDay - 1;
        return;
    }
    PrevMonth();  // which advances the scatter's ring a second time; kept as it is
    state.view.TargetDay = DaysInMonth(state.view.TargetYear, state.view.TargetMonth);
}

void NextDay() {
    AppState& state = State();
    const int days = DaysInMonth(state.view.TargetYear, state.view.TargetMonth);
    StopCurrentLoad();
    AdvanceRing();
    if (state.view.TargetDay != days) {
        state.view.TargetDay = state.view.TargetDay + 1;
        return;
    }
    NextMonth();
    state.view.TargetDay = 1;
}

void ToYearly() {
    AppState& state = State();
    if (state.view.ViewType != kMonthly) return;
    if (state.run.ObjectGate.IsStopRequested()) return;
    StopCurrentLoad();
    // Ahead of the guard: when that refuses, the next heartbeat finds the year unloaded and loads it. Kept.
    state.view.ViewType = kYearly;
    const NavigationGuard guard;
    if (guard) ReloadPeriod();
}

void OneLevelUp() {
    AppState& state = State();
    if (state.view.ViewType != kDaily && state.view.ViewType != kMonthly) return;
    if (state.run.ObjectGate.IsStopRequested()) return;
    StopCurrentLoad();
    state.view.ViewType = state.view.ViewType == kDaily ? kMonthly : kYearly;
    const NavigationGuard guard;
    if (guard) ReloadPeriod();
}

void OpenTodayLevel() {
    AppState& state = State();
    if (state.view.ViewType == kDaily) return;
    // Only the first half of the guard: the changes below enter the queue by themselves.
    if (state.run.ObjectGate.IsStopRequested()) return;
    const SystemTime today = LocalTime();
    if (state.view.ViewType == kYearly)
        OpenMonthOfYear(today);
    else
        OpenDayOfMonth(today);
}

void ChangeToMonthly(int month) {
    AppState& state = State();
    StopCurrentLoad();
    state.press.ObjectHit = 0;
    state.press.PressActive = 0;
    state.view.TargetMonth = month < 1 ? Random() % 12 + 1 : month;
    if (state.view.AllViewMode) Calendar().AdvanceAllRing();
    state.view.ViewType = kMonthly;
    state.run.TicksInView = 0;
    UpdateObjects();
    PaintView();
}

void ChangeToDaily(int day) {
    AppState& state = State();
    StopCurrentLoad();
    state.press.ObjectHit = 0;
    state.press.PressActive = 0;
    if (day < 1) day = DayUnderCursor();
    if (day < 1) return LetViewGoOn();
    state.view.TargetDay = day;
    AdvanceRing();
    state.view.ViewType = kDaily;
    state.run.TicksInView = 0;
    UpdateObjects();
    PaintView();
}

void JumpTo(int year, int month, int day) {
    AppState& state = State();
    StopCurrentLoad();
    TicketGuard guard(state.run.ObjectQueue, 1, 100);
    if (!guard) return;
    const bool toDay = month > 0 && day >= 1;
    if (toDay)
        AdvanceRing();
    else if (state.view.AllViewMode)
        Calendar().AdvanceAllRing();
    state.view.ViewType = month <= 0 ? kYearly : toDay ? kDaily : kMonthly;
    state.view.TargetYear = year;
    state.view.TargetMonth = month;
    state.view.TargetDay = day;
    SetButtonStates();
    DrawButtonsOnWindow();
    UpdateObjects();
}

void JumpToToday() {
    const SystemTime today = LocalTime();
    JumpTo(today.year, today.month, today.day);
}

void ToggleAllView() { ReloadMode(State().view.AllViewMode, true); }

void TogglePublicMode() { ReloadMode(State().settings.PublicMode, false); }

void ToggleGoodMode() { ReloadMode(State().settings.GoodMode, false); }

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
