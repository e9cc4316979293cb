// The background picture of the view.
#pragma once

#include <memory>

#include "platform/canvas.h"

namespace kalmora {

struct CalendarStore;

using BackgroundPtr = std::shared_ptr<const Surface>;

// The background for the picture that is to be shown now: for a full paint. Shared, never written once handed
// out. Null without a window. Any thread; decodes when the file, its content or the window's size are new.
BackgroundPtr RenewBackground(CalendarStore& calendar);
// The background as the last full paint drew it, for what is redrawn in parts: a picture that was picked
// since shows with the next full paint only.
BackgroundPtr PaintedBackground(CalendarStore& calendar);

// The background as it lies under a canvas that shows a part of the window.
struct Ground {
    BackgroundPtr background;
    Point origin;  // the point of the window at which the canvas begins
};

// Puts the background back into the area of the canvas.
void RestoreBackground(Canvas& canvas, const Ground& ground, const Rect& area);

// Begins to decode the background picture before there is a window, for a quick first paint.
void PrefetchBackground(CalendarStore& calendar);

}  // namespace kalmora
