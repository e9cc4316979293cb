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

// Hands results over in order that come in any order.
class InOrder {
public:
    InOrder(std::size_t count, const std::function<void(FoundDays)>& next) : waiting_(count), next_(next) {}

    void Put(std::size_t at, FoundDays found) {
        std::lock_guard lock(mutex_);
        waiting_[at] = std::move(found);
        for (; handedOver_ < waiting_.size() && waiting_[handedOver_]; ++handedOver_) {
            next_(std::move(*waiting_[handedOver_]));
            waiting_[handedOver_].emplace();  // lets go of the days
        }
    }

private:
    std::mutex mutex_;
    std::vector<std::optional<FoundDays>> waiting_;  // guarded by mutex_
    std::size_t handedOver_ = 0;                     // guarded by mutex_
    const std::function<void(FoundDays)>& next_;
};

}  // namespace

bool SearchTree(const std::string& root, const std::vector<CalendarDate>& months, int day,
                const QueryMatcher& query, const StopToken& stop,
                const std::function<void(FoundDays found)>& onMonth) {
    InOrder results(months.size(), onMonth);
    return RunOverMonths(months, stop, [&](const CalendarDate& date, IndexBatch& batch) {
        MonthIndex month(date.year, date.month, root, {stop});
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
