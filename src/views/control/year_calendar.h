// The year: twelve months, as grids of days or (CalendarMode 0) as one picture each.
#pragma once

#include "views/load/grid_load.h"
#include "views/model/calendar_view.h"

namespace kalmora {

class YearCalendar : public CalendarView, private GridWork {
public:
    using CalendarView::CalendarView;

    void Announce(const Period& period) override;
    std::string NameOfLoad(const Period& period) const override;
    void PrepareLoad(const Period& period) override;
    bool Load(const LoadRequest& request, const StopToken& stop) override;
    void Reload(const LoadRequest& request, const StopToken& stop) override;
    void Gather(const LoadRequest& request, const StopToken& stop, ObjectList& list) override;
    void Stop(const Period& period) override;
    bool IsReady(const Period& period) const override;

    void Paint(Canvas& canvas, const Period& period, Size client, double scale, Decode decode) override;
    WalkEnd DrawObjects() override;
    void Beat(const Period& period) override;
    void RedrawCell(const CalendarDate& day) override;

    void MakeStep(Step step) override;
    int BeatsToShow(const Period& period) const override;
    std::optional<CalendarDate> RandomDate(const Period& period) const override;

    ViewHit HitTest(const Period& period, Point point, Size client) const override;
    std::optional<CalendarDate> DayUnder(const Period& period, Point point, Size client) const override;
    bool HasDayCells() const override;
    std::optional<MonthGrid> GridOf(const Period& period, int year, int month, Size client) const override;
    std::optional<DropTarget> TargetOfDrop(const Period& period, Point point, Size client) const override;

private:
    void FindBackgrounds(const std::string& root, const Period& period, const StopToken& stop) const override;
    OldMusic AtOldMusic() const override { return OldMusic::Stop; }
    bool LoadFolders(const LoadPass& pass, const StopToken& stop) const override;
};

}  // namespace kalmora
