#include "views/model/calendar_store.h"

#include <utility>

#include "platform/clock.h"
#include "state/app_state.h"

namespace kalmora {

namespace {

std::atomic<Window*> mainWindow{nullptr};

std::size_t Index(int number) {
    return static_cast<std::size_t>(((number % kRingSize) + kRingSize) % kRingSize);
}

}  // namespace

CalendarStore::CalendarStore(const ViewPartners& viewPartners) : partners(viewPartners) {}

CalendarStore::~CalendarStore() {
    *loadIsLeft = *loadIsPosted = false;
    while (AreWorkersRunning()) SleepMs(1);
}

bool CalendarStore::Start(Worker& slot, const char* name, std::function<void()> body) {
    ++*workers_;
    // The count goes down when the worker has let go of everything else.
    const auto counted = [body = std::move(body), workers = workers_](const StopToken&) mutable {
        body();
        body = nullptr;
        --*workers;
    };
    const Worker worker = StartWorker(name, Worker::Priority::Highest, counted);
    if (!worker.IsStarted()) {
        --*workers_;
        return false;
    }
    slot = worker;
    return true;
}

Window* MainWindow() { return mainWindow; }

void SetMainWindow(Window* window) { mainWindow = window; }

Size ClientSize() {
    const Window* window = mainWindow;
    return window ? window->ClientSize() : Size{};
}

double ClientScale() {
    const Window* window = mainWindow;
    return window ? window->Scale() : 1.0;
}

CalendarView& CalendarStore::ViewOf(Level level) const {
    return level == Level::Year ? *yearView : level == Level::Month ? *monthView : *dayView;
}

CalendarView& CalendarStore::ViewOf(const ViewState& view) const {
    return view.scatter ? *scatterView : ViewOf(view.period.level);
}

YearView& CalendarStore::SlotOf(int year) { return years[Index(year)]; }

MonthView& CalendarStore::MonthOf(int year, int month) {
    // A settings file can name any month.
    return SlotOf(year).months[static_cast<std::size_t>((month % 12 + 23) % 12)];
}

DayViewer& CalendarStore::CurrentDayViewer() { return dayViewers[Index(State().run.DayRing)]; }

AllViewer& CalendarStore::CurrentAllViewer() { return allViewers[Index(State().run.AllRing)]; }

void CalendarStore::AdvanceDayRing() { State().run.DayRing = (State().run.DayRing + 1) % kRingSize; }

void CalendarStore::AdvanceAllRing() { State().run.AllRing = (State().run.AllRing + 1) % kRingSize; }

StopToken CalendarStore::BeginLoad() {
    std::lock_guard lock(loadMutex_);
    load_.RequestStop();
    load_ = StopSource();
    return load_.Token();
}

StopToken CalendarStore::CurrentLoad() const {
    std::lock_guard lock(loadMutex_);
    return load_.Token();
}

bool CalendarStore::StartObjectLoader(std::function<void()> body) {
    std::lock_guard lock(threadsMutex_);
    return Start(objectLoader_, "ObjectLoader", std::move(body));
}

bool CalendarStore::StartPaintThread(std::function<void(std::uint64_t run)> body) {
    std::lock_guard lock(threadsMutex_);
    // What was left to the run before, and what it did not take, is this one's.
    const std::uint64_t run = ++paintRun_;
    paintRunGoes_ = Start(paintThread_, "PaintThread", [run, body = std::move(body)] { body(run); });
    return paintRunGoes_;
}

bool CalendarStore::LeavePaintToRun() {
    std::lock_guard lock(threadsMutex_);
    if (paintRunGoes_) paintIsLeft_ = true;
    return paintRunGoes_;
}

bool CalendarStore::TakePaintLeftToRun(std::uint64_t run) {
    std::lock_guard lock(threadsMutex_);
    return run == paintRun_ && paintIsLeft_.exchange(false);
}

bool CalendarStore::EndPaintRun(std::uint64_t run) {
    std::lock_guard lock(threadsMutex_);
    if (run != paintRun_) return false;
    paintRunGoes_ = false;
    return paintIsLeft_.exchange(false);
}

bool CalendarStore::IsObjectLoaderRunning() const {
    std::lock_guard lock(threadsMutex_);
    return objectLoader_.IsRunning();
}

bool CalendarStore::IsPaintThreadRunning() const {
    std::lock_guard lock(threadsMutex_);
    return paintThread_.IsRunning();
}

}  // namespace kalmora
