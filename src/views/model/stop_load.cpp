#include "views/model/stop_load.h"

#include "state/app_state.h"
#include "views/model/calendar_store.h"

namespace kalmora {

void StopCurrentLoad(CalendarStore& calendar) {
    const ViewState view = View();
    calendar.ViewOf(view).Stop(view.period);
}

}  // namespace kalmora
