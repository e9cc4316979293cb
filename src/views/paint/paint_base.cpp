#include "views/paint/paint_base.h"

#include <atomic>
#include <cstdint>
#include <memory>

#include "platform/window.h"
#include "state/app_state.h"
#include "views/bar/button_bar.h"
#include "views/model/calendar_store.h"
#include "views/paint/background.h"
#include "views/paint/missing_folder.h"
#include "views/paint/paint_on_window.h"

namespace kalmora {

namespace {

// Paints run side by side on several threads. One that began before another shows older content.
std::atomic<std::uint64_t> lastBegun{0};
std::atomic<std::uint64_t> lastShown{0};  // written with the window's canvas held

}  // namespace

void PaintBase(CalendarStore& calendar, Decode decode) {
    Window* window = MainWindow();
    if (!window) return;
    const std::uint64_t number = ++lastBegun;
    SetButtonStates();
    const Size size = window->ClientSize();
    const double scale = window->Scale();
    const std::unique_ptr<Surface> surface = Surface::Create(size, scale);
    if (!surface) return;
    const BackgroundPtr background = RenewBackground(calendar);
    const CellRedraws::Pause pause(calendar.cellRedraws);
    const ViewState view = View();
    {
        const auto canvas = surface->Draw();
        RestoreBackground(*canvas, {background, {}}, {0, 0, size.width, size.height});
        calendar.ViewOf(view).Paint(*canvas, view.period, size, scale, decode);
        if (LastSeenDataFolder() == DataFolder::Away) DrawMissingFolder(*canvas, size);
    }
    if (const auto canvas = window->Draw()) {
        if (number < lastShown) return;
        lastShown = number;
        SetBarGround(*surface);
        canvas->Blit({0, 0, size.width, size.height}, *surface);
        DrawButtons(*canvas);
    }
    if (!State().run.FirstPaintDone.exchange(1)) calendar.partners.observer.OnFirstPaint();
}

}  // namespace kalmora
