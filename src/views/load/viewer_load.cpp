#include "views/load/viewer_load.h"

#include <memory>
#include <string>
#include <utility>

#include "base/dates.h"
#include "state/app_state.h"
#include "store/data_folder.h"
#include "views/load/day_listing.h"
#include "views/model/calendar_store.h"
#include "views/paint/progress_stripe.h"

namespace kalmora {

namespace {

void AddListing(DayListing listing, ObjectList& list) {
    for (const DayEntry& entry : TakeListing(std::move(listing)))
        list.Add(std::make_unique<CPhoto>(entry.path));
}

// Fills the list from one data folder.
struct ListFiller {
    const ViewState& view;
    const std::string& root;
    const StopToken& stop;
    ObjectList& list;

    void Day(const CalendarDate& date) const {
        if (date.month < 1 || date.day < 1) return;  // a jump may name any; it would be a month's folder
        const std::string folder = MakeDayFolderPath(root, date.year, date.month, date.day);
        AddListing(ListDayFolder(folder, view, stop), list);
    }
    void Month(int year, int month) const {
        for (int day = 1; day <= DaysInMonth(year, month) && !stop.IsStopped(); ++day)
            Day({year, month, day});
    }
};

// A viewer of the ring that nobody draws in any more, emptied. One that a redraw does not let go is passed
// over.
template <typename Viewer>
Viewer& FreshViewer(Viewer& (CalendarStore::*current)(), void (CalendarStore::*advance)()) {
    CalendarStore& calendar = Calendar();
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

}  // namespace

void LoadDayViewer(const LoadRequest& request, const StopToken& loadStop) {
    DayViewer& viewer = FreshViewer(&CalendarStore::CurrentDayViewer, &CalendarStore::AdvanceDayRing);
    const StopToken stop = StopToken::AnyOf({loadStop, StopToken(viewer.stop)});
    viewer.year = request.view.period.date.year;
    viewer.month = request.view.period.date.month;
    viewer.day = request.view.period.date.day;
    ListFiller{request.view, MainRoot(), stop, viewer.objects}.Day(request.view.period.date);
    if (const std::string other = OtherRoot(); !other.empty())
        ListFiller{request.view, other, stop, viewer.objects}.Day(request.view.period.date);
    if (TicketGuard guard(viewer.queue, 1, 100); guard) viewer.objects.RotateRandomly();
}

void LoadAllViewer(const LoadRequest& request, const StopToken& loadStop) {
    AllViewer& viewer = FreshViewer(&CalendarStore::CurrentAllViewer, &CalendarStore::AdvanceAllRing);
    const StopToken stop = StopToken::AnyOf({loadStop, StopToken(viewer.stop)});
    const auto fill = [&](const std::string& root) {
        const ListFiller filler{request.view, root, stop, viewer.objects};
        const auto& [level, date] = request.view.period;
        if (level == Level::Day) filler.Day(date);
        if (level == Level::Month) filler.Month(date.year, date.month);
        if (level != Level::Year) return;
        for (int month = 1; month <= 12 && !stop.IsStopped(); ++month) {
            ProgressStripe(month / 12.0);  // progress: a year may be a hundred thousand files
            filler.Month(date.year, month);
        }
        ProgressStripe(kStripeFinished);
    };
    if (request.view.searchResult && request.view.searchAllLoaded) {
        // All that was found, of every date.
        AddListing(ListFoundFiles({}, stop), viewer.objects);
    } else {
        fill(MainRoot());
        // The second root has no part in a whole year's scatter, on purpose.
        if (const std::string other = OtherRoot(); !other.empty() && request.view.period.level != Level::Year)
            fill(other);
    }
    viewer.objects.RotateRandomly();
    if (viewer.objects.IsEmpty()) viewer.loaded = true;
}

}  // namespace kalmora
