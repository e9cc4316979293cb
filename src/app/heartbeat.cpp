#include "app/heartbeat.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "app/startup_threads.h"
#include "base/log.h"
#include "base/worker.h"
#include "platform/clock.h"
#include "platform/thread.h"
#include "platform/window.h"
#include "state/app_state.h"
#include "store/date_tree.h"
#include "views/control/navigation.h"
#include "views/load/object_loader.h"
#include "views/model/calendar_store.h"
#include "views/paint/heartbeat_redraw.h"
#include "views/paint/missing_folder.h"

namespace kalmora {

namespace {

constexpr double kShortestBeat =
    900;  // milliseconds a second of the period: beats that queued up are dropped
constexpr int kLongestPeriod = 24 * 60 * 60;  // seconds; a settings file may ask for anything
constexpr int kLastBeatMs = 1000;
constexpr int kMostTicks = 30000;
constexpr unsigned kMonthIsOld = 43200;  // seconds

void KeepCursor() {
    AppState& state = State();
    const Point cursor = CursorPosition();
    if (cursor.x == state.run.LastCursorX && cursor.y == state.run.LastCursorY) return;
    state.run.LastActivity = UptimeMs();
    state.run.LastCursorX = cursor.x;
    state.run.LastCursorY = cursor.y;
}

// True when the data folder has gone or come back since the last look: what is on the screen is not what is
// there any more.
bool HasDataFolderChanged() {
    const DataFolder before = LastSeenDataFolder();
    return LookForDataFolder() != before;
}

class BusyMark {
public:
    ~BusyMark() { State().run.HeartbeatBusy = 0; }
};

}  // namespace

void Heartbeat::ShowOtherDataFolder() {
    UpdateObjects(calendar_);
    // Its dates were not there to be counted at the start.
    const AppState& state = State();
    const bool canScan = !state.run.FirstStartPending && !state.run.InitialScanRunning;
    if (canScan && LastSeenDataFolder() == DataFolder::There) StartInitialScan();
}

BeatEnd Heartbeat::Beat() {
    AppState& state = State();
    if (IsLeftButtonDown()) return BeatEnd::ButtonDown;
    if (petals_.IsShown()) {
        petals_.Hide();
        return BeatEnd::PetalsHidden;
    }
    if (state.run.ObjectGate.IsHeld()) return BeatEnd::GateHeld;
    if (HasDataFolderChanged()) {
        ShowOtherDataFolder();
        return BeatEnd::Reloaded;
    }
    if (state.run.FirstStartPending && state.run.FirstLoadDone) {
        state.run.FirstStartPending = 0;
        StartInitialScan();
        if (state.settings.LoadIndexInitially) StartIndexPreload(indexUpdates_);
    }
    if (slideShow_.IsShown() && !state.settings.SlideShowAutoNavigate) return BeatEnd::SlideShowKeepsView;
    if (state.settings.AutoNavigate == 1 && !state.run.InitialScanRunning && !state.run.ObjectGate.IsHeld() &&
        state.run.TicksInView > 0 && RandomNavigate(calendar_))
        return BeatEnd::Navigated;
    if (slideShow_.IsShown()) return BeatEnd::SlideShowOpen;
    const int ticks = state.run.TicksInView = state.run.TicksInView + 1;
    if (!IsViewReady(calendar_)) {
        UpdateObjects(calendar_);
        return BeatEnd::Reloaded;
    }
    HeartbeatRedraw(calendar_, ticks);
    if (state.run.TicksInView > kMostTicks) state.run.TicksInView = 0;
    return BeatEnd::Redrawn;
}

BeatEnd Heartbeat::Tick() {
    AppState& state = State();
    if (neighbor_.IsShown()) return BeatEnd::NeighborShown;
    const double now = UptimeMs();
    if (now - state.run.LastTickClock < state.settings.TimingOfPopup * kShortestBeat) return BeatEnd::TooSoon;
    state.run.LastTickClock = now;
    if (!state.run.MainWindowVisible) return BeatEnd::Hidden;
    if (state.run.Paused) return BeatEnd::PausedByUser;
    if (state.run.HeartbeatBusy) return BeatEnd::Busy;
    if (calendar_.IsObjectLoaderRunning() || calendar_.IsPaintThreadRunning()) return BeatEnd::WorkersRunning;
    KeepCursor();
    if (state.run.HeartbeatBusy.exchange(1)) return BeatEnd::Busy;
    const BusyMark busy;
    return Beat();
}

void Heartbeat::Start() {
    timer_ = std::make_unique<PeriodicTimer>();
    const int seconds = std::min(State().settings.TimingOfPopup, kLongestPeriod);
    timer_->Start(seconds * 1000, [this] { Tick(); });
}

void Heartbeat::Stop() {
    if (!timer_) return;
    // The timer waits for its call without a bound, so it is destroyed on a thread of its own.
    const std::shared_ptr<PeriodicTimer> timer = std::move(timer_);
    lastBeat_ =
        StartWorker("LastBeat", Worker::Priority::Normal, [timer](const StopToken&) { timer->Stop(); });
    lastBeat_.WaitAtMost(kLastBeatMs);
}

void IdleRefresh(IndexUpdates& indexUpdates) {
    const AppState& state = State();
    if (state.run.BackgroundUpdateRunning || state.run.InitialScanRunning || state.run.DateScanRunning ||
        state.run.IndexPreloadRunning || state.run.IndexingEnabled != 1)
        return;
    const int minutes = static_cast<int>((UptimeMs() - state.run.LastActivity) / 60000.0);
    if (minutes <= state.settings.MinutesToSleep) return;
    for (int attempt = 0; attempt < 3; ++attempt) {
        const auto month = TheDateTree().Pick(kMonthLevel);
        if (!month) return;  // nothing is listed
        const auto age = static_cast<unsigned>(
            static_cast<int>(indexUpdates.SecondsSinceUpdate(month->year, month->month)));
        const bool isOld = age > kMonthIsOld;
        Log("[Update] %s. Elapsed Time = %u %c %u (%d/%d)", isOld ? "ok" : "no", age, isOld ? '>' : '<',
            kMonthIsOld, month->year, month->month);
        if (!isOld) continue;
        indexUpdates.Start(month->year * 100 + month->month);
        return;
    }
}

}  // namespace kalmora
