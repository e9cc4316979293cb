#include "views/load/grid_load.h"

#include "pictures/picture_cache.h"
#include "state/app_state.h"
#include "store/data_folder.h"
#include "views/bar/button_bar.h"
#include "views/load/search_view.h"
#include "views/load/stop_of_load.h"
#include "views/model/calendar_store.h"
#include "views/paint/paint_view.h"

namespace kalmora {

namespace {

// The worker.
void LoadGrid(const LoadRequest& request, const GridWork& work) {
    AppState& state = State();
    CalendarStore& calendar = Calendar();
    const StopToken stop = StopOf(request);
    const auto run = [&] {
        if (stop.IsStopped()) return false;
        calendar.backgrounds.Clear();
        if (stop.IsStopped()) return false;
        Calendar().partners.slideShow.ClearSlides();
        SetCaption();
        const std::string root = MainRoot();
        work.FindBackgrounds(root, request.view.period, stop);
        if (stop.IsStopped()) return false;
        CheckMusic(work.AtOldMusic());
        PaintView();
        RunSearch(request, stop);
        if (stop.IsStopped()) return false;

        const auto load = [&](const std::string& folder, bool whileLoading) {
            // Without drawing while loading, each month of a year still appears when it is complete.
            const LoadDrawing drawing{whileLoading, whileLoading || !State().settings.DrawWhileLoading};
            return work.LoadFolders({request.view, folder, drawing}, stop);
        };
        if (!load(root, state.settings.DrawWhileLoading)) return false;
        state.run.FirstLoadDone = 1;
        if (const std::string other = OtherRoot(); !other.empty() && !load(other, false)) return false;
        if (state.settings.SlideShowAutoNavigate && Calendar().partners.slideShow.IsShown())
            Calendar().partners.slideShow.TakeNewSlides();
        // The grid once more, whole and off the screen: what a resize or the second root changed meanwhile.
        PaintView();
        return true;
    };
    const bool whole = run();
    // A newer load that waited in vain has gone on with a gate of its own: that one is not ours to open.
    if (!request.load.IsStopped()) state.run.ObjectGate.Release();
    if (whole) Calendar().partners.observer.OnWholeView();
}

}  // namespace

void ClearGrid(const Period& period) {
    YearView& slot = Calendar().SlotOf(period.date.year);
    bool otherYear;
    {
        std::lock_guard lock(slot.mutex);
        otherYear = slot.year != period.date.year;
        slot.year = period.date.year;
    }
    if (period.level != Level::Month || otherYear) {
        slot.Clear();
        return;
    }
    slot.stop = false;
    slot.ready = false;  // one of its months is about to change
    std::lock_guard lock(slot.mutex);
    Calendar().MonthOf(period.date.year, period.date.month).Clear();
}

void StartGridLoad(const LoadRequest& request, const GridWork& work) {
    AppState& state = State();
    ClearGrid(request.view.period);
    state.run.TicksInView = 0;
    Pictures().CancelPrefetch();
    const TicketLock::Ticket ticket = state.run.LoaderQueue.Lock(10, 100);
    if (ticket == TicketLock::kRefused) return state.run.ObjectGate.Release();
    // The gate goes over to the worker without being opened in between: a command that comes now finds it
    // held and asks the worker to leave, instead of slipping in ahead of it.
    const bool started = Calendar().StartObjectLoader([request, ticket, &work] {
        LoadGrid(request, work);
        State().run.LoaderQueue.Unlock(ticket);
    });
    if (started) return;
    state.run.LoaderQueue.Unlock(ticket);
    state.run.ObjectGate.Release();
}

}  // namespace kalmora
