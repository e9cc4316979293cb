// Files dropped on the main window. A drag out of the window that comes back to where it began is a rating:
// the petal of the rosette on which it is let go says which. What another program drags is never one,
// wherever it is let go.
#include "app/app_hooks.h"
#include "app/main_window_events.h"
#include "platform/clock.h"
#include "platform/drop_event.h"
#include "state/app_state.h"
#include "views/hooks.h"

namespace kalmora {

namespace {

int TakeRating(Point screen) {
    Shell().HideEstimate();
    return Shell().RatingAt(screen);
}

void RateSlideAt(Point screen) {
    if (const int type = TakeRating(screen); type > 0) Shell().RateSlide(type);
}

void RateNeighborAt(Point screen) {
    if (const int type = TakeRating(screen); type > 0) Shell().RateNeighbor(type);
}

void RateDragged(Window& window, Point screen) {
    if (const int type = TakeRating(screen); type > 0) Shell().RateFile(State().press.DragPath, type);
    window.Invalidate();
}

}  // namespace

bool OnDrop(Window& window, const Event& event) {
    AppState& state = State();
    state.run.LastActivity = UptimeMs();
    const bool isOwnDrag = AsDrop(event).isOwnDrag;
    const Point screen = window.ToScreen(event.point);
    if (isOwnDrag && Hooks().IsSlideShowOpen() && Shell().IsOnSlidePicture(screen)) {
        RateSlideAt(screen);
        return true;
    }
    const bool neighborShown = Shell().IsNeighborShown();
    // The large view notes its area in the main window's own coordinates, the calendar on the screen.
    const bool cameBack =
        isOwnDrag && state.press.DragRect.ContainsInclusive(neighborShown ? event.point : screen);
    if ((!neighborShown && state.press.DragPath.empty()) || !cameBack) {
        if (Shell().ImportDropped(event)) window.Invalidate();
        return false;
    }
    if (neighborShown)
        RateNeighborAt(screen);
    else
        RateDragged(window, screen);
    return true;
}

}  // namespace kalmora
