// The options --year, --month and --day of a verb: which part of the tree it works on.
#pragma once

#include <string>
#include <vector>

#include "base/dates.h"

namespace CLI {
class App;
}

namespace kalmora {

// Adds the three to the verb; at most one of them may be given. `period` is filled while the command line is
// parsed, stays as it was when none is given, and has to live until then. A text that is no year, month or
// day of the calendar is wrong use.
void AddPeriodOptions(CLI::App& verb, CalendarDate& period);

// The months of the period that the tree of `root` has: all of its year, or the one.
std::vector<CalendarDate> MonthsOfPeriod(const std::string& root, const CalendarDate& period);

}  // namespace kalmora
