// The four views of the calendar: each class in a file of its own.
#pragma once

#include "views/model/calendar_store.h"

namespace kalmora {

// Makes them for the store, which owns them; before anything is loaded.
void IntroduceViews(CalendarStore& calendar);

}  // namespace kalmora
