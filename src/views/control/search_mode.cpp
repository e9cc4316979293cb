#include "views/control/search_mode.h"

#include "base/log.h"
#include "search/search_run.h"
#include "state/app_state.h"
#include "views/bar/button_bar.h"
#include "views/load/object_loader.h"
#include "views/model/stop_load.h"

namespace kalmora {

namespace {

// The view no longer holds what it should; whoever still fills it leaves.
void MarkViewStale(CalendarStore& calendar, const char* reason) {
    Log("stale: %s", reason);
    StopCurrentLoad(calendar);
}

}  // namespace

void BeginSearch(CalendarStore& calendar, const std::string& query) {
    MarkViewStale(calendar, "search!!");
    Log("search: %s", query.c_str());
    SetSearchText(query);
    ChangeView([](ViewState& view) { view.searchResult = true; });
}

void EndSearch(CalendarStore& calendar) {
    MarkViewStale(calendar, "search result");
    ChangeView([](ViewState& view) { view.searchResult = false; });
    SetButtonStates();
    DrawButtonsOnWindow();
    UpdateObjects(calendar);
}

}  // namespace kalmora
