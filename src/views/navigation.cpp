#include "views/navigation.h"

#include <algorithm>

#include "app/app_state.h"
#include "base/random.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/window.h"
#include "store/data_folder.h"
#include "store/date_tree.h"
#include "store/dates.h"
#include "views/button_bar.h"
#include "views/calendar_geometry.h"
#include "views/calendar_store.h"
#include "views/navigation_guard.h"
#include "views/object_loader.h"
#include "views/paint_view.h"

namespace kalmora {

namespace {

void AdvanceRing() {
    if (State().AllViewMode)
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
    if (state.ViewType == kDaily)
        state.TargetDay = std::min(state.TargetDay.load(), DaysInMonth(state.TargetYear, state.TargetMonth));
}

void BeginMonthStep() {
    StopCurrentLoad();
    if (State().AllViewMode) Calendar().AdvanceAllRing();
}

void StepYears(int years) { State().TargetYear = State().TargetYear + years; }

void MakeStep(Step step) {
    const int view = State().ViewType;
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
    if (state.ViewType == kMonthly)
        return MonthHitTest(
            MakeMonthGrid(state.TargetYear, state.TargetMonth, {0, 0, client.width, client.height}, false),
            point);
    if (state.ViewType != kYearly || !state.CalendarMode) return 0;
    const YearHit hit = YearHitTest(state.TargetYear, client.width, true, point);
    if (hit.day < 1) return 0;
    state.TargetMonth = hit.month;
    return hit.day;
}

// A change that came to nothing has stopped the view: what is loaded already shall move on.
void LetViewGoOn() {
    const AppState& state = State();
    if (state.AllViewMode || state.ViewType == kDaily) return;  // the next walk clears its own stop
    YearView& slot = Calendar().SlotOf(state.TargetYear);
    if (slot.ready) slot.stop = false;
    for (MonthView& month : slot.months)
        if (month.ready) month.LowerStop();
}

void OpenMonthOfYear(const SystemTime& today) {
    AppState& state = State();
    StopCurrentLoad();
    state.ViewType = kMonthly;
    SetButtonStates();
    DrawButtonsOnWindow();
    if (today.year == state.TargetYear) {
        // Today's month goes into the day, not into the month: a slip that is kept as it is.
        state.TargetDay = today.month;
    } else {
        int found = 0;
        for (int month = 1; month <= 12 && found == 0; ++month)
            if (files::IsFolder(MakeMonthFolderPath(MainRoot(), state.TargetYear, month))) found = month;
        state.TargetMonth = found > 0 ? found : Random() % 12 + 1;
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
    state.ViewType = kDaily;
    SetButtonStates();
    DrawButtonsOnWindow();
    if (today.year == state.TargetYear && today.month == state.TargetMonth) {
        state.TargetDay = today.day;
    } else {
        int found = 0;
        for (int day = 1; day <= 31 && found == 0; ++day)
            if (files::IsFolder(MakeDayFolderPath(MainRoot(), state.TargetYear, state.TargetMonth, day)))
                found = day;
        state.TargetDay = found > 0 ? found : 15;
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

void StopCurrentLoad() {
    const AppState& state = State();
    CalendarStore& calendar = Calendar();
    if (state.AllViewMode) {
        calendar.CurrentAllViewer().stop = true;
    } else if (state.ViewType == kDaily) {
        calendar.CurrentDayViewer().stop = true;
    } else if (state.ViewType == kMonthly) {
        calendar.MonthOf(state.TargetYear, state.TargetMonth).RaiseStop();
    } else {
        calendar.SlotOf(state.TargetYear).RaiseStop();
    }
}

void StepPeriod(Step step) {
    const NavigationGuard guard;
    if (!guard) return;
    MakeStep(step);
    ReloadPeriod();
}

void PrevMonth() {
    BeginMonthStep();
    AppState& state = State();
    if (state.TargetMonth <= 1) {
        state.TargetMonth = 12;
        StepYears(-1);
    } else {
        state.TargetMonth = state.TargetMonth - 1;
    }
    ClampDay();
}

void NextMonth() {
    BeginMonthStep();
    AppState& state = State();
    if (state.TargetMonth >= 12) {
        state.TargetMonth = 1;
        StepYears(1);
    } else {
        state.TargetMonth = state.TargetMonth + 1;
    }
    ClampDay();
}

void PrevDay() {
    StopCurrentLoad();
    AdvanceRing();
    AppState& state = State();
    if (state.TargetDay != 1) {
        state.TargetDay = state.TargetDay - 1;
        return;
    }
    PrevMonth();  // which advances the scatter's ring a second time; kept as it is
    state.TargetDay = DaysInMonth(state.TargetYear, state.TargetMonth);
}

void NextDay() {
    AppState& state = State();
    const int days = DaysInMonth(state.TargetYear, state.TargetMonth);
    StopCurrentLoad();
    AdvanceRing();
    if (state.TargetDay != days) {
        state.TargetDay = state.TargetDay + 1;
        return;
    }
    NextMonth();
    state.TargetDay = 1;
}

void ToYearly() {
    AppState& state = State();
    if (state.ViewType != kMonthly) return;
    if (state.ObjectGate.IsStopRequested()) return;
    StopCurrentLoad();
    // Ahead of the guard: when that refuses, the next heartbeat finds the year unloaded and loads it. Kept.
    state.ViewType = kYearly;
    const NavigationGuard guard;
    if (guard) ReloadPeriod();
}

void OneLevelUp() {
    AppState& state = State();
    if (state.ViewType != kDaily && state.ViewType != kMonthly) return;
    if (state.ObjectGate.IsStopRequested()) return;
    StopCurrentLoad();
    state.ViewType = state.ViewType == kDaily ? kMonthly : kYearly;
    const NavigationGuard guard;
    if (guard) ReloadPeriod();
}

void OpenTodayLevel() {
    AppState& state = State();
    if (state.ViewType == kDaily) return;
    // Only the first half of the guard: the changes below enter the queue by themselves.
    if (state.ObjectGate.IsStopRequested()) return;
    const SystemTime today = LocalTime();
    if (state.ViewType == kYearly)
        OpenMonthOfYear(today);
    else
        OpenDayOfMonth(today);
}

void ChangeToMonthly(int month) {
    AppState& state = State();
    StopCurrentLoad();
    state.ObjectHit = 0;
    state.PressActive = 0;
    state.TargetMonth = month < 1 ? Random() % 12 + 1 : month;
    if (state.AllViewMode) Calendar().AdvanceAllRing();
    state.ViewType = kMonthly;
    state.TicksInView = 0;
    UpdateObjects();
    PaintView();
}

void ChangeToDaily(int day) {
    AppState& state = State();
    StopCurrentLoad();
    state.ObjectHit = 0;
    state.PressActive = 0;
    if (day < 1) day = DayUnderCursor();
    if (day < 1) return LetViewGoOn();
    state.TargetDay = day;
    AdvanceRing();
    state.ViewType = kDaily;
    state.TicksInView = 0;
    UpdateObjects();
    PaintView();
}

void JumpTo(int year, int month, int day) {
    AppState& state = State();
    StopCurrentLoad();
    TicketGuard guard(state.ObjectQueue, 1, 100);
    if (!guard) return;
    const bool toDay = month > 0 && day >= 1;
    if (toDay)
        AdvanceRing();
    else if (state.AllViewMode)
        Calendar().AdvanceAllRing();
    state.ViewType = month <= 0 ? kYearly : toDay ? kDaily : kMonthly;
    state.TargetYear = year;
    state.TargetMonth = month;
    state.TargetDay = day;
    SetButtonStates();
    DrawButtonsOnWindow();
    UpdateObjects();
}

void JumpToToday() {
    const SystemTime today = LocalTime();
    JumpTo(today.year, today.month, today.day);
}

void ToggleAllView() { ReloadMode(State().AllViewMode, true); }

void TogglePublicMode() { ReloadMode(State().PublicMode, false); }

void ToggleGoodMode() { ReloadMode(State().GoodMode, false); }

void ToggleAutoNavigate() {
    State().AutoNavigate = State().AutoNavigate ? 0 : 1;
    SetButtonStates();
    DrawButtonsOnWindow();
}

void TogglePaused() {
    State().Paused = State().Paused ? 0 : 1;
    SetButtonStates();
    DrawButtonsOnWindow();
}

}  // namespace kalmora
