// Files dropped on the main window. A drag out of the window that comes back to where it began is a rating:
// the petal on which it is dropped says which. What another program drags is never one, at every place of the
// window.
#include "app/main_window_events.h"
#include "platform/clock.h"
#include "platform/drop_event.h"
#include "state/app_state.h"

namespace kalmora {

namespace {

// The petals go; the rating of the one under the point, if any.
std::optional<EstimateType> TakeRating(const AppParts& parts, Point screen) {
    parts.petals.Hide();
    return parts.petals.RatingAt(screen);
}

void RateIn(const AppParts& parts, PictureWindow& window, Point screen) {
    if (const auto type = TakeRating(parts, screen)) window.Rate(*type);
}

void RateDragged(const AppParts& parts, Window& window, Point screen) {
    if (const auto type = TakeRating(parts, screen)) parts.photoRater.Rate(State().press.DragPath, *type);
    window.Invalidate();
}

}  // namespace

bool OnDrop(const AppParts& parts, Window& window, const Event& event) {
    AppState& state = State();
    state.run.LastActivity = UptimeMs();
    const bool isOwnDrag = AsDrop(event).isOwnDrag;
    const Point screen = window.ToScreen(event.point);
    if (isOwnDrag && parts.slideShow.IsShown() && parts.slideShow.IsOnPicture(screen)) {
        RateIn(parts, parts.slideShow, screen);
        return true;
    }
    const bool neighborShown = parts.neighbor.IsShown();
    // The neighbor window gives its area in the main window's own coordinates, the calendar on the screen.
    const bool cameBack =
        isOwnDrag && state.press.DragRect.ContainsInclusive(neighborShown ? event.point : screen);
    if ((!neighborShown && state.press.DragPath.empty()) || !cameBack) {
        if (parts.importer.ImportDropped(AsDrop(event))) window.Invalidate();
        return false;
    }
    if (neighborShown)
        RateIn(parts, parts.neighbor, screen);
    else
        RateDragged(parts, window, screen);
    return true;
}

}  // namespace kalmora
