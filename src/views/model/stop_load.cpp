#include "views/model/stop_load.h"

#include "state/app_state.h"
#include "views/model/calendar_store.h"

namespace kalmora {

void StopCurrentLoad() {
    const AppState& state = State();
    CalendarStore& calendar = Calendar();
    if (state.view.AllViewMode) {
        calendar.CurrentAllViewer().stop = true;
    } else if (state.view.ViewType == kDaily) {
        calendar.CurrentDayViewer().stop = true;
    } else if (state.view.ViewType == kMonthly) {
        calendar.MonthOf(state.view.TargetYear, state.view.TargetMonth).RaiseStop();
    } else {
        calendar.SlotOf(state.view.TargetYear).RaiseStop();
    }
}

}  // namespace kalmora
