// Into search mode and out of it.
#pragma once

#include <string>

namespace kalmora {

struct CalendarStore;

// Puts a query in force. The caller shows it, by rebuilding the view. GUI thread.
void BeginSearch(CalendarStore& calendar, const std::string& query);
// Takes it away, and shows the folders again. GUI thread.
void EndSearch(CalendarStore& calendar);

}  // namespace kalmora
