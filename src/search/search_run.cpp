#include "search/search_run.h"

#include <mutex>
#include <utility>

#include "base/log.h"
#include "state/app_state.h"

namespace kalmora {

namespace {

struct LastRun {
    std::string lastQuery;  // empty: what was found is not to be relied on
    Period lastPeriod;
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
bool ShowSamePeriod(const Period& a, const Period& b) {
    const bool known = a.level == Level::Year || a.level == Level::Month || a.level == Level::Day;
    return known && a.level == b.level && a.Range() == b.Range();
}

CalendarDate RangeOf(SearchScope scope, const Period& period) {
    return scope == SearchScope::AllLoaded ? CalendarDate{} : period.Range();
}

bool SearchBothRoots(const QueryMatcher& query, const CalendarDate& range, const StopToken& stop,
                     FoundDays& found) {
    const bool whole = SearchRange(MainIndex(), query, range, stop, found);
    IndexManager* const other = stop.IsStopped() ? nullptr : OtherIndexInUse();
    return (!other || SearchRange(*other, query, range, stop, found)) && whole;
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

SearchResult CurrentSearchResult() {
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

SearchResult Search(const std::string& query, SearchScope scope, const Period& period,
                    const StopToken& stop) {
    Searches& all = All();
    unsigned number;
    {
        std::lock_guard lock(all.mutex);
        const LastRun& last = all.last;
        if (query.empty()) return last.results;
        // The scope counts too, or the box for it would do nothing to the query in force.
        if (query == last.lastQuery && scope == last.lastScope && ShowSamePeriod(period, last.lastPeriod))
            return last.results;
        number = ++all.startedRuns;
    }
    const QueryMatcher matcher(ParseQuery(query));
    ApplyModes(matcher.TheQuery());
    if (scope == SearchScope::AllLoaded) ChangeView([](ViewState& view) { view.scatter = true; });
    auto found = std::make_shared<FoundDays>();
    const bool whole = SearchBothRoots(matcher, RangeOf(scope, period), stop, *found);
    if (stop.IsStopped()) return found;
    std::lock_guard lock(all.mutex);
    // The result of a newer search is kept. One that missed something is shown, but not for longer than
    // needed.
    if (number == all.startedRuns) all.last = {whole ? query : std::string(), period, scope, found};
    return found;
}

}  // namespace kalmora
