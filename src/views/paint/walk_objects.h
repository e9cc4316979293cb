// The walks of a paint run over the objects of the day in view, or of the scatter. On the paint thread.
#pragma once

#include "views/model/calendar_view.h"

namespace kalmora {

struct CalendarStore;

WalkEnd WalkDay(CalendarStore& calendar);
WalkEnd WalkAll(CalendarStore& calendar);

}  // namespace kalmora
