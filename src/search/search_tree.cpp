#include "search/search_tree.h"

#include <algorithm>
#include <mutex>
#include <optional>
#include <utility>

#include "index/index_batch.h"
#include "index/index_tree.h"
#include "index/month_index.h"

namespace kalmora {

namespace {

// Hands on what comes in any order in its proper one.
class InOrder {
public:
    InOrder(std::size_t count, const std::function<void(FoundDays)>& next) : waiting_(count), next_(next) {}

    void Put(std::size_t at, FoundDays found) {
        std::lock_guard lock(mutex_);
        waiting_[at] = std::move(found);
        for (; told_ < waiting_.size() && waiting_[told_]; ++told_) {
            next_(std::move(*waiting_[told_]));
            waiting_[told_].emplace();  // lets go of the days
        }
    }

private:
    std::mutex mutex_;
    std::vector<std::optional<FoundDays>> waiting_;  // guarded by mutex_
    std::size_t told_ = 0;                           // guarded by mutex_
    const std::function<void(FoundDays)>& next_;
};

}  // namespace

bool SearchTree(const std::string& root, const std::vector<CalendarDate>& months, int day,
                const QueryMatcher& query, const std::function<void(FoundDays found)>& onMonth) {
    InOrder results(months.size(), onMonth);
    return RunOverMonths(months, [&](const CalendarDate& date, IndexBatch& batch) {
        MonthIndex month(date.year, date.month, root);
        if (!month.Load(day, batch)) return false;
        FoundDays found;
        for (int number = 1; number <= MonthIndex::kDays; ++number)
            query.MetaSearch(month.Day(number), found);
        const auto at = std::find(months.begin(), months.end(), date) - months.begin();
        results.Put(static_cast<std::size_t>(at), std::move(found));
        return true;
    });
}

}  // namespace kalmora
