// The background picture of the view.
#pragma once

#include <memory>

#include "platform/canvas.h"

namespace kalmora {

using BackgroundPtr = std::shared_ptr<const Surface>;

// The background for the picture that is to be shown now: for a full paint. Shared, never written once handed
// out. Null without a window. Any thread; decodes when picture or window size are new.
BackgroundPtr RenewBackground();
// The background as the last full paint drew it, for what is redrawn in parts: a picture that was picked
// since shows with the next full paint only.
BackgroundPtr PaintedBackground();

// Puts the background's part back: `area` in the canvas shows what is at `from` in the window.
void RestoreBackground(Canvas& canvas, const BackgroundPtr& background, const Rect& area, Point from);
inline void RestoreBackground(Canvas& canvas, const BackgroundPtr& background, const Rect& area) {
    RestoreBackground(canvas, background, area, {area.x, area.y});
}

// Begins to decode the background picture before there is a window, for a quick first paint.
void PrefetchBackground();

}  // namespace kalmora
