// A search over a whole tree from its index files, without keeping them in memory.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "base/dates.h"
#include "base/stop_token.h"
#include "search/meta_search.h"

namespace kalmora {

// Searches the months below the root, or with a day above 0 that day of each, on all processors. Days without
// an index file get one; where it cannot be written they are searched all the same. `onMonth` is called once
// for each month, in the order given and one at a time, on any thread. False when stopped; the
// months that were finished until then have been handed over.
bool SearchTree(const std::string& root, const std::vector<CalendarDate>& months, int day,
                const QueryMatcher& query, const StopToken& stop,
                const std::function<void(FoundDays found)>& onMonth);

}  // namespace kalmora
