// How a request to stop wakes who waits on a token. For stop_token.h and what tokens are made of.
#pragma once

#include <condition_variable>
#include <mutex>

namespace kalmora {

// One for all tokens: stops are rare, and so are waits. Any thread.
struct StopWakeup {
    std::mutex mutex;  // held while a stop is looked for, so that none is missed between look and wait
    std::condition_variable requested;

    // To be called when a stop has just been raised; takes the mutex for a moment.
    void Notify() {
        { const std::lock_guard lock(mutex); }
        requested.notify_all();
    }
};

// Never destroyed: workers may outlive main.
StopWakeup& TheStopWakeup();

}  // namespace kalmora
