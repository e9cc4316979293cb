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

void FillDay(const std::string& root, int year, int month, int day, const StopToken& stop, ObjectList& list) {
    if (month < 1 || day < 1) return;  // a jump may name any; the folder would be a month's or a year's
    AddListing(ListDayFolder(MakeDayFolderPath(root, year, month, day), stop), list);
}

void FillMonth(const std::string& root, int year, int month, const StopToken& stop, ObjectList& list) {
    for (int day = 1; day <= DaysInMonth(year, month) && !stop.IsStopped(); ++day)
        FillDay(root, year, month, day, stop, list);
}

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
    FillDay(MainRoot(), request.view.period.date.year, request.view.period.date.month,
            request.view.period.date.day, stop, viewer.objects);
    if (const std::string other = OtherRoot(); !other.empty())
        FillDay(other, request.view.period.date.year, request.view.period.date.month,
                request.view.period.date.day, stop, viewer.objects);
    if (TicketGuard guard(viewer.queue, 1, 100); guard) viewer.objects.RotateRandomly();
}

void LoadAllViewer(const LoadRequest& request, const StopToken& loadStop) {
    AllViewer& viewer = FreshViewer(&CalendarStore::CurrentAllViewer, &CalendarStore::AdvanceAllRing);
    const StopToken stop = StopToken::AnyOf({loadStop, StopToken(viewer.stop)});
    const auto fill = [&](const std::string& root) {
        if (request.view.period.level == Level::Day)
            FillDay(root, request.view.period.date.year, request.view.period.date.month,
                    request.view.period.date.day, stop, viewer.objects);
        if (request.view.period.level == Level::Month)
            FillMonth(root, request.view.period.date.year, request.view.period.date.month, stop,
                      viewer.objects);
        if (request.view.period.level != Level::Year) return;
        for (int month = 1; month <= 12 && !stop.IsStopped(); ++month) {
            ProgressStripe(month / 12.0);  // progress: a year may be a hundred thousand files
            FillMonth(root, request.view.period.date.year, month, stop, viewer.objects);
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
