#include "views/load/object_loader.h"

#include <atomic>
#include <memory>
#include <string>

#include "pictures/picture_cache.h"
#include "platform/clock.h"
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
    if (isWhole && !drawsObjects) PaintView(calendar, Decode::Now);
    OpenGate(request);
    if (!isWhole) return;
    // The run that draws the objects takes the gate.
    if (drawsObjects)
        PaintView(calendar, Decode::Now);
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

constexpr int kQueueLookMs = 10;

enum class Task { Load, ReadAgain };

// With the gate held: what the view in force is now is loaded.
LoadRequest BeginLoad(CalendarStore& calendar, Task task) {
    const LoadRequest request{View(), calendar.BeginLoad()};
    Pictures().CancelPrefetch();
    if (task == Task::Load) {
        State().run.TicksInView = 0;
        calendar.ViewOf(request.view).PrepareLoad(request.view.period);
    }
    return request;
}

// The worker, with the gate held; opens it.
void WorkOff(CalendarStore& calendar, const LoadRequest& request, Task task) {
    AppState& state = State();
    // One that hangs in a file call may hold the queue: its end is waited for as long as this load is wanted.
    TicketLock::Ticket ticket;
    while ((ticket = state.run.LoaderQueue.Lock(10, 100)) == TicketLock::kRefused)
        if (StopOf(request).WaitFor(kQueueLookMs)) return OpenGate(request);
    if (task == Task::Load)
        LoadView(calendar, request);
    else
        ReadAgain(calendar, request);
    state.run.LoaderQueue.Unlock(ticket);
}

// Whoever works leaves the gate within this time, unless it is held up in a file call.
bool IsGateFreeSoon() {
    constexpr int kLongestMs = 200, kLookMs = 2;
    WorkGate& gate = State().run.ObjectGate;
    gate.RequestStop();
    for (int waited = 0; gate.IsHeld(); waited += kLookMs) {
        if (waited >= kLongestMs) return false;
        SleepMs(kLookMs);
    }
    return true;
}

// Starts the worker. It takes the gate over without its being opened in between: a command that comes now
// finds it held and asks the worker to leave, instead of slipping in ahead of it. Behind one who hangs the
// worker waits at the gate, so that the window can be closed meanwhile.
void StartLoad(CalendarStore& calendar, const std::string& name, Task task) {
    WorkGate& gate = State().run.ObjectGate;
    if (IsGateFreeSoon()) {
        if (!gate.Acquire(name.c_str())) return;
        const LoadRequest request = BeginLoad(calendar, task);
        if (!calendar.StartObjectLoader([&calendar, request, task] { WorkOff(calendar, request, task); }))
            OpenGate(request);
        return;
    }
    const bool hasWindow = MainWindow() != nullptr;
    calendar.StartObjectLoader([&calendar, name, task, hasWindow, asked = View(), &gate] {
        if (!gate.Acquire(name.c_str())) return;
        if (hasWindow && !MainWindow()) return gate.Release();  // it was closed meanwhile
        // It also stands for whoever was refused meanwhile: another view is loaded, not read again.
        const Task now = View() == asked ? task : Task::Load;
        WorkOff(calendar, BeginLoad(calendar, now), now);
    });
}

}  // namespace

void UpdateObjects(CalendarStore& calendar) {
    *calendar.loadIsLeft = false;
    // The GUI thread makes the steps, so its load is of the last one. A beat's may have read the view before.
    const Application* application = TheApplication();
    if (application && application->IsGuiThread()) *calendar.loadIsPosted = false;
    const ViewPartners& partners = calendar.partners;
    if (!State().settings.SlideShowAutoNavigate) partners.slideShow.Hide();
    SetButtonStates();
    const ViewState asked = View();
    CalendarView& view = calendar.ViewOf(asked);
    view.Announce(asked.period);
    StartLoad(calendar, view.NameOfLoad(asked.period), Task::Load);
}

void UpdateObjectsSoon(CalendarStore& calendar) {
    *calendar.loadIsLeft = true;
    const std::shared_ptr<std::atomic<bool>> isPosted = calendar.loadIsPosted;
    if (isPosted->exchange(true)) return;
    TheApplication()->Post([&calendar, isPosted] {
        if (isPosted->exchange(false)) UpdateObjects(calendar);
    });
}

void ReloadView(CalendarStore& calendar) {
    // What stops a load in its midst does it again, from the beginning.
    const Task task = calendar.IsObjectLoaderRunning() ? Task::Load : Task::ReadAgain;
    if (!View().scatter) StartLoad(calendar, "Reload", task);
}

}  // namespace kalmora
