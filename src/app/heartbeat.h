// HeartbeatTick: the program's clock. Nearly all that moves by itself moves here.
#pragma once

namespace kalmora {

// Where a beat ended; the first test that failed, or the work that was done. For tests and the log.
enum class BeatEnd {
    NeighborShown,
    TooSoon,
    Hidden,
    PausedByUser,
    Busy,
    WorkersRunning,
    ButtonDown,
    EstimateHidden,
    GateHeld,
    SlideShowStands,
    Navigated,
    SlideShowOpen,
    Reloaded,
    Redrawn,
};

// One beat. On the heartbeat's own thread; a beat inside another does nothing.
BeatEnd HeartbeatTick();

// The periodic timer, TimingOfPopup seconds long, first beat after one full period. GUI thread.
void StartHeartbeat();
// No beat begins any more. One that runs is waited for, for a second at most: it may stand in a file call on
// a disk that does not answer, and goes on by itself then.
void StopHeartbeat();
// After StopHeartbeat: true while such a beat still runs.
bool IsLastBeatRunning();

// Every ten seconds on the GUI thread: when the user has been away long enough, brings a month's index up to
// date.
void IdleRefresh();

}  // namespace kalmora
