#include "views/control/year_calendar.h"

#include "base/format.h"
#include "state/app_state.h"
#include "store/data_folder.h"
#include "store/date_tree.h"
#include "views/control/navigation.h"
#include "views/load/scan_backgrounds.h"
#include "views/load/viewer_load.h"
#include "views/model/calendar_geometry.h"
#include "views/model/calendar_store.h"
#include "views/model/cell_content.h"
#include "views/paint/heartbeat_redraw.h"
#include "views/paint/paint_on_window.h"
#include "views/paint/paint_period.h"
#include "views/paint/progress_stripe.h"

namespace kalmora {

namespace {

bool IsOnAMonth(Point point, int clientWidth) {
    for (int month = 1; month <= 12; ++month)
        if (YearMonthRect(clientWidth, month).ContainsInclusive(point)) return true;
    return false;
}

void FillFromCell(CalendarStore& calendar, const CalendarDate& day, ViewHit* hit) {
    const CellContent content = ContentOfCell(calendar, day.year, day.month, day.day);
    if (content.count == 0) return;
    hit->path = content.entry.path;
    hit->kind = content.entry.kind;
}

}  // namespace

void YearCalendar::Announce(const Period& period) {
    calendar_.partners.navigation.OnNavigation(Format("(Year)\t%04d", period.date.year));
}

std::string YearCalendar::NameOfLoad(const Period& period) const {
    return Format("UpdateObjects: [%d]", period.date.year);
}

void YearCalendar::PrepareLoad(const Period& period) { ClearGrid(calendar_, period); }

bool YearCalendar::Load(const LoadRequest& request, const StopToken& stop) {
    return LoadGrid(calendar_, request, *this, stop);
}

void YearCalendar::Reload(const LoadRequest& request, const StopToken& stop) {
    ClearGrid(calendar_, request.view.period);
    LoadYear({calendar_, request.view, MainRoot(), {false, false, false}}, stop);
}

// The second data folder has no part in a whole year's scatter, on purpose.
void YearCalendar::Gather(const LoadRequest& request, const StopToken& stop, ObjectList& list) {
    for (int month = 1; month <= 12 && !stop.IsStopped(); ++month) {
        ProgressStripe(month / 12.0);  // progress: a year may be a hundred thousand files
        GatherMonth(calendar_, MainRoot(), month, request, stop, list);
    }
    ProgressStripe(kStripeFinished);
}

void YearCalendar::FindBackgrounds(const std::string& root, const Period& period,
                                   const StopToken& stop) const {
    ScanBackgrounds(calendar_, root, period.date.year, 0, stop);
    for (int month = 1; month <= 12 && !stop.IsStopped(); ++month)
        ScanBackgrounds(calendar_, root, period.date.year, month, stop);
}

bool YearCalendar::LoadFolders(const LoadPass& pass, const StopToken& stop) const {
    return LoadYear(pass, stop);
}

void YearCalendar::Stop(const Period& period) { calendar_.SlotOf(period.date.year).RaiseStop(); }

bool YearCalendar::IsReady(const Period& period) const {
    const YearView& slot = calendar_.SlotOf(period.date.year);
    std::lock_guard lock(slot.mutex);
    return slot.year == period.date.year && (slot.ready || slot.loading);
}

void YearCalendar::Paint(Canvas& canvas, const Period& period, Size client, double scale, Decode decode) {
    calendar_.objectsDrawn = PaintYear(calendar_, canvas, period.date.year, client, scale, decode);
}

WalkEnd YearCalendar::DrawObjects() { return WalkEnd::Stopped; }

void YearCalendar::Beat(const Period& period) { RedrawYear(calendar_, period.date.year); }

void YearCalendar::RedrawCell(const CalendarDate& day) {
    if (HasDayCells())
        DrawCellOnWindow(calendar_, day.year, day.month, day.day);
    else
        DrawMonthPictureOnWindow(calendar_, day.year, day.month);
}

void YearCalendar::MakeStep(Step step) {
    switch (step) {
        case Step::OuterNext:
            return StepYears(2);
        case Step::Next:
            return StepYears(1);
        case Step::Previous:
            return StepYears(-1);
        case Step::OuterPrevious:
            return StepYears(-2);
    }
}

int YearCalendar::BeatsToShow(const Period& period) const {
    return TheDateTree().CountOf(period.date.year, 0, 0).value_or(0) / 10;
}

std::optional<CalendarDate> YearCalendar::RandomDate(const Period& period) const {
    const auto picked = TheDateTree().Pick(kYearLevel);
    if (!picked || picked->year < 1) return std::nullopt;
    return CalendarDate{picked->year, period.date.month, period.date.day};
}

ViewHit YearCalendar::HitTest(const Period& period, Point point, Size client) const {
    ViewHit hit;
    const int year = period.date.year;
    const bool days = State().settings.CalendarMode != 0;
    if (const YearHit found = YearHitTest(year, client.width, days, point); found.month >= 1) {
        hit.part = ViewHit::Part::Object;
        hit.hasObject = true;
        hit.date = {year, found.month, days ? found.day : 0};
        const Rect area = YearMonthRect(client.width, found.month);
        if (days) {
            hit.area = MonthCellRect(MakeMonthGrid(year, found.month, area, true), found.day);
            FillFromCell(calendar_, hit.date, &hit);
        } else {
            hit.area = area;
            const int day = calendar_.MonthOf(year, found.month).ready
                                ? RepresentativeDay(calendar_, year, found.month)
                                : 0;
            if (day > 0) FillFromCell(calendar_, {year, found.month, day}, &hit);
        }
    }
    if (const int month = MonthPictureHitTest(client.width, point); month > 0) {
        hit.part = ViewHit::Part::MonthHeading;
        hit.date = {year, month, 0};
    }
    return hit;
}

std::optional<CalendarDate> YearCalendar::DayUnder(const Period& period, Point point, Size client) const {
    if (!HasDayCells()) return std::nullopt;
    const YearHit hit = YearHitTest(period.date.year, client.width, true, point);
    if (hit.day < 1) return std::nullopt;
    return CalendarDate{period.date.year, hit.month, hit.day};
}

bool YearCalendar::HasDayCells() const { return State().settings.CalendarMode != 0; }

std::optional<MonthGrid> YearCalendar::GridOf(const Period& period, int year, int month, Size client) const {
    if (year != period.date.year) return std::nullopt;
    return MakeMonthGrid(year, month, YearMonthRect(client.width, month), true);
}

std::optional<DropTarget> YearCalendar::TargetOfDrop(const Period& period, Point point, Size client) const {
    if (!IsInWindow(point, client)) return std::nullopt;
    const int year = period.date.year;
    if (!IsOnAMonth(point, client.width)) return DropTarget{{year, 0, 0}, true};
    if (!HasDayCells()) return std::nullopt;
    if (const auto day = DayUnder(period, point, client)) return DropTarget{*day, false};
    // Beside the days of a month: its background, as far as the year view can set one.
    const YearHit month = YearHitTest(year, client.width, false, point);
    if (month.month < 1) return std::nullopt;
    return DropTarget{{year, month.month, 0}, true};
}

}  // namespace kalmora
