#include "views/paint/event_paint.h"

#include "media/my_object.h"
#include "pictures/draw_context.h"
#include "platform/clock.h"
#include "state/app_state.h"
#include "views/bar/button_bar.h"
#include "views/hooks.h"
#include "views/load/month_loader.h"
#include "views/model/calendar_store.h"
#include "views/paint/paint_view.h"
#include "views/paint/progress_stripe.h"

namespace kalmora {

namespace {

constexpr int kButtonBarHeight = 50;  // kept free for the buttons
constexpr int kSettleMs = 100;
constexpr int kYieldAboveMs = 10;
constexpr int kPauseStepMs = 500;

enum class WalkEnd { Whole, Stopped, Repaint };

Size ObjectArea() {
    const Size client = ClientSize();
    return {client.width, client.height - kButtonBarHeight};
}

// Waits until no full paint was asked for during the settling time; does those paints.
void SettlePaints() {
    CalendarStore& calendar = Calendar();
    do {
        if (calendar.TakePaintLeftToRun()) PaintBase();
        SleepMs(kSettleMs);
    } while (calendar.IsPaintLeftToRun() && !State().run.ObjectGate.IsStopRequested());
}

bool PassesFilter(CPhoto& photo) {
    if (photo.kind != kKindText && photo.kind != kKindImage && photo.kind != kKindMovie) return false;
    return photo.IsVisibleUnderEstimate();
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
        if (Hooks().IsSlideShowOpen()) continue;
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

// Claims the object, draws it when it passes the filter, and remembers where it lies.
template <typename DrawOne>
bool DrawClaimed(ObjectList& list, const PlacedObjectPtr& object, DrawOne draw) {
    if (!list.Claim(object)) return false;
    CPhoto& photo = *object->photo;
    photo.visible = 1;
    Rect drawn;
    if (PassesFilter(photo)) {
        draw(photo);
        drawn = {photo.drawnX, photo.drawnY, photo.displayWidth, photo.displayHeight};
    }
    if (drawn.IsEmpty()) drawn = {};
    list.Settle(object, drawn);
    return !drawn.IsEmpty();
}

}  // namespace

bool DrawDayObject(DayViewer& viewer, const PlacedObjectPtr& object) {
    Window* window = MainWindow();
    if (!window) return false;
    const DrawContext context(*window, [&viewer] {
        return viewer.usable && !viewer.stop && !State().view.AllViewMode &&
               State().view.ViewType == kDaily && &Calendar().CurrentDayViewer() == &viewer;
    });
    return DrawClaimed(viewer.objects, object, [&](CPhoto& photo) {
        if (!object->placed) viewer.PlaceOnLine(*object);
        photo.DrawScaledToHeight(context, viewer.lines.ThumbnailHeight());
    });
}

bool DrawAllObject(AllViewer& viewer, const PlacedObjectPtr& object) {
    Window* window = MainWindow();
    if (!window) return false;
    const DrawContext context(*window, [&viewer] {
        return viewer.usable && !viewer.stop && State().view.AllViewMode &&
               &Calendar().CurrentAllViewer() == &viewer;
    });
    const Size area = ObjectArea();
    return DrawClaimed(viewer.objects, object, [&](CPhoto& photo) {
        if (!object->placed) {
            const Point place = viewer.OccupancyGrid.Place();
            photo.layoutX = place.x;
            photo.layoutY = place.y;
            object->placed = true;
        }
        photo.DrawInArea(context, area.width, area.height);
    });
}

void EventPaint() {
    AppState& state = State();
    if (state.run.ObjectGate.IsHeld()) return;
    if (!state.view.AllViewMode && state.view.ViewType != kDaily) return;
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
        if (state.run.ObjectGate.IsStopRequested() ||
            (!state.view.AllViewMode && state.view.ViewType != kDaily))
            end = WalkEnd::Stopped;
        else
            end = state.view.AllViewMode ? WalkAll() : WalkDay();
    } while (end == WalkEnd::Repaint);
    SetButtonStates();
    DrawButtonsOnWindow();
    // After the bounded wait a newer load has gone on with a gate of its own: that one is not ours to open.
    if (Calendar().loadNumber == loadNumber) state.run.ObjectGate.Release();
    state.run.FirstLoadDone = 1;
    // A paint that came too late for this run is done by whoever is free now.
    if (Calendar().EndPaintRun()) return PaintView();
    if (end == WalkEnd::Whole) Hooks().OnWholeView();
}

}  // namespace kalmora
