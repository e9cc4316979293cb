// Which day, or which background, a drop on the window is meant for.
#pragma once

#include <optional>

#include "base/dates.h"
#include "base/geometry.h"

namespace kalmora {

struct DropTarget {
    CalendarDate day;           // month and day 0 where the period in view has none
    bool isBackground = false;  // pictures become the background of that period
};

// By the view: the day in view or the day under the point; beside the days the background of the period in
// view. In the day view the background is the column of the hours and what lies below the lines. Empty for a
// point that means nothing. GUI thread.
std::optional<DropTarget> FindDropTarget(Point client);

}  // namespace kalmora
