#include "search/search_range.h"

#include "base/progress_listener.h"
#include "state/app_state.h"

namespace kalmora {

namespace {

constexpr int kMonths = 12;

class SearchingMark {
public:
    explicit SearchingMark(MonthIndex& month) : month_(month) { month_.searching = true; }
    ~SearchingMark() { month_.searching = false; }
    SearchingMark(const SearchingMark&) = delete;
    SearchingMark& operator=(const SearchingMark&) = delete;

private:
    MonthIndex& month_;
};

// True when the manager loads something that neither the view nor this search wants.
bool WorksOnSomethingElse(const IndexManager& manager, const CalendarDate& range) {
    if (!manager.IsBusy() || range.year == 0) return false;
    const CalendarDate inView = View().period.date;
    if (range.year == inView.year && range.month == inView.month) return false;
    const CalendarDate current = manager.CurrentTarget();
    return current.year != range.year || (range.month != 0 && current.month != range.month);
}

void LoadRange(IndexManager& manager, const CalendarDate& range, const StopToken& stop) {
    if (manager.IsLoaded(range.year, range.month, range.day)) return;
    manager.Load(range.year, range.month, range.day, stop);
    if (range.year == 0 || range.month != 0) return;
    // A stop request that was meant for another load has ended ours as well.
    for (int month = 1; month <= kMonths && !stop.IsStopped(); ++month)
        if (!manager.FindMonth(range.year, month)) manager.Load(range.year, month, 0, stop);
}

std::vector<MonthPointer> ListedMonths(const IndexManager& manager, int year) {
    std::vector<MonthPointer> months;
    for (int month = 1; month <= kMonths; ++month)
        if (MonthPointer listed = manager.FindMonth(year, month)) months.push_back(std::move(listed));
    return months;
}

bool SearchMonths(const std::vector<MonthPointer>& months, const QueryMatcher& query, const StopToken& stop,
                  FoundDays& found) {
    bool whole = true;
    for (const MonthPointer& month : months) {
        if (stop.IsStopped()) return false;
        if (!SearchMonth(*month, query, stop, found)) whole = false;
    }
    return whole;
}

}  // namespace

bool SearchMonth(MonthIndex& month, const QueryMatcher& query, const StopToken& stop, FoundDays& found) {
    const SearchingMark mark(month);
    const StopToken work = month.BeginWork();
    const int days = DaysInMonth(month.year, month.month);
    for (int day = 1; day <= days; ++day) {
        if (work.IsStopped() || stop.IsStopped()) return false;
        ReportProgress(*month.context.progress, static_cast<double>(day - 1) / days, "Searching (%04d/%02d)",
                       month.year, month.month);
        if (!month.IsLoaded(day) && !month.EnsureDay(day, stop)) return false;
        query.MetaSearch(month.Day(day), found);
    }
    ReportProgress(*month.context.progress, 1, "Searched. (%04d/%02d)", month.year, month.month);
    return true;
}

bool SearchDay(MonthIndex& month, const QueryMatcher& query, int day, const StopToken& stop,
               FoundDays& found) {
    if (!month.IsLoaded(day) && !month.EnsureDay(day, stop)) return false;
    query.MetaSearch(month.Day(day), found);
    return true;
}

bool SearchRange(IndexManager& manager, const QueryMatcher& query, const CalendarDate& range,
                 const StopToken& stop, FoundDays& found) {
    if (WorksOnSomethingElse(manager, range)) manager.RequestStop();
    LoadRange(manager, range, stop);
    if (stop.IsStopped()) return false;
    if (range.month != 0) {
        const MonthPointer copy = manager.GetMonthCopy(range.year, range.month);
        if (range.day != 0) return SearchDay(*copy, query, range.day, stop, found);
        return SearchMonth(*copy, query, stop, found);
    }
    const std::vector<MonthPointer> months =
        range.year == 0 ? manager.Months() : ListedMonths(manager, range.year);
    const bool whole = SearchMonths(months, query, stop, found);
    return whole && (range.year == 0 || months.size() == kMonths);
}

}  // namespace kalmora
