// Which day, or which background, a drop on the window is meant for.
#pragma once

#include <optional>

#include "base/geometry.h"
#include "views/model/calendar_view.h"

namespace kalmora {

struct CalendarStore;

// By the view: the day in view or the day under the point; beside the days the background of the period in
// view. In the day view the background is the column of the hours and what lies below the lines. Empty for a
// point that means nothing. GUI thread.
std::optional<DropTarget> FindDropTarget(CalendarStore& calendar, Point client);

}  // namespace kalmora
