#include "app/run_beside.h"

#include <atomic>
#include <utility>

#include "base/worker.h"
#include "platform/window.h"
#include "views/model/calendar_store.h"

namespace kalmora {

namespace {

constexpr int kQuietMs = 200;  // most work is done by then, and nothing comes in between
constexpr int kServeMs = 50;

std::atomic<int> running = 0;

}  // namespace

bool RunBeside(const char* threadName, std::function<void()> work) {
    ++running;
    const auto body = [work = std::move(work)](const StopToken&) {
        work();
        --running;
    };
    const Worker worker = StartWorker(threadName, Worker::Priority::Normal, body);
    if (!worker.IsStarted()) {
        body({});
        return true;
    }
    if (worker.WaitAtMost(kQuietMs)) return true;
    while (!worker.WaitAtMost(0)) {
        if (!MainWindow()) return false;
        TheApplication()->ProcessEvents(kServeMs);
    }
    return true;
}

bool IsWorkBesideRunning() { return running > 0; }

}  // namespace kalmora
