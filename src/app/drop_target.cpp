#include "app/drop_target.h"

#include "state/app_state.h"
#include "views/model/calendar_store.h"

namespace kalmora {

std::optional<DropTarget> FindDropTarget(CalendarStore& calendar, Point point) {
    const ViewState view = View();
    return calendar.ViewOf(view).TargetOfDrop(view.period, point, ClientSize());
}

}  // namespace kalmora
