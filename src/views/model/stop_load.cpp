#include "views/model/stop_load.h"

#include "state/app_state.h"
#include "views/model/calendar_store.h"

namespace kalmora {

void StopCurrentLoad() {
    const ViewState view = View();
    Calendar().ViewOf(view).Stop(view.period);
}

}  // namespace kalmora
