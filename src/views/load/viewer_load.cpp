#include "views/load/viewer_load.h"

#include <memory>
#include <string>
#include <utility>

#include "base/dates.h"
#include "state/app_state.h"
#include "store/data_folder.h"
#include "views/bar/button_bar.h"
#include "views/load/check_music.h"
#include "views/load/day_listing.h"
#include "views/model/calendar_store.h"

namespace kalmora {

namespace {

// Nothing when stopped: the viewer may be another load's by now.
void AddListing(CalendarStore& calendar, DayListing listing, const StopToken& stop, ObjectList& list) {
    if (stop.IsStopped()) return;
    for (const DayEntry& entry : TakeListing(calendar, std::move(listing)))
        list.Add(std::make_unique<CPhoto>(entry.path));
}

// A viewer of the ring that nobody draws in any more, emptied. One that a redraw does not let go is passed
// over.
template <typename Viewer>
Viewer& FreshViewer(CalendarStore& calendar, Viewer& (CalendarStore::*current)(),
                    void (CalendarStore::*advance)()) {
    for (int attempt = 0; attempt < kRingSize; ++attempt) {
        Viewer& viewer = (calendar.*current)();
        if (TicketGuard guard(viewer.queue, 5, 100); guard) {
            viewer.Clear();
            return viewer;
        }
        viewer.stop = true;
        (calendar.*advance)();
    }
    return (calendar.*current)();
}

bool EndLoad(CalendarStore& calendar, const StopToken& stop) {
    if (stop.IsStopped()) return false;
    CheckMusic(calendar, OldMusic::Stop);
    SetCaption();
    return true;
}

}  // namespace

void GatherDay(CalendarStore& calendar, const std::string& root, const CalendarDate& day,
               const LoadRequest& request, const StopToken& stop, ObjectList& list) {
    if (day.month < 1 || day.day < 1) return;  // a jump may name any; the folder would be a month's
    const std::string folder = MakeDayFolderPath(root, day.year, day.month, day.day);
    AddListing(calendar, ListDayFolder(folder, request.view, stop), stop, list);
}

void GatherMonth(CalendarStore& calendar, const std::string& root, int month, const LoadRequest& request,
                 const StopToken& stop, ObjectList& list) {
    const int year = request.view.period.date.year;
    for (int day = 1; day <= DaysInMonth(year, month) && !stop.IsStopped(); ++day)
        GatherDay(calendar, root, {year, month, day}, request, stop, list);
}

bool LoadDayViewer(CalendarStore& calendar, const LoadRequest& request, const StopToken& loadStop) {
    DayViewer& viewer =
        FreshViewer(calendar, &CalendarStore::CurrentDayViewer, &CalendarStore::AdvanceDayRing);
    const StopToken stop = StopToken::AnyOf({loadStop, StopToken(viewer.stop)});
    viewer.year = request.view.period.date.year;
    viewer.month = request.view.period.date.month;
    viewer.day = request.view.period.date.day;
    calendar.ViewOf(request.view.period.level).Gather(request, stop, viewer.objects);
    if (TicketGuard guard(viewer.queue, 1, 100); guard) viewer.objects.RotateRandomly();
    return EndLoad(calendar, loadStop);
}

bool LoadAllViewer(CalendarStore& calendar, const LoadRequest& request, const StopToken& loadStop) {
    AllViewer& viewer =
        FreshViewer(calendar, &CalendarStore::CurrentAllViewer, &CalendarStore::AdvanceAllRing);
    const StopToken stop = StopToken::AnyOf({loadStop, StopToken(viewer.stop)});
    if (request.view.searchResult && request.view.searchAllLoaded) {
        // All that was found, of every date.
        AddListing(calendar, ListFoundFiles({}, stop), stop, viewer.objects);
    } else {
        calendar.ViewOf(request.view.period.level).Gather(request, stop, viewer.objects);
    }
    viewer.objects.RotateRandomly();
    if (viewer.objects.IsEmpty()) viewer.loaded = true;
    return EndLoad(calendar, loadStop);
}

}  // namespace kalmora
