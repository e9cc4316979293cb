// The walk of a search over months and days, loading what is not in memory yet.
#pragma once

#include "base/dates.h"
#include "base/stop_token.h"
#include "index/index_manager.h"
#include "index/month_index.h"
#include "search/meta_search.h"

namespace kalmora {

// These append what they find, each day's records in the order of their paths, and say whether all that was
// to be searched has been. Any worker thread; a month may be searched while it is loaded or updated. The stop
// token is tested between any two days, and where a day is read between any two files; what a search has
// found that was stopped is of no use.

// Every day of the month, loaded where it is not, with its progress reported. Left early when the month is
// asked to stop meanwhile, and at a day that cannot be loaded.
bool SearchMonth(MonthIndex& month, const QueryMatcher& query, const StopToken& stop, FoundDays& found);
// One day. Reports no progress. A day that cannot be loaded has nothing.
bool SearchDay(MonthIndex& month, const QueryMatcher& query, int day, const StopToken& stop,
               FoundDays& found);
// Day 0 is a whole month, month 0 a whole year. Year 0 is every month of the manager's list, in the order of
// the list. A range that is not in memory is loaded first; where another one is being loaded for somebody
// else that load is asked to stop.
bool SearchRange(IndexManager& manager, const QueryMatcher& query, const CalendarDate& range,
                 const StopToken& stop, FoundDays& found);

}  // namespace kalmora
