#include "views/control/scatter_calendar.h"

#include "state/app_state.h"
#include "views/load/viewer_load.h"
#include "views/model/calendar_store.h"
#include "views/paint/heartbeat_redraw.h"
#include "views/paint/walk_objects.h"

namespace kalmora {

namespace {

// What the scatter leaves to the view of its period.
CalendarView& Below(CalendarStore& calendar, const Period& period) { return calendar.ViewOf(period.level); }

}  // namespace

void ScatterCalendar::Announce(const Period& period) { Below(calendar_, period).Announce(period); }

std::string ScatterCalendar::NameOfLoad(const Period& period) const {
    return Below(calendar_, period).NameOfLoad(period);
}

void ScatterCalendar::PrepareLoad(const Period&) {}  // the load takes a viewer that nobody draws in

bool ScatterCalendar::Load(const LoadRequest& request, const StopToken& stop) {
    return LoadAllViewer(calendar_, request, stop);
}

void ScatterCalendar::Reload(const LoadRequest&, const StopToken&) {}  // the command leaves the scatter alone

void ScatterCalendar::Gather(const LoadRequest& request, const StopToken& stop, ObjectList& list) {
    Below(calendar_, request.view.period).Gather(request, stop, list);
}

void ScatterCalendar::Stop(const Period&) { calendar_.CurrentAllViewer().stop = true; }

bool ScatterCalendar::IsReady(const Period&) const { return true; }

void ScatterCalendar::Paint(Canvas&, const Period&, Size, double, Decode) {}

Viewer* ScatterCalendar::CurrentViewer() const { return &calendar_.CurrentAllViewer(); }

WalkEnd ScatterCalendar::DrawObjects() { return WalkAll(calendar_); }

void ScatterCalendar::Beat(const Period&) { RedrawScatter(calendar_); }

void ScatterCalendar::MakeStep(Step step) { Below(calendar_, View().period).MakeStep(step); }

void ScatterCalendar::AdvanceRing() { calendar_.AdvanceAllRing(); }

int ScatterCalendar::BeatsToShow(const Period& period) const {
    return Below(calendar_, period).BeatsToShow(period);
}

std::optional<CalendarDate> ScatterCalendar::RandomDate(const Period& period) const {
    return Below(calendar_, period).RandomDate(period);
}

ViewHit ScatterCalendar::HitTest(const Period& period, Point point, Size) const {
    ViewHit hit;
    if (period.level == Level::Day) hit.part = ViewHit::Part::DayGround;
    hit.date = period.date;
    ObjectList::Hit object;
    if (!calendar_.CurrentAllViewer().objects.HitTest(point, &object)) return hit;
    hit.part = ViewHit::Part::Object;
    hit.hasObject = true;
    hit.area = object.drawn;
    hit.path = object.path;
    hit.kind = object.kind;
    return hit;
}

// Days are found where their cells would be: kept as it is.
std::optional<CalendarDate> ScatterCalendar::DayUnder(const Period& period, Point point, Size client) const {
    return Below(calendar_, period).DayUnder(period, point, client);
}

bool ScatterCalendar::HasDayCells() const { return Below(calendar_, View().period).HasDayCells(); }

std::optional<DropTarget> ScatterCalendar::TargetOfDrop(const Period& period, Point point,
                                                        Size client) const {
    if (period.level == Level::Day) return Below(calendar_, period).TargetOfDrop(period, point, client);
    return DropTarget{period.date, false};
}

}  // namespace kalmora
