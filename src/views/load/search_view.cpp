#include "views/load/search_view.h"

#include "platform/files.h"
#include "search/search_run.h"
#include "state/app_state.h"
#include "text/text.h"

namespace kalmora {

namespace {

bool LiesBelow(const std::string& dayFolder, const std::string& folder) {
    if (!text::StartsWithNoCase(dayFolder, folder)) return false;
    return dayFolder.size() == folder.size() || dayFolder[folder.size()] == files::kSeparator;
}

}  // namespace

void RunSearch(const LoadRequest& request, const StopToken& stop) {
    if (!request.view.searchResult) return;
    Search(SearchText(), request.view.searchAllLoaded ? SearchScope::AllLoaded : SearchScope::View,
           request.view.period, stop);
}

void ForEachFound(const std::string& folder, const StopToken& stop,
                  const std::function<void(const std::string& path)>& found) {
    const SearchResult result = CurrentSearchResult();
    for (const FoundDay& day : *result) {
        if (!LiesBelow(day.day->folder, folder)) continue;
        for (std::size_t i = 0; i < day.positions.size(); ++i) {
            if (stop.IsStopped()) return;
            found(day.Entry(i).path);
        }
    }
}

}  // namespace kalmora
