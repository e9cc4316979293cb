#include "index/update.h"

#include <atomic>
#include <optional>

#include "base/log.h"
#include "base/worker.h"
#include "index/index_manager.h"
#include "index/index_tree.h"
#include "platform/clock.h"
#include "state/app_state.h"

namespace kalmora {

namespace {
std::atomic<int> updates = 0;  // threads that run
}  // namespace

namespace {

// Both roots at the moment when a piece of work begins. (The other root's manager is not made for it alone.)
struct WorkOnBothRoots {
    StopToken main = MainIndex().BeginWork();
    std::optional<StopToken> other = TokenOf(OtherIndexInUse());

    static std::optional<StopToken> TokenOf(const IndexManager* manager) {
        return manager ? std::optional(manager->BeginWork()) : std::nullopt;
    }
};

// Without a month: each month of the year that has a folder.
void UpdateIn(IndexManager& manager, int year, int month, const StopToken& work) {
    if (month != 0) {
        manager.Update(year, month, 0, work);
        return;
    }
    for (const CalendarDate& one : ListMonths(manager.dataRoot, year))
        manager.Update(year, one.month, 0, work);
}

void UpdateBothRoots(int year, int month, const WorkOnBothRoots& work) {
    Log("Updating by backprocess: %04d/%02d", year, month);
    UpdateIn(MainIndex(), year, month, work.main);
    if (IndexManager* const other = OtherIndexInUse())
        UpdateIn(*other, year, month, work.other.value_or(other->BeginWork()));
    Log("Updated: %04d/%02d", year, month);
    Log("----------------------------------");
}

}  // namespace

void UpdateMonthOfBothRoots(int year, int month) { UpdateBothRoots(year, month, WorkOnBothRoots()); }

int CountBackgroundUpdates() { return updates; }

void StartBackgroundUpdate(int yearTimes100PlusMonth) {
    SharedFlag& running = State().run.BackgroundUpdateRunning;
    running = 1;
    ++updates;
    const auto body = [yearTimes100PlusMonth, &running, work = WorkOnBothRoots()](const StopToken&) {
        running = 1;
        UpdateBothRoots(yearTimes100PlusMonth / 100, yearTimes100PlusMonth % 100, work);
        // Also when another one still runs: meant, and held by
        // ConnectedIndexTest.FlagIsClearedByTheFirstThatEnds.
        running = 0;
        --updates;
    };
    if (StartWorker("IndexUpdate", Worker::Priority::Lowest, body).IsStarted()) return;
    running = 0;
    --updates;
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
