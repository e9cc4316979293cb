#include "views/load/month_loader.h"

#include <vector>

#include "base/dates.h"
#include "base/random.h"
#include "pictures/picture_cache.h"
#include "pictures/picture_painter.h"
#include "platform/files.h"
#include "state/app_state.h"
#include "store/data_folder.h"
#include "views/load/day_listing.h"
#include "views/model/calendar_geometry.h"
#include "views/model/calendar_store.h"
#include "views/model/cell_content.h"
#include "views/model/pause.h"
#include "views/paint/paint_cell.h"
#include "views/paint/paint_on_window.h"
#include "views/paint/progress_stripe.h"

namespace kalmora {

namespace {

// The logical size of a day cell's picture in the window as it is now; empty without a window.
Size CurrentCellSize(CalendarStore& calendar, const ViewState& view, int month) {
    const Size client = ClientSize();
    if (client.IsEmpty()) return {};
    const auto grid = calendar.ViewOf(view).GridOf(view.period, view.period.date.year, month, client);
    if (!grid) return {};
    if (grid->isOfYear && !State().settings.CalendarMode) return {grid->area.width, grid->area.height};
    return {grid->cellWidth, grid->cellHeight};
}

// Lets the seam begin to decode the picture of a cell, so that it is there when the cell's turn comes.
void BeginCellPicture(CalendarStore& calendar, const ViewState& view, int month, int day) {
    const Size size = CurrentCellSize(calendar, view, month);
    if (size.IsEmpty()) return;
    const CellContent content = ContentOfCell(calendar, view.period.date.year, month, day);
    const std::string picture =
        content.count > 0 ? PictureFileOf(content.entry.path, content.entry.kind) : std::string();
    if (!picture.empty()) Pictures().Prefetch(picture, BoxPixels(size, ClientScale()));
}

// Starts at a random entry and skips on to one that may be shown; the start when none may.
std::size_t PickRepresentative(const std::vector<DayEntry>& objects) {
    const std::size_t count = objects.size();
    if (count == 0) return 0;
    const std::size_t start = static_cast<std::size_t>(Random()) % count;
    if (!State().settings.GoodMode && !State().settings.PublicMode) return start;
    for (std::size_t step = 0; step < count; ++step)
        if (IsEntryShown(objects[(start + step) % count])) return (start + step) % count;
    return start;
}

// Draws loaded days in their order, but never waits for a picture while days are left to be read.
class LaggingDrawer {
public:
    LaggingDrawer(CalendarStore& calendar, int year, int month, const StopToken& stop)
        : calendar_(calendar), year_(year), month_(month), stop_(stop) {}

