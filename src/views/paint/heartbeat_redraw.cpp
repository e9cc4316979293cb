#include "views/paint/heartbeat_redraw.h"

#include <vector>

#include "state/app_state.h"
#include "views/model/calendar_geometry.h"
#include "views/model/calendar_store.h"
#include "views/paint/draw_objects.h"
#include "views/paint/paint_on_window.h"

namespace kalmora {

namespace {

constexpr int kMaxRetries = 10;
constexpr std::size_t kMaxEntriesWalked = 300;

// Draws the first object and moves it to the tail; when nothing could be drawn, the next, at most ten more.
template <typename DrawOne>
void CycleFront(Viewer& viewer, DrawOne draw) {
    for (int attempt = 0; attempt <= kMaxRetries; ++attempt) {
        // The list may be another one after the wait.
        TicketGuard guard(viewer.queue, 1, 100);
        if (!guard) return;
        const PlacedObjectPtr front = viewer.objects.Front();
        if (!front) return;
        const bool drawn = draw(front);
        viewer.objects.MoveToTail(front);
        if (drawn) return;
    }
}

void RedrawDayLines(CalendarStore& calendar, DayViewer& viewer) {
    TicketGuard guard(State().run.ObjectQueue, 1, 100);
    if (!guard) return;
    TicketGuard places(viewer.queue, 1, 100);
    if (!places) return;
    const std::vector<PlacedObjectPtr> objects = viewer.objects.Snapshot();
    for (int line = 0; line < viewer.lines.lines; ++line) {
        if (viewer.PerLineCount[static_cast<std::size_t>(line)] == 0) continue;
        for (std::size_t i = 0; i < objects.size() && i < kMaxEntriesWalked; ++i) {
            if (!objects[i]->photo->placed || objects[i]->photo->placementTag != line) continue;
            DrawDayObject(calendar, viewer, objects[i]);
            viewer.objects.MoveToTail(objects[i]);
            break;
        }
    }
}

}  // namespace

void RedrawYear(CalendarStore& calendar, int year) {
    // One phase for the whole process; it starts before 0, so that the first beat draws phase 0.
    static std::atomic<int> phase{-1};
    const int current = phase = (phase + 1) % 3;
    for (int month = 1; month <= 12; ++month) {
        if (((month - 1) / 4 + (month - 1) % 4) % 3 != current) continue;
        if (State().settings.CalendarMode)
            DrawMonthStep(calendar, year, month);
        else
            StepMonthPicture(calendar, year, month);
    }
}

void RedrawDay(CalendarStore& calendar) {
    DayViewer& viewer = calendar.CurrentDayViewer();
    if (State().settings.DayViewSortByTime)
        RedrawDayLines(calendar, viewer);
    else
        CycleFront(viewer,
                   [&](const PlacedObjectPtr& object) { return DrawDayObject(calendar, viewer, object); });
}

void RedrawScatter(CalendarStore& calendar) {
    AllViewer& viewer = calendar.CurrentAllViewer();
    if (!viewer.loaded || State().run.ObjectGate.IsStopRequested()) return;
    CycleFront(viewer,
               [&](const PlacedObjectPtr& object) { return DrawAllObject(calendar, viewer, object); });
}

bool IsViewReady(CalendarStore& calendar) {
    const ViewState view = View();
    return !*calendar.loadIsLeft && calendar.ViewOf(view).IsReady(view.period);
}

void HeartbeatRedraw(CalendarStore& calendar, int ticks) {
    const ViewState state = View();
    CalendarView& view = calendar.ViewOf(state);
    const int backgroundTicks = State().settings.TimingOfChangeBgImage;
    const bool changesBackground = backgroundTicks > 0 && ticks % backgroundTicks == 0;
    if (!view.DrawsObjects()) calendar.partners.slideShow.Hide();
    if (changesBackground) {
        calendar.backgrounds.PickRandomImage();
        // The beat ends here and nothing is repainted: the new picture shows with the next full paint. Meant,
        // and held by HeartbeatRedraw.BackgroundBeatChangesNothingOnTheScreen.
        return;
    }
    view.Beat(state.period);
}

}  // namespace kalmora
