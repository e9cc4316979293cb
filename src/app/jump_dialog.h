// The small dialog that takes a date and goes there.
#pragma once

#include <optional>
#include <string_view>

#include "base/dates.h"
#include "platform/window.h"

namespace kalmora {

struct CalendarStore;

// A date typed by hand: "20081113", "2008/11/13", "2008.11.13" and shorter ones down to a month or a year,
// with or without leading zeros; what was not given is 0. The longest form that the text fills wins, and what
// follows it does not matter. Empty for a text that fits none, and for a date that no calendar has. At
// most 1024 bytes are looked at.
std::optional<CalendarDate> ParseJumpText(std::string_view text);

// Asks, and goes. A text that is no date closes the dialog and goes nowhere; an empty one leaves it open. GUI
// thread.
void ShowJumpDialog(CalendarStore& calendar, Window& owner);

}  // namespace kalmora
