#include "views/load/object_loader.h"

#include <cstdio>
#include <memory>
#include <string>
#include <utility>

#include "base/dates.h"
#include "base/format.h"
#include "base/log.h"
#include "platform/files.h"
#include "platform/image.h"
#include "state/app_state.h"
#include "store/data_folder.h"
#include "views/bar/button_bar.h"
#include "views/load/day_listing.h"
#include "views/load/month_loader.h"
#include "views/load/scan_backgrounds.h"
#include "views/load/search_view.h"
#include "views/model/calendar_store.h"
#include "views/paint/missing_folder.h"
#include "views/paint/paint_view.h"
#include "views/paint/progress_stripe.h"

namespace kalmora {

namespace {

std::string UpdateName(const Period& period) {
    const CalendarDate& date = period.date;
    if (period.level == Level::Year) return Format("UpdateObjects: [%d]", date.year);
    if (period.level == Level::Month) return Format("UpdateObjects: [%d/%02d]", date.year, date.month);
    return "UpdateObjects";
}

std::string NavigationLine(const Period& period) {
    const auto& [year, month, day] = period.date;
    if (period.level == Level::Year) return Format("(Year)\t%04d", year);
    if (period.level == Level::Month) return Format("(Month)\t%04d/%02d", year, month);
    return Format("(Day)\t%04d/%02d/%02d", year, month, day);
}

StopTest StopTestOf(std::uint32_t number) {
    return [number] { return State().run.ObjectGate.IsStopRequested() || Calendar().loadNumber != number; };
}

void ClearGrid(const Period& period) {
    YearView& slot = Calendar().SlotOf(period.date.year);
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
    Calendar().MonthOf(period.date.year, period.date.month).Clear();
}

void StartGridLoad(const LoadRequest& request) {
    AppState& state = State();
    ClearGrid(request.view.period);
    state.run.TicksInView = 0;
    images::CancelPrefetch();
    const TicketLock::Ticket ticket = state.run.LoaderQueue.Lock(10, 100);
    if (ticket == TicketLock::kRefused) return state.run.ObjectGate.Release();
    // The gate goes over to the worker without being opened in between: a command that comes now finds it
    // held and asks the worker to leave, instead of slipping in ahead of it.
    const bool started = Calendar().StartObjectLoader([request, ticket] {
        ObjectLoader(request);
        State().run.LoaderQueue.Unlock(ticket);
    });
    if (started) return;
    state.run.LoaderQueue.Unlock(ticket);
    state.run.ObjectGate.Release();
}

void AddListing(DayListing listing, ObjectList& list) {
    for (const DayEntry& entry : TakeListing(std::move(listing)))
        list.Add(std::make_unique<CPhoto>(entry.path));
}

void FillDay(const std::string& root, int year, int month, int day, const StopTest& stopped,
             ObjectList& list) {
    if (month < 1 || day < 1) return;  // a jump may name any; the folder would be a month's or a year's
    AddListing(ListDayFolder(MakeDayFolderPath(root, year, month, day), stopped), list);
}

void FillMonth(const std::string& root, int year, int month, const StopTest& stopped, ObjectList& list) {
    for (int day = 1; day <= DaysInMonth(year, month) && !stopped(); ++day)
        FillDay(root, year, month, day, stopped, list);
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

void LoadDayViewer(const LoadRequest& request, const StopTest& loadStopped) {
    DayViewer& viewer = FreshViewer(&CalendarStore::CurrentDayViewer, &CalendarStore::AdvanceDayRing);
    const StopTest stopped = [&] { return loadStopped() || viewer.stop; };
    viewer.year = request.view.period.date.year;
    viewer.month = request.view.period.date.month;
    viewer.day = request.view.period.date.day;
    FillDay(MainRoot(), request.view.period.date.year, request.view.period.date.month,
            request.view.period.date.day, stopped, viewer.objects);
    if (const std::string other = OtherRoot(); !other.empty())
        FillDay(other, request.view.period.date.year, request.view.period.date.month,
                request.view.period.date.day, stopped, viewer.objects);
    if (TicketGuard guard(viewer.queue, 1, 100); guard) viewer.objects.RotateRandomly();
}

void LoadAllViewer(const LoadRequest& request, const StopTest& loadStopped) {
    AllViewer& viewer = FreshViewer(&CalendarStore::CurrentAllViewer, &CalendarStore::AdvanceAllRing);
    const StopTest stopped = [&] { return loadStopped() || viewer.stop; };
    const auto fill = [&](const std::string& root) {
        if (request.view.period.level == Level::Day)
            FillDay(root, request.view.period.date.year, request.view.period.date.month,
                    request.view.period.date.day, stopped, viewer.objects);
        if (request.view.period.level == Level::Month)
            FillMonth(root, request.view.period.date.year, request.view.period.date.month, stopped,
                      viewer.objects);
        if (request.view.period.level != Level::Year) return;
        for (int month = 1; month <= 12 && !stopped(); ++month) {
            ProgressStripe(month / 12.0);  // a sign of life: a year may be a hundred thousand files
            FillMonth(root, request.view.period.date.year, month, stopped, viewer.objects);
        }
        ProgressStripe(kStripeFinished);
    };
    if (request.view.searchResult && request.view.searchAllLoaded) {
        // Whatever was found, whenever it is from.
        AddListing(ListFoundFiles({}, stopped), viewer.objects);
    } else {
        fill(MainRoot());
        // The second root has no part in a whole year's scatter; meant as it stands.
        if (const std::string other = OtherRoot(); !other.empty() && request.view.period.level != Level::Year)
            fill(other);
    }
    viewer.objects.RotateRandomly();
    if (viewer.objects.IsEmpty()) viewer.loaded = true;
}

}  // namespace

void CheckMusic(OldMusic oldMusic) {
    const ViewPartners& partners = Calendar().partners;
    BackgroundSet& backgrounds = Calendar().backgrounds;
    if (backgrounds.HasMusic(partners.music.Current())) return;
    backgrounds.PickRandomMusic();
    if (oldMusic == OldMusic::Pause)
        partners.music.Pause();
    else
        partners.music.Stop();
    const std::string next = backgrounds.CurrentMusic();
    if (State().settings.SoundMode && !next.empty()) partners.music.Play(next);
}

void UpdateObjects() {
    AppState& state = State();
    const ViewPartners& partners = Calendar().partners;
    if (!state.settings.SlideShowAutoNavigate) partners.slideShow.Hide();
    SetButtonStates();
    const Period period = View().period;
    partners.navigation.OnNavigation(NavigationLine(period));
    if (period.level == Level::Day) state.run.TicksInView = 0;

    LookForDataFolder();

    if (!state.run.ObjectGate.Acquire(UpdateName(period).c_str())) return;
    LoadRequest request{View(), ++Calendar().loadNumber};
    const StopTest stopped = StopTestOf(request.number);
    const auto leave = [&] {
        state.run.ObjectGate.Release();
        return;
    };
    if (stopped()) return leave();
    // A search of all that is loaded is shown as a scatter, so it comes before the choice of the view.
    if (request.view.scatter || request.view.period.level == Level::Day || request.view.searchAllLoaded) {
        RunSearch(request, stopped);
        request.view.scatter = View().scatter;
    }
    if (stopped()) return leave();
    Calendar().backgrounds.Clear();
    if (stopped()) return leave();
    partners.slideShow.ClearSlides();
    if (stopped()) return leave();

    if (!request.view.scatter && request.view.period.level != Level::Day) return StartGridLoad(request);

    if (request.view.scatter)
        LoadAllViewer(request, stopped);
    else
        LoadDayViewer(request, stopped);
    if (stopped()) return leave();
    if (request.view.scatter) state.run.TicksInView = 0;
    CheckMusic(OldMusic::Stop);
    SetCaption();
    state.run.ObjectGate.Release();
    PaintView();
}

void ObjectLoader(const LoadRequest& request) {
    AppState& state = State();
    CalendarStore& calendar = Calendar();
    const StopTest stopped = StopTestOf(request.number);
    const auto run = [&] {
        if (stopped()) return false;
        calendar.backgrounds.Clear();
        if (stopped()) return false;
        Calendar().partners.slideShow.ClearSlides();
        SetCaption();
        const std::string root = MainRoot();
        ScanBackgrounds(root, request.view.period.date.year,
                        request.view.period.level == Level::Month ? request.view.period.date.month : 0,
                        stopped);
        for (int month = 1; request.view.period.level == Level::Year && month <= 12 && !stopped(); ++month)
            ScanBackgrounds(root, request.view.period.date.year, month, stopped);
        if (stopped()) return false;
        CheckMusic(request.view.period.level == Level::Month ? OldMusic::Pause : OldMusic::Stop);
        PaintView();
        RunSearch(request, stopped);
        if (stopped()) return false;

        const auto load = [&](const std::string& folder, bool whileLoading) {
            // Without drawing while loading, each month of a year still appears when it is complete.
            const LoadDrawing drawing{request.view.period.level, whileLoading,
                                      whileLoading || !State().settings.DrawWhileLoading};
            return request.view.period.level == Level::Month
                       ? LoadMonth(folder, request.view.period.date.year, request.view.period.date.month,
                                   stopped, drawing)
                       : LoadYear(folder, request.view.period.date.year, stopped, drawing);
        };
        if (!load(root, state.settings.DrawWhileLoading)) return false;
        state.run.FirstLoadDone = 1;
        if (const std::string other = OtherRoot(); !other.empty() && !load(other, false)) return false;
        if (state.settings.SlideShowAutoNavigate && Calendar().partners.slideShow.IsShown())
            Calendar().partners.slideShow.TakeNewSlides();
        // The grid once more, whole and off the screen: what a resize or the second root changed meanwhile.
        PaintView();
        return true;
    };
    const bool whole = run();
    // A newer load that waited in vain has gone on with a gate of its own: that one is not ours to open.
    if (calendar.loadNumber == request.number) state.run.ObjectGate.Release();
    if (whole) Calendar().partners.observer.OnWholeView();
}

void ReloadView() {
    AppState& state = State();
    if (View().scatter || !state.run.ObjectGate.Acquire("Reload")) return;
    const LoadRequest request{View(), ++Calendar().loadNumber};
    const Period& period = request.view.period;
    const auto& [year, month, day] = period.date;
    const StopTest stopped = StopTestOf(request.number);
    const LoadDrawing quiet{period.level, false, false, false};
    RunSearch(request, stopped);
    switch (period.level) {
        case Level::Year:
            ClearGrid(period);
            LoadYear(MainRoot(), year, stopped, quiet);
            break;
        case Level::Month:
            Log("Reload (%d/%d)", year, month);
            ClearGrid(period);
            LoadMonth(MainRoot(), year, month, stopped, quiet);
            break;
        case Level::Day: {
            // Reads the day's cell of the grid, not the viewer that is shown; meant as it stands.
            Log("Reload (%d/%d/%d)", year, month, day);
            if (day < 1 || day > 31) break;
            {
                std::lock_guard lock(Calendar().SlotOf(year).mutex);
                Calendar().MonthOf(year, month).days[static_cast<std::size_t>(day - 1)].Clear();
            }
            LoadDayCell(MainRoot(), year, month, day, stopped);
            break;
        }
    }
    state.run.ObjectGate.Release();
    if (Window* window = MainWindow()) window->Invalidate();
}

}  // namespace kalmora
