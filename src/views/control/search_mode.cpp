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
void MarkViewStale(const char* reason) {
    Log("stale: %s", reason);
    StopCurrentLoad();
}

}  // namespace

void BeginSearch(const std::string& query) {
    MarkViewStale("search!!");
    Log("search: %s", query.c_str());
    SetSearchText(query);
    ChangeView([](ViewState& view) { view.searchResult = true; });
}

void EndSearch() {
    MarkViewStale("search result");
    ChangeView([](ViewState& view) { view.searchResult = false; });
    SetButtonStates();
    DrawButtonsOnWindow();
    UpdateObjects();
}

}  // namespace kalmora
