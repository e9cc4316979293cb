// The four views of the calendar: each class in a file of its own.
#pragma once

#include "views/model/calendar_store.h"

namespace kalmora {

// Hands them to the store, before anything is loaded. They have no data and live as long as the process:
// workers may outlive main.
void IntroduceViews(CalendarStore& calendar);

}  // namespace kalmora
