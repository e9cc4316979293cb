#include "views/paint/progress_stripe.h"

#include <algorithm>

#include "base/geometry.h"
#include "views/model/calendar_store.h"

namespace kalmora {

namespace {

constexpr Color kLight = ColorFromBgr(0xE6FFFF);
constexpr Color kMiddle = ColorFromBgr(0xFFB4A0);
constexpr Color kDark = ColorFromBgr(0xFF7864);

void DrawStripe(double fraction, Color done, Color rest) {
    Window* window = MainWindow();
    if (!window) return;
    const auto canvas = window->Draw();
    if (!canvas) return;
    const int width = canvas->GetSize().width;
    const bool finished = fraction == kStripeFinished;
    const int filled = finished ? 0 : static_cast<int>(std::clamp(fraction, 0.0, 1.0) * width);
    canvas->FillRect({filled, 0, width - filled, 1}, finished ? kLight : rest);
    if (filled > 0) canvas->FillRect({0, 0, filled, 1}, done);
}

}  // namespace

void ProgressStripe(double fraction) { DrawStripe(fraction, kMiddle, kLight); }

void ProgressStripeDark(double fraction) { DrawStripe(fraction, kDark, kMiddle); }

}  // namespace kalmora
