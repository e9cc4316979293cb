#include "views/control/day_calendar.h"

#include "base/format.h"
#include "base/log.h"
#include "state/app_state.h"
#include "store/data_folder.h"
#include "store/date_tree.h"
#include "views/control/navigation.h"
#include "views/load/month_loader.h"
#include "views/load/viewer_load.h"
#include "views/model/calendar_geometry.h"
#include "views/model/calendar_store.h"
#include "views/paint/heartbeat_redraw.h"
#include "views/paint/paint_period.h"
#include "views/paint/walk_objects.h"

namespace kalmora {

namespace {

DayLines LinesOf(Size client) {
    const Settings& settings = State().settings;
    return MakeDayLines(client.height, settings.DayNumberOfLine, settings.DayDuration, settings.DayStartTime);
}

}  // namespace

void DayCalendar::Announce(const Period& period) {
    const auto& [year, month, day] = period.date;
    calendar_.partners.navigation.OnNavigation(Format("(Day)\t%04d/%02d/%02d", year, month, day));
    // Counted from here also when the gate refuses the load, and in the day's scatter.
    State().run.TicksInView = 0;
}

std::string DayCalendar::NameOfLoad(const Period&) const { return "UpdateObjects"; }

void DayCalendar::PrepareLoad(const Period&) {}  // the load takes a viewer that nobody draws in

bool DayCalendar::Load(const LoadRequest& request, const StopToken& stop) {
    return LoadDayViewer(calendar_, request, stop);
}

// Reads the day's cell of the grid, not the viewer that is shown, on purpose.
void DayCalendar::Reload(const LoadRequest& request, const StopToken& stop) {
    const auto& [year, month, day] = request.view.period.date;
    Log("Reload (%d/%d/%d)", year, month, day);
    if (day < 1 || day > 31) return;
    {
        std::lock_guard lock(calendar_.SlotOf(year).mutex);
        calendar_.MonthOf(year, month).days[static_cast<std::size_t>(day - 1)].Clear();
    }
    LoadDayCell({calendar_, request.view, MainRoot(), {}}, month, day, stop);
}

void DayCalendar::Gather(const LoadRequest& request, const StopToken& stop, ObjectList& list) {
    ForEachRoot([&](const std::string& root) {
        GatherDay(calendar_, root, request.view.period.date, request, stop, list);
    });
}

void DayCalendar::Stop(const Period&) { calendar_.CurrentDayViewer().stop = true; }

bool DayCalendar::IsReady(const Period&) const { return true; }

void DayCalendar::Paint(Canvas& canvas, const Period&, Size client, double scale, Decode) {
    PaintHours(canvas, client, scale);
}

Viewer* DayCalendar::CurrentViewer() const { return &calendar_.CurrentDayViewer(); }

WalkEnd DayCalendar::DrawObjects() { return WalkDay(calendar_); }

void DayCalendar::Beat(const Period& period) {
    if (calendar_.CurrentDayViewer().IsOf(period.date)) RedrawDay(calendar_);
}

void DayCalendar::MakeStep(Step step) {
    switch (step) {
        case Step::OuterNext:
            return NextMonth(calendar_);
        case Step::Next:
            return NextDay(calendar_);
        case Step::Previous:
            return PrevDay(calendar_);
        case Step::OuterPrevious:
            return PrevMonth(calendar_);
    }
}

void DayCalendar::AdvanceRing() { calendar_.AdvanceDayRing(); }

int DayCalendar::BeatsToShow(const Period& period) const {
    return TheDateTree().CountOf(period.date.year, period.date.month, period.date.day).value_or(0);
}

std::optional<CalendarDate> DayCalendar::RandomDate(const Period&) const {
    const auto picked = TheDateTree().Pick(kDayLevel);
    if (!picked || picked->year < 1 || picked->month < 1 || picked->day < 1) return std::nullopt;
    return picked;
}

ViewHit DayCalendar::HitTest(const Period& period, Point point, Size client) const {
    ViewHit hit;
    hit.part = ViewHit::Part::DayGround;
    hit.date = period.date;
    DayViewer& viewer = calendar_.CurrentDayViewer();
    if (ObjectList::Hit object; viewer.IsOf(period.date) && viewer.objects.HitTest(point, &object)) {
        hit.part = ViewHit::Part::Object;
        hit.hasObject = true;
        hit.area = object.drawn;
        hit.path = object.path;
        hit.kind = object.kind;
    }
    const DayLines lines = LinesOf(client);
    for (int line = lines.lines - 1; line >= 0; --line) {
        if (!lines.HourPictureRect(line).ContainsInclusive(point)) continue;
        hit.part = ViewHit::Part::HourPicture;
        hit.hour = lines.HourOfLine(line);
        break;
    }
    return hit;
}

std::optional<CalendarDate> DayCalendar::DayUnder(const Period&, Point, Size) const { return std::nullopt; }

bool DayCalendar::HasDayCells() const { return false; }

std::optional<DropTarget> DayCalendar::TargetOfDrop(const Period& period, Point point, Size client) const {
    const DayLines lines = LinesOf(client);
    return DropTarget{period.date, point.x < kDayLeftMargin || point.y >= lines.LineTop(lines.lines)};
}

}  // namespace kalmora
