#include "views/load/object_loader.h"

#include "state/app_state.h"
#include "views/bar/button_bar.h"
#include "views/load/check_music.h"
#include "views/load/search_view.h"
#include "views/load/stop_of_load.h"
#include "views/model/calendar_store.h"
#include "views/paint/missing_folder.h"
#include "views/paint/paint_view.h"

namespace kalmora {

void UpdateObjects() {
    AppState& state = State();
    const ViewPartners& partners = Calendar().partners;
    if (!state.settings.SlideShowAutoNavigate) partners.slideShow.Hide();
    SetButtonStates();
    const ViewState asked = View();
    CalendarView& view = Calendar().ViewOf(asked);
    view.Announce(asked.period);

    LookForDataFolder();

    if (!state.run.ObjectGate.Acquire(view.NameOfLoad(asked.period).c_str())) return;
    LoadRequest request{View(), Calendar().BeginLoad()};
    const StopToken stop = StopOf(request);
    const auto leave = [&] {
        state.run.ObjectGate.Release();
        return;
    };
    if (stop.IsStopped()) return leave();
    // A grid's worker searches itself. A search of all that is loaded is shown as a scatter, so it comes
    // before the choice of the view.
    if (Calendar().ViewOf(request.view).DrawsObjects() || request.view.searchAllLoaded) {
        RunSearch(request, stop);
        request.view.scatter = View().scatter;
    }
    if (stop.IsStopped()) return leave();
    Calendar().backgrounds.Clear();
    if (stop.IsStopped()) return leave();
    partners.slideShow.ClearSlides();
    if (stop.IsStopped()) return leave();

    if (Calendar().ViewOf(request.view).Load(request, stop) == Loading::GoesOn) return;
    if (stop.IsStopped()) return leave();
    CheckMusic(OldMusic::Stop);
    SetCaption();
    state.run.ObjectGate.Release();
    PaintView();
}

void ReloadView() {
    AppState& state = State();
    if (View().scatter || !state.run.ObjectGate.Acquire("Reload")) return;
    const LoadRequest request{View(), Calendar().BeginLoad()};
    const StopToken stop = StopOf(request);
    RunSearch(request, stop);
    Calendar().ViewOf(request.view.period.level).Reload(request, stop);
    state.run.ObjectGate.Release();
    if (Window* window = MainWindow()) window->Invalidate();
}

}  // namespace kalmora
