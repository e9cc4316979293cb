#include "app/run_beside.h"

#include <atomic>
#include <utility>

#include "platform/thread.h"
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
    const auto body = [work = std::move(work)] {
        work();
        --running;
    };
    Thread thread;
    if (!thread.StartSuspended(threadName, body)) {
        body();
        return true;
    }
    thread.Resume();
    if (thread.WaitForEnd(kQuietMs)) return true;
    while (!thread.WaitForEnd(0)) {
        if (!MainWindow()) return false;
        TheApplication()->ProcessEvents(kServeMs);
    }
    return true;
}

bool IsWorkBesideRunning() { return running > 0; }

}  // namespace kalmora
