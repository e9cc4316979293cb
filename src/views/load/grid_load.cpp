#include "views/load/grid_load.h"

#include "state/app_state.h"
#include "store/data_folder.h"
#include "views/bar/button_bar.h"
#include "views/load/search_view.h"
#include "views/model/calendar_store.h"
#include "views/paint/paint_view.h"

namespace kalmora {

void ClearGrid(CalendarStore& calendar, const Period& period) {
    YearView& slot = calendar.SlotOf(period.date.year);
    bool otherYear;
    {
        std::lock_guard lock(slot.mutex);
        otherYear = slot.year != period.date.year;
        slot.year = period.date.year;
    }
    if (period.level != Level::Month || otherYear) {
        slot.Clear();
        return;
    }
    slot.stop = false;
    slot.ready = false;  // one of its months is about to change
    std::lock_guard lock(slot.mutex);
    calendar.MonthOf(period.date.year, period.date.month).Clear();
}

bool LoadGrid(CalendarStore& calendar, const LoadRequest& request, const GridWork& work,
              const StopToken& stop) {
    AppState& state = State();
    SetCaption();
    const std::string root = MainRoot();
    work.FindBackgrounds(root, request.view.period, stop);
    if (stop.IsStopped()) return false;
    CheckMusic(calendar, work.AtOldMusic());
    PaintView(calendar, Decode::Now);
    RunSearch(request, stop);
    if (stop.IsStopped()) return false;

    const auto load = [&](const std::string& folder, bool whileLoading) {
        // Without drawing while loading, each month of a year still appears when it is complete.
        const LoadDrawing drawing{whileLoading, whileLoading || !State().settings.DrawWhileLoading};
        return work.LoadFolders({calendar, request.view, folder, drawing}, stop);
    };
    if (!load(root, state.settings.DrawWhileLoading)) return false;
    state.run.FirstLoadDone = 1;
    const std::string other = OtherRoot();
    return other.empty() || load(other, false);
}

}  // namespace kalmora
