#include "state/app_state.h"
#include "views/control/navigation.h"
#include "views/load/object_loader.h"
#include "views/model/calendar_store.h"
#include "views/model/stop_load.h"

namespace kalmora {

bool RandomNavigate(CalendarStore& calendar) {
    AppState& state = State();
    const bool slideShowWasOpen = calendar.partners.slideShow.IsShown();
    const ViewState shown = View();
    const CalendarView& view = calendar.ViewOf(shown);
    const int beats = view.BeatsToShow(shown.period);
    if (state.run.TicksInView <= state.settings.TimingOfAutoNavigate && state.run.TicksInView <= beats)
        return false;

    const auto date = view.RandomDate(shown.period);
    if (!date) return true;

    TicketGuard guard(state.run.ObjectQueue, 1, 100);
    if (!guard) return false;
    StopCurrentLoad(calendar);
    state.run.TicksInView = 0;
    calendar.ViewOf(View()).AdvanceRing();
    ChangeView([&](ViewState& next) { next.period.date = *date; });
    UpdateObjects(calendar);
    // The load hands the slide show what it has found.
    if (state.settings.SlideShowAutoNavigate && slideShowWasOpen) calendar.partners.slideShow.Restart();
    return true;
}

}  // namespace kalmora
