#include "app/startup_threads.h"

#include <functional>
#include <utility>

#include "app/connect_index.h"
#include "base/worker.h"
#include "state/app_state.h"
#include "store/data_folder.h"
#include "store/date_tree.h"
#include "views/model/calendar_store.h"

namespace kalmora {

namespace {

void StartLowest(const char* name, SharedFlag& running, std::function<void(const StopToken& stop)> body) {
    running = 1;
    const auto marked = [&running, work = std::move(body)](const StopToken& stop) {
        work(stop);
        running = 0;
    };
    if (!StartWorker(name, Worker::Priority::Lowest, marked, DesktopWork().stop).IsStarted()) running = 0;
}

}  // namespace

void StartInitialScan() {
    StartLowest("InitialScan", State().run.InitialScanRunning, [](const StopToken& stop) {
        TheDateTree().ScanAll(MainRoot(), stop);
        // The gauge of its progress goes with the next painting.
        if (Window* window = MainWindow()) window->Invalidate();
    });
}

void StartIndexPreload(IndexUpdates& indexUpdates) {
    StartLowest("IndexPreload", State().run.IndexPreloadRunning,
                [&indexUpdates](const StopToken&) { indexUpdates.Preload(); });
}

}  // namespace kalmora