    void DrawThrough(int day, bool wait) {
        for (; next_ <= day && !stop_.IsStopped(); ++next_) {
            if (!wait && !IsCellPictureCached(calendar_, year_, month_, next_)) return;
            DrawCellOnWindow(calendar_, year_, month_, next_);
        }
    }

private:
    CalendarStore& calendar_;
    int year_, month_;
    const StopToken stop_;
    int next_ = 1;
};

bool LoadMonthDays(const LoadPass& pass, int month, const StopToken& stop) {
    CalendarStore& calendar = pass.calendar;
    const auto& [level, date] = pass.view.period;
    const int year = date.year;
    const bool drawsCells = pass.drawing.whileLoading && level == Level::Month;
    MonthView& view = calendar.MonthOf(year, month);
    const StopToken monthStop = StopToken::AnyOf({stop, StopToken(view.stop)});
    const int days = DaysInMonth(year, month);
    LaggingDrawer drawer(calendar, year, month, stop);
    for (int day = 1; day <= days; ++day) {
        if (monthStop.IsStopped() || (pass.drawing.waitsWhilePaused && !WaitWhilePaused(monthStop)))
            return false;
        if (!LoadDayCell(pass, month, day, stop)) return false;
        BeginCellPicture(calendar, pass.view, month, day);
        if (!pass.drawing.whileLoading) continue;
        if (drawsCells) {
            ProgressStripe(static_cast<double>(day) / days);
            drawer.DrawThrough(day, false);
        } else {
            ProgressStripe((day - 30 + month * 30) / 365.0);
        }
    }
    if (drawsCells) drawer.DrawThrough(days, true);
    return !monthStop.IsStopped();
}

}  // namespace

bool LoadDayCell(const LoadPass& pass, int month, int day, const StopToken& stop) {
    CalendarStore& calendar = pass.calendar;
    const int year = pass.view.period.date.year;
    YearView& slot = calendar.SlotOf(year);
    DayCell& cell = calendar.MonthOf(year, month).days[static_cast<std::size_t>(day - 1)];
    const StopToken cellStop = StopToken::AnyOf({stop, StopToken(cell.stop)});
    if (cellStop.IsStopped()) return false;
    const std::string folder = MakeDayFolderPath(pass.root, year, month, day);

    const std::vector<DayEntry> found = TakeListing(calendar, ListDayFolder(folder, pass.view, cellStop));
    if (cellStop.IsStopped()) return false;

    std::vector<DayEntry> all;
    {
        std::lock_guard lock(slot.mutex);
        // Tested again under the lock: a newer load empties the slot under it.
        if (cellStop.IsStopped()) return false;
        cell.folder = folder;
        cell.year = year;
        cell.month = month;
        cell.day = day;
        cell.active = true;
        cell.objects.insert(cell.objects.end(), found.begin(), found.end());
        all = cell.objects;
    }
    const std::size_t representative = PickRepresentative(all);
    std::lock_guard lock(slot.mutex);
    cell.PhotoIndex = representative < cell.objects.size() ? representative : 0;
    return true;
}

bool LoadMonth(const LoadPass& pass, int month, const StopToken& stop) {
    const auto& [level, date] = pass.view.period;
    const int year = date.year;
    if (month < 1 || month > 12) return false;  // a jump may name any; its folder would be the year's
    YearView& slot = pass.calendar.SlotOf(year);
    MonthView& view = pass.calendar.MonthOf(year, month);
    {
        std::lock_guard lock(slot.mutex);
        slot.year = year;
        view.year = year;
        view.month = month;
    }
    view.ready = false;
    view.loading = true;
    view.active = true;
    if (level == Level::Month || month == 1) ProgressStripe(0);

    const bool whole = LoadMonthDays(pass, month, stop);
    if (whole) {
        if (level == Level::Month || month == 12) ProgressStripe(kStripeFinished);
        std::lock_guard lock(slot.mutex);
        view.DayCursor = Random() % DaysInMonth(year, month) + 1;
        const int count = view.ObjectCount();
        view.PhotoCursor = count > 0 ? Random() % count : 0;
        view.ready = true;
    }
    if (!stop.IsStopped()) view.loading = false;
    return whole;
}

bool LoadYear(const LoadPass& pass, const StopToken& stop) {
    const int year = pass.view.period.date.year;
    YearView& slot = pass.calendar.SlotOf(year);
    slot.loading = true;
    slot.active = true;
    const StopToken yearStop = StopToken::AnyOf({stop, StopToken(slot.stop)});
    bool whole = true;
    for (int month = 1; month <= 12 && whole; ++month) {
        whole = !yearStop.IsStopped() && LoadMonth(pass, month, yearStop);
        // One month behind the reading, so that the pictures of this one are decoded meanwhile.
        if (whole && pass.drawing.months && month > 1) DrawMonthOnWindow(pass.calendar, year, month - 1);
    }
    if (whole && pass.drawing.months) DrawMonthOnWindow(pass.calendar, year, 12);
    if (whole) slot.ready = true;
    if (!stop.IsStopped()) slot.loading = false;
    return whole;
}

}  // namespace kalmora
