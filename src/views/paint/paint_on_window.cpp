#include "views/paint/paint_on_window.h"

#include <algorithm>
#include <deque>
#include <mutex>
#include <optional>
#include <tuple>

#include "base/dates.h"
#include "base/worker.h"
#include "state/app_state.h"
#include "views/bar/button_bar.h"
#include "views/model/calendar_store.h"
#include "views/model/cell_content.h"
#include "views/paint/background.h"
#include "views/paint/paint_cell.h"
#include "views/paint/paint_month.h"

namespace kalmora {

namespace {

using CellName = std::tuple<int, int, int>;

// The one worker that draws cells later.
class CellRedraws {
public:
    void Add(const CellName& cell) {
        std::lock_guard lock(mutex_);
        if (std::find(waiting_.begin(), waiting_.end(), cell) != waiting_.end()) return;
        waiting_.push_back(cell);
        StartIfWanted();
    }

    void Pause() {
        std::lock_guard lock(mutex_);
        ++pauses_;
    }

    void Continue() {
        std::lock_guard lock(mutex_);
        --pauses_;
        StartIfWanted();
    }

    bool AreDone() {
        std::lock_guard lock(mutex_);
        return !running_ && waiting_.empty();
    }

private:
    // With the mutex held. A running worker leaves when it finds a pause; the pause's end starts another.
    void StartIfWanted() {
        if (running_ || pauses_ > 0 || waiting_.empty()) return;
        // It waits for the mutex first.
        const auto work = [this](const StopToken&) { Work(); };
        running_ = StartWorker("CellRedraws", Worker::Priority::Normal, work).IsStarted();
        if (!running_) waiting_.clear();
    }

    void Work() {
        for (;;) {
            CellName cell;
            {
                std::lock_guard lock(mutex_);
                if (waiting_.empty() || pauses_ > 0) {
                    running_ = false;
                    return;
                }
                cell = waiting_.front();
                waiting_.pop_front();
            }
            const auto& [year, month, day] = cell;
            Calendar().ViewOf(View()).RedrawCell({year, month, day});
        }
    }

    std::mutex mutex_;
    std::deque<CellName> waiting_;  // guarded by mutex_
    bool running_ = false;          // guarded by mutex_
    int pauses_ = 0;                // guarded by mutex_
};

CellRedraws& Redraws() {
    static CellRedraws* const redraws = new CellRedraws;
    return *redraws;
}

// In which the window shows this month now; nothing when it does not.
std::optional<MonthGrid> GridInView(const Window& window, int year, int month) {
    const ViewState view = View();
    return Calendar().ViewOf(view).GridOf(view.period, year, month, window.ClientSize());
}

void DrawCell(Window& window, const MonthGrid& grid, int day) {
    const PreparedPicture object = PrepareCellObject(
        grid.year, grid.month, day, {grid.cellWidth, grid.cellHeight}, window.Scale(), Decode::Now);
    // Where nothing can be drawn any more, what was there must not stay.
    if (object.look == PreparedPicture::Look::Nothing && ContentOfCell(grid.year, grid.month, day).count == 0)
        return;
    const BackgroundPtr background = PaintedBackground();
    if (GridInView(window, grid.year, grid.month) != grid) return;
    const auto canvas = window.Draw();
    if (!canvas || canvas->GetSize() != window.ClientSize()) return;
    const Rect cell = MonthCellRect(grid, day);
    DrawUnderButtons(*canvas, cell, [&](Canvas& target, Point origin) {
        const Rect place{cell.x - origin.x, cell.y - origin.y, cell.width, cell.height};
        // A picture of another shape leaves margins: what was there before must not show beside it.
        const Ground ground{background, origin};
        RestoreBackground(target, ground, {place.x + 1, place.y + 1, cell.width, cell.height});
        DrawDayCell(target, ground, place, day, grid.ColumnOf(day), grid.isOfYear, &object);
    });
}

}  // namespace

void RequestCellRedraw(int year, int month, int day) { Redraws().Add({year, month, day}); }

CellRedrawPause::CellRedrawPause() { Redraws().Pause(); }

CellRedrawPause::~CellRedrawPause() { Redraws().Continue(); }

bool AreCellRedrawsDone() { return Redraws().AreDone(); }

void DrawCellOnWindow(int year, int month, int day) {
    Window* window = MainWindow();
    if (!window) return;
    if (const auto grid = GridInView(*window, year, month)) DrawCell(*window, *grid, day);
}

void DrawMonthOnWindow(int year, int month) {
    Window* window = MainWindow();
    if (!window) return;
    if (!State().settings.CalendarMode) return DrawMonthPictureOnWindow(year, month);
    const auto grid = GridInView(*window, year, month);
    for (int day = 1; grid && day <= grid->days; ++day) {
        if (Calendar().MonthOf(year, month).stop) return;
        DrawCell(*window, *grid, day);
    }
}

void DrawMonthPictureOnWindow(int year, int month) {
    Window* window = MainWindow();
    if (!window) return;
    const auto grid = GridInView(*window, year, month);
    if (!grid || !grid->isOfYear) return;
    const Rect area = grid->area;
    // Into memory first: decoding must not happen while the window is held.
    const auto picture = Surface::Create({area.width, area.height}, window->Scale());
    if (!picture) return;
    const BackgroundPtr background = PaintedBackground();
    {
        const auto canvas = picture->Draw();
        RestoreBackground(*canvas, {background, {area.x, area.y}}, {0, 0, area.width, area.height});
        DrawMonthAsPicture(*canvas, year, month, {0, 0, area.width, area.height}, window->Scale(),
                           Decode::Now);
    }
    if (GridInView(*window, year, month) != grid) return;
    const auto canvas = window->Draw();
    if (!canvas) return;
    DrawUnderButtons(*canvas, area, [&](Canvas& target, Point origin) {
        target.Blit({area.x - origin.x, area.y - origin.y, area.width, area.height}, *picture);
    });
}

bool DrawMonthStep(int year, int month) {
    Window* window = MainWindow();
    if (!window) return false;
    YearView& slot = Calendar().SlotOf(year);
    MonthView& view = Calendar().MonthOf(year, month);
    int phase;
    {
        std::lock_guard lock(slot.mutex);
        if (slot.year != year) return false;
        phase = view.Phase = (view.Phase + 1) % 3;
    }
    const auto grid = GridInView(*window, year, month);
    if (!grid) return false;
    for (int day = 1; day <= grid->days; ++day) {
        if ((grid->RowOf(day) + grid->ColumnOf(day)) % 3 != phase) continue;
        if (view.stop) return false;
        AdvanceCellPhoto(year, month, day);
        DrawCell(*window, *grid, day);
    }
    return true;
}

int StepMonthPicture(int year, int month) {
    YearView& slot = Calendar().SlotOf(year);
    {
        std::lock_guard lock(slot.mutex);
        if (slot.year != year) return -1;
        MonthView& view = Calendar().MonthOf(year, month);
        const int count = view.ObjectCount();
        if (++view.PhotoCursor >= count) view.PhotoCursor = 0;
        if (++view.DayCursor > DaysInMonth(year, month)) view.DayCursor = 1;
    }
    const int day = RepresentativeDay(year, month);
    if (day == 0) return -1;
    AdvanceCellPhoto(year, month, day);
    DrawMonthPictureOnWindow(year, month);
    return 0;
}

}  // namespace kalmora
