#include "views/paint/paint_base.h"

#include <memory>

#include "platform/window.h"
#include "state/app_state.h"
#include "views/bar/button_bar.h"
#include "views/model/calendar_store.h"
#include "views/paint/background.h"
#include "views/paint/missing_folder.h"
#include "views/paint/paint_on_window.h"

namespace kalmora {

void PaintBase() {
    Window* window = MainWindow();
    if (!window) return;
    SetButtonStates();
    const Size size = window->ClientSize();
    const double scale = window->Scale();
    const std::unique_ptr<Surface> surface = Surface::Create(size, scale);
    if (!surface) return;
    const BackgroundPtr background = RenewBackground();
    const CellRedrawPause pause;
    const ViewState view = View();
    {
        const auto canvas = surface->Draw();
        RestoreBackground(*canvas, background, {0, 0, size.width, size.height});
        Calendar().ViewOf(view).Paint(*canvas, view.period, size, scale);
        if (LastSeenDataFolder() == DataFolder::Away) DrawMissingFolder(*canvas, size);
    }
    SetBarGround(*surface);
    if (const auto canvas = window->Draw()) {
        canvas->Blit({0, 0, size.width, size.height}, *surface);
        DrawButtons(*canvas);
    }
    if (!State().run.FirstPaintDone.exchange(1)) Calendar().partners.observer.OnFirstPaint();
}

}  // namespace kalmora
