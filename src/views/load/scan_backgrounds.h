// The background pictures and the music of a period.
#pragma once

#include <string>

#include "base/stop_token.h"

namespace kalmora {

struct CalendarStore;

// Looks for background pictures and music in the month's folder and then the year's; month 0: the year's
// only.
void ScanBackgrounds(CalendarStore& calendar, const std::string& root, int year, int month,
                     const StopToken& stop);

}  // namespace kalmora
