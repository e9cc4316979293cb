#include <algorithm>

#include "state/app_state.h"
#include "views/bar/button.h"
#include "views/bar/button_bar.h"
#include "views/model/calendar_store.h"

namespace kalmora {

namespace {
constexpr int kGaugeWidth = 400;
constexpr int kGaugeHeight = 16;
constexpr Color kRest = ColorFromBgr(0xB4B4B4);
constexpr Color kDone = ColorFromBgr(0xC86432);
constexpr Color kWhite{255, 255, 255};
}  // namespace

void ShowProgress(double ratio, const std::string& text) {
    Window* window = MainWindow();
    if (!window || text.empty()) return;
    const AppState& state = State();
    const auto canvas = window->Draw();
    if (!canvas) return;
    const Size client = canvas->GetSize();
    const int width = client.width;
    const int height = client.height - CButton::kTextHeight;  // above the date label
    const int x = width - 410, y = height - 35;
    // What runs past the gauge is cut off by the window; the bounds only keep the numbers sane.
    const int fill = static_cast<int>(kGaugeWidth * std::clamp(ratio, 0.0, 100.0) + 0.5);
    if (ratio != 100.0) canvas->FillRect({x + fill, y, kGaugeWidth - fill, kGaugeHeight}, kRest);
    if (ratio > 0) canvas->FillRect({x, y, fill, kGaugeHeight}, kDone);
    canvas->TextBlock({width - 406, height - 32, 394, 30}, text,
                      {state.settings.MiniFontFace, state.settings.MiniFontHeight}, kWhite);
}

}  // namespace kalmora
