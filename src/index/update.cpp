#include "index/update.h"

#include <atomic>
#include <optional>

#include "base/log.h"
#include "index/index_manager.h"
#include "index/index_tree.h"
#include "platform/clock.h"
#include "platform/thread.h"
#include "state/app_state.h"

namespace kalmora {

namespace {
std::atomic<int> updates = 0;  // threads that run
}  // namespace

namespace {

using StopMark = IndexManager::StopMark;

// Both roots at the moment when a piece of work begins. (The other root's manager is not made for it alone.)
struct StopMarks {
    StopMark main = MainIndex().StopsSoFar();
    std::optional<StopMark> other = MarkOf(OtherIndexInUse());

    static std::optional<StopMark> MarkOf(const IndexManager* manager) {
        return manager ? std::optional(manager->StopsSoFar()) : std::nullopt;
    }
};

// Without a month: each month of the year that has a folder.
void UpdateIn(IndexManager& manager, int year, int month, StopMark since) {
    if (month != 0) {
        manager.Update(year, month, 0, since);
        return;
    }
    for (const CalendarDate& one : ListMonths(manager.dataRoot, year))
        manager.Update(year, one.month, 0, since);
}

void UpdateBothRoots(int year, int month, const StopMarks& since) {
    Log("Updating by backprocess: %04d/%02d", year, month);
    UpdateIn(MainIndex(), year, month, since.main);
    if (IndexManager* const other = OtherIndexInUse())
        UpdateIn(*other, year, month, since.other.value_or(other->StopsSoFar()));
    Log("Updated: %04d/%02d", year, month);
    Log("----------------------------------");
}

}  // namespace

void UpdateMonthOfBothRoots(int year, int month) { UpdateBothRoots(year, month, StopMarks()); }

int CountBackgroundUpdates() { return updates; }

void StartBackgroundUpdate(int yearTimes100PlusMonth) {
    SharedFlag& running = State().run.BackgroundUpdateRunning;
    running = 1;
    ++updates;
    Thread thread;
    const bool started =
        thread.StartSuspended("IndexUpdate", [yearTimes100PlusMonth, &running, since = StopMarks()] {
            running = 1;
            UpdateBothRoots(yearTimes100PlusMonth / 100, yearTimes100PlusMonth % 100, since);
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
    for (int left = State().settings.NumberOfLoadIndex; left > 0 && year > 0; --left) {
        MainIndex().Load(year, month, 0);
        if (IndexManager* const other = OtherIndexInUse()) other->Load(year, month, 0);
        if (--month == 0) {
            month = 12;
            --year;
        }
    }
}

}  // namespace kalmora
