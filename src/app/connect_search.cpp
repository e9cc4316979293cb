#include "app/connect_search.h"

#include "app/app_hooks.h"
#include "app/app_state.h"
#include "app/search_dialog.h"
#include "search/search_run.h"
#include "views/calendar_store.h"

namespace kalmora {

void ConnectSearch() {
    ResetSearch();
    State().SearchResultMode = State().SearchAllLoaded = 0;
    Shell().ShowSearchDialog = [] { return ShowSearchDialog(MainWindow()); };
}

}  // namespace kalmora
