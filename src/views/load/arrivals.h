// Files that come into the calendar while it is looked at.
#pragma once

#include <string>

#include "base/dates.h"

namespace kalmora {

struct CalendarStore;

// Adds a file that has just come into the folder of a day to what is in view, when the period in view is or
// holds that day. False when it does not, or when a file of its kind is not shown. Any thread.
bool AddToView(CalendarStore& calendar, const std::string& path, const CalendarDate& day);

}  // namespace kalmora
