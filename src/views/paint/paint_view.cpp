#include "views/paint/paint_view.h"

#include <cstdint>

#include "base/stop_token.h"
#include "state/app_state.h"
#include "views/bar/button_bar.h"
#include "views/model/calendar_store.h"
#include "views/paint/paint_base.h"

namespace kalmora {

namespace {

constexpr int kQuietMs = 100;

// Waits until no full paint was requested for kQuietMs; does the paints requested before. A newer load, which
// wants the gate, ends the wait at once.
void WaitForQuiet(CalendarStore& calendar, std::uint64_t run) {
    const StopToken stop(State().run.ObjectGate);
    do {
        if (calendar.TakePaintLeftToRun(run)) PaintBase(calendar, Decode::Now);
        if (stop.WaitFor(kQuietMs)) return;
    } while (calendar.IsPaintLeftToRun());
}

// Body of the run; `load` is the token of the load whose objects it draws. Waits until a burst of paints has
// ended; a full paint that is asked for meanwhile is done here and the walk starts over.
void EventPaintThread(CalendarStore& calendar, const StopToken& load, std::uint64_t run) {
    AppState& state = State();
    WalkEnd end;
    do {
        WaitForQuiet(calendar, run);
        calendar.objectsDrawn = 0;
        CalendarView& view = calendar.ViewOf(View());
        const bool isOutdated = state.run.ObjectGate.IsStopRequested() || *calendar.loadIsLeft;
        end = isOutdated || !view.DrawsObjects() ? WalkEnd::Stopped : view.DrawObjects();
    } while (end == WalkEnd::Repaint);
    SetButtonStates();
    DrawButtonsOnWindow();
    // After the bounded wait a newer load has gone on with a gate of its own: that one is not ours to open.
    if (!load.IsStopped()) state.run.ObjectGate.Release();
    state.run.FirstLoadDone = 1;
    // A paint that came too late for this run is done by this thread now.
    if (calendar.EndPaintRun(run)) return PaintView(calendar, Decode::Now);
    if (end == WalkEnd::Whole) calendar.partners.observer.OnWholeView();
}

}  // namespace

void PaintView(CalendarStore& calendar, Decode decode) {
    if (calendar.LeavePaintToRun()) return;
    PaintBase(calendar, decode);
    EventPaint(calendar);
}

void EventPaint(CalendarStore& calendar) {
    AppState& state = State();
    if (!calendar.ViewOf(View()).DrawsObjects()) return;
    // A load that holds the gate paints at its end. A run that holds it has lost to this paint what it had
    // drawn, and starts over.
    if (!state.run.ObjectGate.TryAcquire()) {
        calendar.LeavePaintToRun();
        return;
    }
    calendar.objectsDrawn = 0;
    if (!calendar.StartPaintThread([&calendar, load = calendar.CurrentLoad()](std::uint64_t run) {
            EventPaintThread(calendar, load, run);
        }))
        state.run.ObjectGate.Release();
}

}  // namespace kalmora
