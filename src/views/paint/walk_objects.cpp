#include "views/paint/walk_objects.h"

#include "base/stop_token.h"
#include "state/app_state.h"
#include "views/model/calendar_store.h"
#include "views/model/pause.h"
#include "views/paint/draw_objects.h"
#include "views/paint/progress_stripe.h"

namespace kalmora {

namespace {

constexpr int kYieldAboveMs = 10;

// The walk over a viewer's objects; `draw` places and draws one.
template <typename DrawOne>
WalkEnd WalkObjects(CalendarStore& calendar, Viewer& viewer, DrawOne draw) {
    AppState& state = State();
    const StopToken stop = StopToken::AnyOf({StopToken(viewer.stop), StopToken(state.run.ObjectGate)});
    const StopToken restless = StopToken::AnyOf({stop, calendar.PaintLeftToRun()});
    // A stop that no load followed must not keep the period empty for good.
    viewer.stop = false;
    const std::vector<PlacedObjectPtr> objects = viewer.objects.Snapshot();
    if (objects.empty()) return WalkEnd::Whole;
    TicketGuard guard(viewer.queue, 5, 100);
    if (!guard || !viewer.usable) return WalkEnd::Stopped;
    for (std::size_t index = 0; index < objects.size(); ++index) {
        ProgressStripe(static_cast<double>(index) / static_cast<double>(objects.size()));
        while (state.run.Paused) {
            if (stop.IsStopped()) return WalkEnd::Stopped;
            if (calendar.IsPaintLeftToRun()) return WalkEnd::Repaint;
            restless.WaitFor(kPauseStepMs);
        }
        if (stop.IsStopped()) return WalkEnd::Stopped;
        if (calendar.IsPaintLeftToRun()) return WalkEnd::Repaint;
        if (calendar.partners.slideShow.IsShown()) continue;
        if (draw(objects[index])) ++calendar.objectsDrawn;
        if (state.settings.TimingOfChangeImage > kYieldAboveMs)
            restless.WaitFor(state.settings.TimingOfChangeImage);
    }
    viewer.loaded = true;
    ProgressStripe(kStripeFinished);
    return WalkEnd::Whole;
}

}  // namespace

WalkEnd WalkDay(CalendarStore& calendar) {
    DayViewer& viewer = calendar.CurrentDayViewer();
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
    return WalkObjects(calendar, viewer, [&](const PlacedObjectPtr& object) {
        return DrawDayObject(calendar, viewer, object);
    });
}

WalkEnd WalkAll(CalendarStore& calendar) {
    AllViewer& viewer = calendar.CurrentAllViewer();
    viewer.objects.ClearVisibleMarks();
    viewer.drawing = true;
    const WalkEnd end = WalkObjects(calendar, viewer, [&](const PlacedObjectPtr& object) {
        return DrawAllObject(calendar, viewer, object);
    });
    viewer.drawing = false;
    return end;
}

}  // namespace kalmora
