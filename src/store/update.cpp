#include "store/update.h"

#include <atomic>

#include "app/app_state.h"
#include "base/log.h"
#include "platform/clock.h"
#include "platform/thread.h"
#include "store/index_manager.h"

namespace kalmora {

namespace {
std::atomic<int> updates = 0;  // threads that run
}  // namespace

void UpdateMonthOfBothRoots(int year, int month) {
    Log("Updating by backprocess: %04d/%02d", year, month);
    MainIndex().Update(year, month, 0);
    if (IndexManager* const other = OtherIndexInUse()) other->Update(year, month, 0);
    Log("Updated: %04d/%02d", year, month);
    Log("----------------------------------");
}

int CountBackgroundUpdates() { return updates; }

void StartBackgroundUpdate(int yearTimes100PlusMonth) {
    SharedFlag& running = State().BackgroundUpdateRunning;
    running = 1;
    ++updates;
    Thread thread;
    const bool started = thread.StartSuspended("IndexUpdate", [yearTimes100PlusMonth, &running] {
        running = 1;
        UpdateMonthOfBothRoots(yearTimes100PlusMonth / 100, yearTimes100PlusMonth % 100);
        // Also when another one still runs: meant, and held by
        // ConnectedIndexTest.FlagIsClearedByTheFirstThatEnds.
        running = 0;
        --updates;
    });
    if (!started) {
        running = 0;
        --updates;
        return;
    }
    thread.SetPriority(Thread::Priority::Lowest);
    thread.Resume();
}

void PreloadIndexes() {
    const SystemTime today = LocalTime();
    int year = today.year, month = today.month;
    // No folder has the number of a year before the first.
    for (int left = State().NumberOfLoadIndex; left > 0 && year > 0; --left) {
        MainIndex().Load(year, month, 0);
        if (IndexManager* const other = OtherIndexInUse()) other->Load(year, month, 0);
        if (--month == 0) {
            month = 12;
            --year;
        }
    }
}

}  // namespace kalmora
