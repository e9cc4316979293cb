// The program's clock. Nearly all that moves without the user moves here.
#pragma once

#include <memory>

#include "app/rooms_above.h"
#include "app/services.h"
#include "base/worker.h"
#include "platform/thread.h"
#include "views/model/slide_show.h"

namespace kalmora {

struct CalendarStore;

// Where a beat ended: the first test that failed, or the work that was done. For tests.
enum class BeatEnd {
    NeighborShown,
    TooSoon,
    Hidden,
    PausedByUser,
    Busy,
    WorkersRunning,
    ButtonDown,
    PetalsHidden,
    GateHeld,
    SlideShowKeepsView,
    Navigated,
    SlideShowOpen,
    Reloaded,
    Redrawn,
};

class Heartbeat {
public:
    // They outlive it.
    Heartbeat(CalendarStore& calendar, SlideShow& slideShow, PictureWindow& neighbor, RatingPetals& petals,
              IndexUpdates& indexUpdates)
        : calendar_(calendar),
          slideShow_(slideShow),
          neighbor_(neighbor),
          petals_(petals),
          indexUpdates_(indexUpdates) {}

    // One beat. On the heartbeat's own thread; a beat inside another does nothing.
    BeatEnd Tick();

    // The periodic timer, TimingOfPopup seconds long, first beat after one full period. GUI thread.
    void Start();
    // No beat begins any more. Waits at most a second for one that runs: it may be in a file call on a disk
    // that does not answer; the beat then runs on alone.
    void Stop();
    // After Stop: true while such a beat still runs. The object must not go before.
    bool IsLastBeatRunning() const { return lastBeat_.IsRunning(); }

private:
    BeatEnd Beat();
    void ShowOtherDataFolder();

    CalendarStore& calendar_;
    SlideShow& slideShow_;
    PictureWindow& neighbor_;
    RatingPetals& petals_;
    IndexUpdates& indexUpdates_;
    std::unique_ptr<PeriodicTimer> timer_;
    Worker lastBeat_;  // waits for the last beat
};

// Every ten seconds on the GUI thread: when the user has been away long enough, brings a month's index up to
// date.
void IdleRefresh(IndexUpdates& indexUpdates);

}  // namespace kalmora
