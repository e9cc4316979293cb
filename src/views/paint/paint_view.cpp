#include "views/paint/paint_view.h"

#include "platform/clock.h"
#include "state/app_state.h"
#include "views/bar/button_bar.h"
#include "views/model/calendar_store.h"
#include "views/model/stoppable_wait.h"
#include "views/paint/draw_objects.h"
#include "views/paint/paint_base.h"
#include "views/paint/progress_stripe.h"

namespace kalmora {

namespace {

constexpr int kSettleMs = 100;
constexpr int kYieldAboveMs = 10;
constexpr int kPauseStepMs = 500;

enum class WalkEnd { Whole, Stopped, Repaint };

// A grid's pictures belong to its cells.
bool HasObjectRun(const ViewState& view) { return view.scatter || view.period.level == Level::Day; }

// Waits until no full paint was asked for during the settling time; does those paints.
void SettlePaints() {
    CalendarStore& calendar = Calendar();
    do {
        if (calendar.TakePaintLeftToRun()) PaintBase();
        SleepMs(kSettleMs);
    } while (calendar.IsPaintLeftToRun() && !State().run.ObjectGate.IsStopRequested());
}

// The walk over a viewer's objects; `draw` places and draws one.
template <typename Viewer, typename DrawOne>
WalkEnd WalkObjects(Viewer& viewer, DrawOne draw) {
    AppState& state = State();
    const auto stopped = [&] {
        return viewer.stop || !viewer.usable || state.run.ObjectGate.IsStopRequested();
    };
    const auto restless = [&] { return stopped() || Calendar().IsPaintLeftToRun(); };
    // A stop that no load followed must not keep the period empty for good.
    viewer.stop = false;
    const std::vector<PlacedObjectPtr> objects = viewer.objects.Snapshot();
    if (objects.empty()) return WalkEnd::Whole;
    TicketGuard guard(viewer.queue, 5, 100);
    if (!guard) return WalkEnd::Stopped;
    for (std::size_t index = 0; index < objects.size(); ++index) {
        ProgressStripe(static_cast<double>(index) / static_cast<double>(objects.size()));
        while (state.run.Paused) {
            if (stopped()) return WalkEnd::Stopped;
            if (Calendar().IsPaintLeftToRun()) return WalkEnd::Repaint;
            SleepUnless(restless, kPauseStepMs);
        }
        if (stopped()) return WalkEnd::Stopped;
        if (Calendar().IsPaintLeftToRun()) return WalkEnd::Repaint;
        if (Calendar().partners.slideShow.IsShown()) continue;
        if (draw(objects[index])) ++Calendar().objectsDrawn;
        if (state.settings.TimingOfChangeImage > kYieldAboveMs)
            SleepUnless(restless, state.settings.TimingOfChangeImage);
    }
    viewer.loaded = true;
    ProgressStripe(kStripeFinished);
    return WalkEnd::Whole;
}

WalkEnd WalkDay() {
    DayViewer& viewer = Calendar().CurrentDayViewer();
    {
        TicketGuard guard(viewer.queue, 5, 100);
        if (!guard) return WalkEnd::Stopped;
        viewer.objects.ClearVisibleMarks();
        const AppState& state = State();
        const Size client = ClientSize();
        const DayLines lines = MakeDayLines(client.height, state.settings.DayNumberOfLine,
                                            state.settings.DayDuration, state.settings.DayStartTime);
        if (viewer.clientWidth != client.width || viewer.lines.lineHeight != lines.lineHeight)
            viewer.ResetPlaces(lines, client.width);
    }
    return WalkObjects(viewer, [&](const PlacedObjectPtr& object) { return DrawDayObject(viewer, object); });
}

WalkEnd WalkAll() {
    AllViewer& viewer = Calendar().CurrentAllViewer();
    viewer.objects.ClearVisibleMarks();
    viewer.drawing = true;
    const WalkEnd end =
        WalkObjects(viewer, [&](const PlacedObjectPtr& object) { return DrawAllObject(viewer, object); });
    const Size area = ObjectArea();
    viewer.SetDrawnArea({0, 0, area.width, area.height});
    viewer.drawing = false;
    return end;
}

}  // namespace

void PaintView() {
    if (Calendar().LeavePaintToRun()) return;
    PaintBase();
    EventPaint();
}

void EventPaint() {
    AppState& state = State();
    if (state.run.ObjectGate.IsHeld()) return;
    if (!HasObjectRun(View())) return;
    if (!state.run.ObjectGate.Acquire("EventPaint")) return;
    Calendar().objectsDrawn = 0;
    if (!Calendar().StartPaintThread([number = Calendar().loadNumber.load()] { EventPaintThread(number); }))
        state.run.ObjectGate.Release();
}

void EventPaintThread(std::uint32_t loadNumber) {
    AppState& state = State();
    WalkEnd end;
    do {
        SettlePaints();
        Calendar().objectsDrawn = 0;
        const ViewState view = View();
        if (state.run.ObjectGate.IsStopRequested() || !HasObjectRun(view))
            end = WalkEnd::Stopped;
        else
            end = view.scatter ? WalkAll() : WalkDay();
    } while (end == WalkEnd::Repaint);
    SetButtonStates();
    DrawButtonsOnWindow();
    // After the bounded wait a newer load has gone on with a gate of its own: that one is not ours to open.
    if (Calendar().loadNumber == loadNumber) state.run.ObjectGate.Release();
    state.run.FirstLoadDone = 1;
    // A paint that came too late for this run is done by whoever is free now.
    if (Calendar().EndPaintRun()) return PaintView();
    if (end == WalkEnd::Whole) Calendar().partners.observer.OnWholeView();
}

}  // namespace kalmora
