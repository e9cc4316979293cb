// The search that is in force: its query, and what it found for the view.
//
// While View().searchResult is set the views show the result instead of their folders. Any thread:
// loads run on several, and each has the result that it asked for.
#pragma once

#include <memory>
#include <string>

#include "search/search_range.h"
#include "state/period.h"

namespace kalmora {

// The query as the dialog composed it; empty while there is none.
std::string SearchText();
void SetSearchText(const std::string& query);

enum class SearchScope {
    View,       // the year, month or day in view
    AllLoaded,  // every month that has been touched; switches to the scatter
};

using SearchResult = std::shared_ptr<const FoundDays>;  // never null

// Runs the query over both data roots, and sets the display modes as its tags want. The same query for the
// same view is not run twice: its result stays, whatever has become of the files. An empty query leaves the
// result as it is. When stopped, what was found until then is given and not kept.
SearchResult Search(const std::string& query, SearchScope scope, const Period& period, const StopToken& stop);

// What the last Search that was not stopped has found.
SearchResult CurrentSearchResult();

// No query and no result. For the start and for tests.
void ResetSearch();

}  // namespace kalmora
