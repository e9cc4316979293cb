#include "views/load/object_loader.h"

#include <atomic>
#include <memory>

#include "pictures/picture_cache.h"
#include "platform/window.h"
#include "state/app_state.h"
#include "views/bar/button_bar.h"
#include "views/load/search_view.h"
#include "views/load/stop_of_load.h"
#include "views/model/calendar_store.h"
#include "views/paint/missing_folder.h"
#include "views/paint/paint_view.h"

namespace kalmora {

namespace {

// The gate was taken for this load. A newer one that waited in vain has gone on with a gate of its own: that
// one is not ours to open.
void OpenGate(const LoadRequest& request) {
    if (!request.load.IsStopped()) State().run.ObjectGate.Release();
}

// A search of all that is loaded is shown as a scatter, so it comes before the choice of the view. A grid
// searches by itself, once its background is painted.
void SearchFirst(CalendarStore& calendar, LoadRequest& request, const StopToken& stop) {
    if (!calendar.ViewOf(request.view).DrawsObjects() && !request.view.searchAllLoaded) return;
    RunSearch(request, stop);
    request.view.scatter = View().scatter;
}

// The worker.
void LoadView(CalendarStore& calendar, LoadRequest request) {
    const ViewPartners& partners = calendar.partners;
    const StopToken stop = StopOf(request);
    const auto load = [&] {
        if (stop.IsStopped()) return false;
        LookForDataFolder();
        SearchFirst(calendar, request, stop);
        if (stop.IsStopped()) return false;
        calendar.backgrounds.Clear();
        partners.slideShow.ClearSlides();
        if (!calendar.ViewOf(request.view).Load(request, stop)) return false;
        if (State().settings.SlideShowAutoNavigate && partners.slideShow.IsShown())
            partners.slideShow.TakeNewSlides();
        return true;
    };
    const bool isWhole = load();
    const bool drawsObjects = calendar.ViewOf(request.view).DrawsObjects();
    // A grid once more, whole and off the screen: what a resize or the second root changed meanwhile.
    if (isWhole && !drawsObjects) PaintView(calendar);
    OpenGate(request);
    if (!isWhole) return;
    // The run that draws the objects takes the gate.
    if (drawsObjects)
        PaintView(calendar);
    else
        partners.observer.OnWholeView();
}

// The worker of a reload by command.
void ReadAgain(CalendarStore& calendar, const LoadRequest& request) {
    const StopToken stop = StopOf(request);
    RunSearch(request, stop);
    if (!stop.IsStopped()) calendar.ViewOf(request.view.period.level).Reload(request, stop);
    OpenGate(request);
    if (Window* window = MainWindow()) window->Invalidate();
}

// Starts the worker, which takes the object gate over and opens it when it ends. When none can be started the
// gate is opened at once.
template <typename Work>
void StartLoad(CalendarStore& calendar, const LoadRequest& request, Work work) {
    AppState& state = State();
    Pictures().CancelPrefetch();
    const TicketLock::Ticket ticket = state.run.LoaderQueue.Lock(10, 100);
    if (ticket == TicketLock::kRefused) return state.run.ObjectGate.Release();
    // The gate goes over to the worker without being opened in between: a command that comes now finds it
    // held and asks the worker to leave, instead of slipping in ahead of it.
    const bool isStarted = calendar.StartObjectLoader([&calendar, request, ticket, work] {
        work(calendar, request);
        State().run.LoaderQueue.Unlock(ticket);
    });
    if (isStarted) return;
    state.run.LoaderQueue.Unlock(ticket);
    state.run.ObjectGate.Release();
}

}  // namespace

void UpdateObjects(CalendarStore& calendar) {
    AppState& state = State();
    *calendar.loadIsLeft = false;
    const ViewPartners& partners = calendar.partners;
    if (!state.settings.SlideShowAutoNavigate) partners.slideShow.Hide();
    SetButtonStates();
    const ViewState asked = View();
    CalendarView& view = calendar.ViewOf(asked);
    view.Announce(asked.period);
    if (!state.run.ObjectGate.Acquire(view.NameOfLoad(asked.period).c_str())) return;
    const LoadRequest request{View(), calendar.BeginLoad()};
    state.run.TicksInView = 0;
    calendar.ViewOf(request.view).PrepareLoad(request.view.period);
    StartLoad(calendar, request, LoadView);
}

void UpdateObjectsSoon(CalendarStore& calendar) {
    const std::shared_ptr<std::atomic<bool>> isLeft = calendar.loadIsLeft;
    if (isLeft->exchange(true)) return;
    TheApplication()->Post([&calendar, isLeft] {
        if (*isLeft) UpdateObjects(calendar);
    });
}

void ReloadView(CalendarStore& calendar) {
    if (View().scatter || !State().run.ObjectGate.Acquire("Reload")) return;
    StartLoad(calendar, {View(), calendar.BeginLoad()}, ReadAgain);
}

}  // namespace kalmora
