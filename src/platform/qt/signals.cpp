#include "platform/qt/signals.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>

namespace kalmora::qt {

namespace {

constexpr std::array kSignals = {SIGTERM, SIGINT, SIGHUP};

// All that a signal handler may touch.
std::atomic<int> writeEnd = -1;

void Tell(int) {
    const int error = errno;
    const char byte = 1;
    [[maybe_unused]] const ssize_t written =
        write(writeEnd.load(), &byte, 1);  // full: the wish stands already
    errno = error;
}

}  // namespace

EndSignals::EndSignals(std::function<void()> wish) : wish_(std::move(wish)) {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
    readEnd_ = ends[0];
    writeEnd = ends[1];
    notifier_ = std::make_unique<QSocketNotifier>(readEnd_, QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] {
        std::array<char, 64> bytes{};
        while (read(readEnd_, bytes.data(), bytes.size()) > 0) {
        }
        wish_();
    });
    struct sigaction action {};
    action.sa_handler = Tell;
    action.sa_flags = SA_RESTART;
    for (const int signal : kSignals) {
        // What the parent chose to ignore (nohup) stays ignored.
        struct sigaction before {};
        if (sigaction(signal, nullptr, &before) == 0 && before.sa_handler != SIG_IGN)
            sigaction(signal, &action, nullptr);
    }
}

EndSignals::~EndSignals() {
    if (readEnd_ < 0) return;
    for (const int number : kSignals) {
        struct sigaction now {};
        if (sigaction(number, nullptr, &now) == 0 && now.sa_handler == Tell) std::signal(number, SIG_DFL);
    }
    notifier_.reset();
    close(writeEnd.exchange(-1));
    close(readEnd_);
}

}  // namespace kalmora::qt
