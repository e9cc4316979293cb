#include "app/startup_threads.h"

#include <functional>
#include <utility>

#include "platform/thread.h"
#include "state/app_state.h"
#include "store/data_folder.h"
#include "store/date_tree.h"
#include "views/model/calendar_store.h"

namespace kalmora {

namespace {

void StartLowest(const char* name, SharedFlag& running, std::function<void()> body) {
    running = 1;
    Thread thread;
    if (!thread.StartSuspended(name, [&running, work = std::move(body)] {
            work();
            running = 0;
        })) {
        running = 0;
        return;
    }
    thread.SetPriority(Thread::Priority::Lowest);
    thread.Resume();
}

}  // namespace

void StartInitialScan() {
    StartLowest("InitialScan", State().run.InitialScanRunning, [] {
        TheDateTree().ScanAll(MainRoot());
        // The gauge of its progress goes with the next painting.
        if (Window* window = MainWindow()) window->Invalidate();
    });
}

void StartIndexPreload(IndexUpdates& indexUpdates) {
    StartLowest("IndexPreload", State().run.IndexPreloadRunning, [&indexUpdates] { indexUpdates.Preload(); });
}

}  // namespace kalmora
