#include "search/search_run.h"

#include <mutex>
#include <utility>

#include "base/log.h"
#include "state/app_state.h"

namespace kalmora {

namespace {

struct LastRun {
    std::string lastQuery;  // empty: what was found is not to be relied on
    SearchView lastView;
    SearchScope lastScope = SearchScope::View;
    SearchResult results = std::make_shared<const FoundDays>();
};

struct Searches {
    std::mutex mutex;          // held for copies and swaps only
    std::string text;          // guarded by mutex
    LastRun last;              // guarded by mutex
    unsigned startedRuns = 0;  // guarded by mutex
};

// Never destroyed: workers may outlive main.
Searches& All() {
    static Searches* const searches = new Searches;
    return *searches;
}

// True when both show the same period, so that one search serves them.
bool ShowSamePeriod(const SearchView& a, const SearchView& b) {
    if (a.viewType != b.viewType || a.year != b.year) return false;
    switch (a.viewType) {
        case kYearly:
            return true;
        case kMonthly:
            return a.month == b.month;
        case kDaily:
            return a.month == b.month && a.day == b.day;
        default:
            return false;
    }
}

CalendarDate RangeOf(SearchScope scope, const SearchView& view) {
    if (scope == SearchScope::AllLoaded) return {0, 0, 0};
    return {view.year, view.viewType == kYearly ? 0 : view.month, view.viewType == kDaily ? view.day : 0};
}

bool SearchBothRoots(const QueryMatcher& query, const CalendarDate& range, const SearchStop& stopped,
                     FoundDays& found) {
    const bool whole = SearchRange(MainIndex(), query, range, stopped, found);
    IndexManager* const other = stopped() ? nullptr : OtherIndexInUse();
    return (!other || SearchRange(*other, query, range, stopped, found)) && whole;
}

}  // namespace

std::string SearchText() {
    Searches& all = All();
    std::lock_guard lock(all.mutex);
    return all.text;
}

void SetSearchText(const std::string& query) {
    Searches& all = All();
    std::lock_guard lock(all.mutex);
    all.text = query;
}

SearchResult StandingSearchResult() {
    Searches& all = All();
    std::lock_guard lock(all.mutex);
    return all.last.results;
}

void ResetSearch() {
    Searches& all = All();
    std::lock_guard lock(all.mutex);
    all.text.clear();
    all.last = {};
}

SearchResult Search(const std::string& query, SearchScope scope, const SearchView& view,
                    const SearchStop& stopped) {
    Searches& all = All();
    unsigned number;
    {
        std::lock_guard lock(all.mutex);
        const LastRun& last = all.last;
        if (query.empty()) return last.results;
        // The scope counts too, or the box for it would do nothing to the query that stands.
        if (query == last.lastQuery && scope == last.lastScope && ShowSamePeriod(view, last.lastView))
            return last.results;
        number = ++all.startedRuns;
    }
    const QueryMatcher matcher(ParseQuery(query));
    ApplyModes(matcher.TheQuery());
    if (scope == SearchScope::AllLoaded) State().view.AllViewMode = 1;
    auto found = std::make_shared<FoundDays>();
    const bool whole = SearchBothRoots(matcher, RangeOf(scope, view), stopped, *found);
    if (stopped()) return found;
    std::lock_guard lock(all.mutex);
    // A newer search has the last word. One that missed something is shown, but not for longer than needed.
    if (number == all.startedRuns) all.last = {whole ? query : std::string(), view, scope, found};
    return found;
}

}  // namespace kalmora
