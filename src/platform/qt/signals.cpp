#include "platform/qt/signals.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <mutex>
#include <utility>

#include "base/worker.h"
#include "platform/end_signals.h"
#include "platform/qt/gui_queue.h"

namespace kalmora {

namespace {

struct Watcher {
    std::mutex mutex;
    std::function<void()> onRequest;  // guarded by mutex
};

Watcher& TheWatcher() {
    static auto* const watcher = new Watcher;  // the thread may outlive main
    return *watcher;
}

void CallWatcher() {
    std::function<void()> onRequest;
    {
        std::lock_guard lock(TheWatcher().mutex);
        onRequest = TheWatcher().onRequest;
    }
    if (onRequest) onRequest();
}

}  // namespace

void WatchEndSignals(std::function<void()> onRequest) {
    std::lock_guard lock(TheWatcher().mutex);
    TheWatcher().onRequest = std::move(onRequest);
}

namespace qt {

namespace {

constexpr std::array kSignals = {SIGTERM, SIGINT, SIGHUP};
constexpr char kSignal = 1, kOver = 0;  // what goes through the pipe

// All that a signal handler may touch.
std::atomic<int> writeEnd = -1;

void Send(char byte) {
    [[maybe_unused]] const ssize_t written =
        write(writeEnd.load(), &byte, 1);  // full: a request is pending already
}

void OnSignal(int) {
    const int error = errno;
    Send(kSignal);
    errno = error;
}

// On a thread of its own, which owns the end it reads from.
void Serve(int readEnd, const std::function<void()>& request) {
    for (char byte = kSignal;;) {
        const ssize_t length = read(readEnd, &byte, 1);
        if (length < 0 && errno == EINTR) continue;
        if (length != 1 || byte == kOver) break;
        CallWatcher();
        GuiQueue::Instance().Post(request);
    }
    close(readEnd);
}

}  // namespace

EndSignals::EndSignals(std::function<void()> request) {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) return;
    fcntl(ends[1], F_SETFL, O_NONBLOCK);
    // It waits in a read, so what ends it comes through the pipe.
    const auto serve = [end = ends[0], request = std::move(request)](const StopToken&) {
        Serve(end, request);
    };
    if (!StartWorker("signals", Worker::Priority::Normal, serve).IsStarted()) {
        for (const int end : ends) close(end);
        return;
    }
    writeEnd = ends[1];
    struct sigaction action {};
    action.sa_handler = OnSignal;
    action.sa_flags = SA_RESTART;
    for (const int signal : kSignals) {
        // What the parent chose to ignore (nohup) stays ignored.
        struct sigaction before {};
        if (sigaction(signal, nullptr, &before) == 0 && before.sa_handler != SIG_IGN)
            sigaction(signal, &action, nullptr);
    }
}

EndSignals::~EndSignals() {
    if (writeEnd < 0) return;
    for (const int number : kSignals) {
        struct sigaction now {};
        if (sigaction(number, nullptr, &now) == 0 && now.sa_handler == OnSignal) std::signal(number, SIG_DFL);
    }
    Send(kOver);
    close(writeEnd.exchange(-1));
}

}  // namespace qt

}  // namespace kalmora
