// PaintView: the whole picture of the period in view, drawn off the screen and shown at once; and its
// background.
#pragma once

#include <memory>

#include "platform/canvas.h"

namespace kalmora {

// Background, grid or hour pictures, and buttons; then starts the run that draws a day's or a scatter's
// objects. Any thread. While such a run is going nothing is drawn, and the run itself begins anew (see
// event_paint.h).
void PaintView();
// The same picture without starting a run, and also while one is going: for the run itself.
void PaintBase();

// The background as the last full paint drew it, for what is redrawn in parts: a picture that was picked
// since shows with the next full paint only. Shared, never written once handed out. Null without a window.
using SurfacePtr = std::shared_ptr<const Surface>;
using BackgroundPtr = SurfacePtr;
BackgroundPtr PaintedBackground();
// What the last full paint drew, but for the buttons. Shared, never written; null before the first.
SurfacePtr PaintedBase();
// Puts the background's part back: `area` in the canvas shows what stands at `from` in the window.
void RestoreBackground(Canvas& canvas, const BackgroundPtr& background, const Rect& area, Point from);
inline void RestoreBackground(Canvas& canvas, const BackgroundPtr& background, const Rect& area) {
    RestoreBackground(canvas, background, area, {area.x, area.y});
}
// Begins to decode the background picture before there is a window, for a quick first paint.
void PrefetchBackground();

}  // namespace kalmora
