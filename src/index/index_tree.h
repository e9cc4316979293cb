// Index work over a whole tree: which months there are, and running through them on all processors.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "base/dates.h"
#include "base/stop_token.h"
#include "index/index_batch.h"

namespace kalmora {

// The months that have a folder below the root, the earliest first; of one year unless year is 0. Looks at
// the folders' names alone.
std::vector<CalendarDate> ListMonths(const std::string& root, int year = 0);

// Calls `work` once for each month, on a thread more than there are processors, this one among them. Index
// files that the work puts into its batch are written when the batch is full and at the end. `onMonthDone` is
// called after each with their number so far; one call at a time, any thread. Leaves the rest out when
// stopped. False then, when `work` has said false of a month, and when an index file could not be written.
bool RunOverMonths(const std::vector<CalendarDate>& months, const StopToken& stop,
                   const std::function<bool(const CalendarDate& month, IndexBatch& batch)>& work,
                   const std::function<void(std::size_t done)>& onMonthDone = {});

}  // namespace kalmora
