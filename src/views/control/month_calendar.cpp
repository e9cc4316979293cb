#include "views/control/month_calendar.h"

#include <algorithm>

#include "base/format.h"
#include "base/log.h"
#include "store/data_folder.h"
#include "store/date_tree.h"
#include "views/control/navigation.h"
#include "views/load/scan_backgrounds.h"
#include "views/load/viewer_load.h"
#include "views/model/calendar_geometry.h"
#include "views/model/calendar_store.h"
#include "views/model/cell_content.h"
#include "views/paint/paint_on_window.h"
#include "views/paint/paint_period.h"

namespace kalmora {

namespace {

constexpr int kNumberFrom = 10, kNumberTo = 30;  // the day number's square in a cell

bool IsOnDayNumber(const Rect& cell, Point point) {
    const int dx = point.x - cell.x, dy = point.y - cell.y;
    return dx >= kNumberFrom && dx <= kNumberTo && dy >= kNumberFrom && dy <= kNumberTo;
}

MonthGrid WholeGrid(const CalendarDate& date, Size client) {
    return MakeMonthGrid(date.year, date.month, {0, 0, client.width, client.height}, false);
}

}  // namespace

void MonthCalendar::Announce(const Period& period) {
    const CalendarDate& date = period.date;
    calendar_.partners.navigation.OnNavigation(Format("(Month)\t%04d/%02d", date.year, date.month));
}

std::string MonthCalendar::NameOfLoad(const Period& period) const {
    return Format("UpdateObjects: [%d/%02d]", period.date.year, period.date.month);
}

void MonthCalendar::PrepareLoad(const Period& period) { ClearGrid(calendar_, period); }

bool MonthCalendar::Load(const LoadRequest& request, const StopToken& stop) {
    return LoadGrid(calendar_, request, *this, stop);
}

void MonthCalendar::Reload(const LoadRequest& request, const StopToken& stop) {
    const CalendarDate& date = request.view.period.date;
    Log("Reload (%d/%d)", date.year, date.month);
    ClearGrid(calendar_, request.view.period);
    LoadMonth({calendar_, request.view, MainRoot(), {false, false, false}}, date.month, stop);
}

void MonthCalendar::Gather(const LoadRequest& request, const StopToken& stop, ObjectList& list) {
    ForEachRoot([&](const std::string& root) {
        GatherMonth(calendar_, root, request.view.period.date.month, request, stop, list);
    });
}

void MonthCalendar::FindBackgrounds(const std::string& root, const Period& period,
                                    const StopToken& stop) const {
    ScanBackgrounds(calendar_, root, period.date.year, period.date.month, stop);
}

bool MonthCalendar::LoadFolders(const LoadPass& pass, const StopToken& stop) const {
    return LoadMonth(pass, pass.view.period.date.month, stop);
}

void MonthCalendar::Stop(const Period& period) {
    calendar_.MonthOf(period.date.year, period.date.month).RaiseStop();
}

bool MonthCalendar::IsReady(const Period& period) const {
    const YearView& slot = calendar_.SlotOf(period.date.year);
    std::lock_guard lock(slot.mutex);
    return slot.year == period.date.year && calendar_.MonthOf(period.date.year, period.date.month).ready;
}

void MonthCalendar::Paint(Canvas& canvas, const Period& period, Size client, double scale, Decode decode) {
    calendar_.objectsDrawn =
        PaintMonth(calendar_, canvas, period.date.year, period.date.month, client, scale, decode);
}

WalkEnd MonthCalendar::DrawObjects() { return WalkEnd::Stopped; }

void MonthCalendar::Beat(const Period& period) {
    DrawMonthStep(calendar_, period.date.year, period.date.month);
}

void MonthCalendar::RedrawCell(const CalendarDate& day) {
    DrawCellOnWindow(calendar_, day.year, day.month, day.day);
}

void MonthCalendar::MakeStep(Step step) {
    switch (step) {
        case Step::OuterNext:
            return StepYears(1);
        case Step::Next:
            return NextMonth(calendar_);
        case Step::Previous:
            return PrevMonth(calendar_);
        case Step::OuterPrevious:
            return StepYears(-1);
    }
}

int MonthCalendar::BeatsToShow(const Period& period) const {
    const int objects = TheDateTree().CountOf(period.date.year, period.date.month, 0).value_or(0);
    return std::max(10, objects / 10);
}

std::optional<CalendarDate> MonthCalendar::RandomDate(const Period& period) const {
    const auto picked = TheDateTree().Pick(kMonthLevel);
    if (!picked || picked->year < 1 || picked->month < 1) return std::nullopt;
    return CalendarDate{picked->year, picked->month, period.date.day};
}

ViewHit MonthCalendar::HitTest(const Period& period, Point point, Size client) const {
    ViewHit hit;
    const MonthGrid grid = WholeGrid(period.date, client);
    const int day = MonthHitTest(grid, point);
    if (day < 1) return hit;
    hit.date = {period.date.year, period.date.month, day};
    hit.area = MonthCellRect(grid, day);
    hit.part = IsOnDayNumber(hit.area, point) ? ViewHit::Part::DayNumber : ViewHit::Part::Object;
    hit.hasObject = hit.picksDay = true;
    const CellContent content = ContentOfCell(calendar_, hit.date.year, hit.date.month, day);
    if (content.count == 0) return hit;
    hit.path = content.entry.path;
    hit.kind = content.entry.kind;
    return hit;
}

std::optional<CalendarDate> MonthCalendar::DayUnder(const Period& period, Point point, Size client) const {
    const int day = MonthHitTest(WholeGrid(period.date, client), point);
    if (day < 1) return std::nullopt;
    return CalendarDate{period.date.year, period.date.month, day};
}

bool MonthCalendar::HasDayCells() const { return true; }

std::optional<MonthGrid> MonthCalendar::GridOf(const Period& period, int year, int month, Size client) const {
    if (year != period.date.year || month != period.date.month) return std::nullopt;
    return WholeGrid(period.date, client);
}

std::optional<DropTarget> MonthCalendar::TargetOfDrop(const Period& period, Point point, Size client) const {
    if (!IsInWindow(point, client)) return std::nullopt;
    if (const auto day = DayUnder(period, point, client)) return DropTarget{*day, false};
    return DropTarget{{period.date.year, period.date.month, 0}, true};
}

}  // namespace kalmora
