#include "store/update.h"

#include "app/app_state.h"
#include "base/log.h"
#include "platform/clock.h"
#include "platform/thread.h"
#include "store/index_manager.h"

namespace kalmora {

void UpdateMonthOfBothRoots(int year, int month) {
    Log("Updating by backprocess: %04d/%02d", year, month);
    MainIndex().Update(year, month, 0);
    if (IndexManager* const other = OtherIndexInUse()) other->Update(year, month, 0);
    Log("Updated: %04d/%02d", year, month);
    Log("----------------------------------");
}

void StartBackgroundUpdate(int yearTimes100PlusMonth) {
    SharedFlag& running = State().BackgroundUpdateRunning;
    running = 1;
    Thread thread;
    const bool started = thread.StartSuspended("IndexUpdate", [yearTimes100PlusMonth, &running] {
        running = 1;
        UpdateMonthOfBothRoots(yearTimes100PlusMonth / 100, yearTimes100PlusMonth % 100);
        running = 0;
    });
    if (!started) {
        running = 0;
        return;
    }
    thread.SetPriority(Thread::Priority::Lowest);
    thread.Resume();
}

void PreloadIndexes() {
    const SystemTime today = LocalTime();
    int year = today.year, month = today.month;
    for (int left = State().NumberOfLoadIndex; left > 0; --left) {
        MainIndex().Load(year, month, 0);
        if (IndexManager* const other = OtherIndexInUse()) other->Load(year, month, 0);
        if (--month == 0) {
            month = 12;
            --year;
        }
    }
}

}  // namespace kalmora
