#include <algorithm>

#include "state/app_state.h"
#include "store/date_tree.h"
#include "views/control/navigation.h"
#include "views/load/object_loader.h"
#include "views/model/calendar_store.h"
#include "views/model/stop_load.h"

namespace kalmora {

namespace {

// How many beats a view is shown at least: one an object, one for ten above the day.
int ShowTime(const Period& period) {
    const DateTree& dates = TheDateTree();
    const CalendarDate range = period.Range();
    const int count = dates.CountOf(range.year, range.month, range.day).value_or(0);
    switch (period.level) {
        case Level::Year:
            return count / 10;
        case Level::Month:
            return std::max(10, count / 10);
        default:
            return count;
    }
}

int LevelOf(Level level) {
    return level == Level::Year ? kYearLevel : level == Level::Month ? kMonthLevel : kDayLevel;
}

}  // namespace

bool RandomNavigate() {
    AppState& state = State();
    CalendarStore& calendar = Calendar();
    const bool slideShowWasOpen = Calendar().partners.slideShow.IsShown();
    const Period period = View().period;
    const Level level = period.level;
    const int standTime = ShowTime(period);
    if (state.run.TicksInView <= state.settings.TimingOfAutoNavigate && state.run.TicksInView <= standTime)
        return false;

    const auto picked = TheDateTree().Pick(LevelOf(level));
    if (!picked || picked->year < 1 || (level != Level::Year && picked->month < 1) ||
        (level == Level::Day && picked->day < 1))
        return true;

    TicketGuard guard(state.run.ObjectQueue, 1, 100);
    if (!guard) return false;
    StopCurrentLoad();
    state.run.TicksInView = 0;
    if (View().scatter)
        calendar.AdvanceAllRing();
    else if (level == Level::Day)
        calendar.AdvanceDayRing();
    ChangeView([&](ViewState& view) {
        CalendarDate& date = view.period.date;
        date.year = picked->year;
        if (level != Level::Year) date.month = picked->month;
        if (level == Level::Day) date.day = picked->day;
    });
    UpdateObjects();
    if (state.settings.SlideShowAutoNavigate) {
        if (View().scatter) Calendar().partners.slideShow.TakeNewSlides();
        if (!state.settings.SlideShowAutoNavigate) return true;
        if (slideShowWasOpen) Calendar().partners.slideShow.Restart();
    }
    return true;
}

}  // namespace kalmora
