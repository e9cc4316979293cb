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

std::atomic<int> worksBeside = 0;

// Without another thread the work is done when this comes back.
Worker Start(const char* threadName, std::function<void()> work) {
    ++worksBeside;
    const auto body = [work = std::move(work)](const StopToken&) {
        work();
        --worksBeside;
    };
    const Worker worker = StartWorker(threadName, Worker::Priority::Normal, body);
    if (!worker.IsStarted()) body({});
    return worker;
}

}  // namespace

bool RunBeside(const char* threadName, std::function<void()> work) {
    const Worker worker = Start(threadName, std::move(work));
    if (worker.WaitAtMost(kQuietMs)) return true;
    while (!worker.WaitAtMost(0)) {
        if (!MainWindow()) return false;
        TheApplication()->ProcessEvents(kServeMs);
    }
    return true;
}

void RunAtMost(const char* threadName, int milliseconds, std::function<void()> work) {
    Start(threadName, std::move(work)).WaitAtMost(milliseconds);
}

bool IsWorkBesideRunning() { return worksBeside > 0; }

}  // namespace kalmora
