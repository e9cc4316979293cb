// The day: its objects on the lines of the hours.
#pragma once

#include "views/model/calendar_view.h"

namespace kalmora {

class DayCalendar : public CalendarView {
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
    Viewer* CurrentViewer() const override;
    WalkEnd DrawObjects() override;
    void Beat(const Period& period) override;

    void MakeStep(Step step) override;
    void AdvanceRing() override;
    int BeatsToShow(const Period& period) const override;
    std::optional<CalendarDate> RandomDate(const Period& period) const override;

    ViewHit HitTest(const Period& period, Point point, Size client) const override;
    std::optional<CalendarDate> DayUnder(const Period& period, Point point, Size client) const override;
    bool HasDayCells() const override;
    std::optional<DropTarget> TargetOfDrop(const Period& period, Point point, Size client) const override;
};

}  // namespace kalmora
