#include "app/window_place.h"

#include <algorithm>

namespace kalmora {

namespace {

// What of a window must be on a screen, so that it can be seen and dragged; pixels.
constexpr Size kHold = {48, 24};
constexpr int kFromEdge = 10;

bool IsReachable(const Rect& frame, const Rect& screen) {
    const int width = std::min(frame.Right(), screen.Right()) - std::max(frame.x, screen.x);
    const int height = std::min(frame.Bottom(), screen.Bottom()) - std::max(frame.y, screen.y);
    // A window that is smaller than that shows all of itself.
    return width >= std::min(kHold.width, frame.width) && height >= std::min(kHold.height, frame.height);
}

}  // namespace

Rect UsableFrame(const WindowRectValue& wanted, const std::vector<Rect>& screens) {
    constexpr WindowRectValue kDefault;
    Rect frame{wanted.left, wanted.top, wanted.right - wanted.left, wanted.bottom - wanted.top};
    if (frame.width < 0 || frame.height < 0) {
        frame.width = kDefault.right - kDefault.left;
        frame.height = kDefault.bottom - kDefault.top;
    }
    const bool isReachable = std::any_of(screens.begin(), screens.end(),
                                         [&](const Rect& screen) { return IsReachable(frame, screen); });
    if (screens.empty() || isReachable) return frame;
    const Rect& screen = screens.front();
    return {screen.x + kFromEdge, screen.y + kFromEdge, std::min(frame.width, screen.width - 2 * kFromEdge),
            std::min(frame.height, screen.height - 2 * kFromEdge)};
}

}  // namespace kalmora
