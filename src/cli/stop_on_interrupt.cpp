#include "cli/stop_on_interrupt.h"

#include <atomic>
#include <csignal>

namespace kalmora {

namespace {

std::atomic<StopSource*> source = nullptr;
static_assert(std::atomic<StopSource*>::is_always_lock_free, "it is read in a signal handler");

void OnInterrupt(int) {
    if (StopSource* const one = source) one->RequestStopInSignal();
}

}  // namespace

StopToken StopOnInterrupt() {
    static auto* const made = new StopSource;  // a signal may come after main
    source = made;
    std::signal(SIGINT, OnInterrupt);
    std::signal(SIGTERM, OnInterrupt);
    return made->Token();
}

}  // namespace kalmora
