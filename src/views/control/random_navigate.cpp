#include <algorithm>

#include "state/app_state.h"
#include "store/date_tree.h"
#include "views/control/navigation.h"
#include "views/load/object_loader.h"
#include "views/model/calendar_store.h"
#include "views/model/stop_load.h"

namespace kalmora {

namespace {

// How many beats a view stands at least: one an object, one for ten above the day.
int StandTime(int viewType, int year, int month, int day) {
    const DateTree& dates = TheDateTree();
    switch (viewType) {
        case kYearly:
            return dates.CountOf(year, 0, 0).value_or(0) / 10;
        case kMonthly:
            return std::max(10, dates.CountOf(year, month, 0).value_or(0) / 10);
        default:
            return dates.CountOf(year, month, day).value_or(0);
    }
}

int LevelOf(int viewType) {
    return viewType == kYearly ? kYearLevel : viewType == kMonthly ? kMonthLevel : kDayLevel;
}

}  // namespace

bool RandomNavigate() {
    AppState& state = State();
    CalendarStore& calendar = Calendar();
    const bool slideShowWasOpen = Calendar().partners.slideShow.IsShown();
    const int viewType = state.view.ViewType;
    const int standTime =
        StandTime(viewType, state.view.TargetYear, state.view.TargetMonth, state.view.TargetDay);
    if (state.run.TicksInView <= state.settings.TimingOfAutoNavigate && state.run.TicksInView <= standTime)
        return false;

    const auto picked = TheDateTree().Pick(LevelOf(viewType));
    if (!picked || picked->year < 1 || (viewType != kYearly && picked->month < 1) ||
        (viewType == kDaily && picked->day < 1))
        return true;

    StopCurrentLoad();
    TicketGuard guard(state.run.ObjectQueue, 1, 100);
    if (!guard) return false;
    state.run.TicksInView = 0;
    if (state.view.AllViewMode)
        calendar.AdvanceAllRing();
    else if (viewType == kDaily)
        calendar.AdvanceDayRing();
    state.view.TargetYear = picked->year;
    if (viewType != kYearly) state.view.TargetMonth = picked->month;
    if (viewType == kDaily) state.view.TargetDay = picked->day;
    UpdateObjects();
    if (state.settings.SlideShowAutoNavigate) {
        if (state.view.AllViewMode) Calendar().partners.slideShow.TakeNewSlides();
        if (!state.settings.SlideShowAutoNavigate) return true;
        if (slideShowWasOpen) Calendar().partners.slideShow.Restart();
    }
    return true;
}

}  // namespace kalmora
