// CalendarStore: all objects that the views hold, sized by design: 13 years, 13 days, 13 scatters, one set of
// backgrounds, and the workers that fill and draw them. App makes one, and each test its own; whoever works
// on it is handed it.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>

#include "base/stop_token.h"
#include "base/worker.h"
#include "platform/window.h"
#include "state/app_state.h"
#include "views/model/background_set.h"
#include "views/model/calendar_view.h"
#include "views/model/cell_redraws.h"
#include "views/model/view_partners.h"
#include "views/model/viewers.h"
#include "views/model/year_view.h"

namespace kalmora {

struct CalendarStore {
    // The partners outlive it.
    explicit CalendarStore(const ViewPartners& partners);
    // Waits for the workers that it has started.
    ~CalendarStore();

    const ViewPartners partners;
    // The four views, made by control before anything is loaded (see control/calendar_views.h).
    std::unique_ptr<CalendarView> yearView, monthView, dayView, scatterView;
    CalendarView& ViewOf(Level level) const;            // never the scatter
    CalendarView& ViewOf(const ViewState& view) const;  // the one in force

    std::array<YearView, kRingSize> years;
    std::array<DayViewer, kRingSize> dayViewers;
    std::array<AllViewer, kRingSize> allViewers;
    BackgroundSet backgrounds;
    CellRedraws cellRedraws{[this](const CalendarDate& day) { ViewOf(View()).RedrawCell(day); }};

    // A load that begins stops the one before, whatever becomes of the object gate meanwhile. The tokens are
    // of the newest load: who finds his stopped holds the gate no more. Any thread.
    StopToken BeginLoad();
    StopToken CurrentLoad() const;
    // Raised from a change of the period until a load of it begins: what the views hold is of another period.
    const std::shared_ptr<std::atomic<bool>> loadIsLeft = std::make_shared<std::atomic<bool>>(false);
    // Raised while a load is posted to the GUI thread; the post may come after the store has gone.
    const std::shared_ptr<std::atomic<bool>> loadIsPosted = std::make_shared<std::atomic<bool>>(false);
    // Without another load: the program ends.
    void StopLoadsSoFar() { BeginLoad(); }
    // Pictures drawn since the last start of a view: for `shot` and tests.
    std::atomic<int> objectsDrawn{0};

    YearView& SlotOf(int year);
    MonthView& MonthOf(int year, int month);  // of the slot of that year, also when the slot holds another
    DayViewer& CurrentDayViewer();
    AllViewer& CurrentAllViewer();
    void AdvanceDayRing();
    void AdvanceAllRing();

    // Starts a new worker; an old one that still runs is released. Any thread.
    bool StartObjectLoader(std::function<void()> body);
    // `body` gets the number of its run.
    bool StartPaintThread(std::function<void(std::uint64_t run)> body);
    // A paint run goes from StartPaintThread until EndPaintRun. A full paint that comes meanwhile is left to
    // it: true when it was, false when no run is going and the caller is to paint.
    bool LeavePaintToRun();
    bool IsPaintLeftToRun() const { return paintIsLeft_; }
    StopToken PaintLeftToRun() const { return StopToken(paintIsLeft_); }  // stopped while one is left
    // Both do nothing and give false for a run that a newer one has followed: what is left is the newer
    // one's.
    bool TakePaintLeftToRun(std::uint64_t run);  // true once for all paints left until then
    bool EndPaintRun(std::uint64_t run);         // true when a paint was left that the run did not take
    bool IsObjectLoaderRunning() const;
    bool IsPaintThreadRunning() const;
    // Also an old one that was let go, and the one that draws cells again.
    bool AreWorkersRunning() const { return *workers_ > 0 || !cellRedraws.AreDone(); }

private:
    bool Start(Worker& slot, const char* name, std::function<void()> body);

    const std::shared_ptr<std::atomic<int>> workers_ = std::make_shared<std::atomic<int>>(0);
    mutable std::mutex threadsMutex_;
    Worker objectLoader_;                    // guarded by threadsMutex_
    Worker paintThread_;                     // guarded by threadsMutex_
    bool paintRunGoes_ = false;              // guarded by threadsMutex_
    std::uint64_t paintRun_ = 0;             // guarded by threadsMutex_; the newest one
    std::atomic<bool> paintIsLeft_ = false;  // written under threadsMutex_
    mutable std::mutex loadMutex_;
    StopSource load_;  // guarded by loadMutex_
};

// The main window; null until all windows exist, and again once it is destroyed. Any thread.
Window* MainWindow();
void SetMainWindow(Window* window);
Size ClientSize();  // of the main window; empty without one
double ClientScale();

}  // namespace kalmora
