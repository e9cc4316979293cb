#include "app/connect_search.h"

#include "app/app_hooks.h"
#include "app/search_dialog.h"
#include "search/search_run.h"
#include "state/app_state.h"
#include "views/model/calendar_store.h"

namespace kalmora {

void ConnectSearch() {
    ResetSearch();
    State().view.SearchResultMode = State().view.SearchAllLoaded = 0;
    Shell().ShowSearchDialog = [] { return ShowSearchDialog(MainWindow()); };
}

}  // namespace kalmora
