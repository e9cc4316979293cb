// The system's request that the program end (SIGTERM, SIGINT, SIGHUP), brought to the GUI thread.
#pragma once

#include <functional>

namespace kalmora::qt {

// From its making on these signals do not end the process but call the watcher (end_signals.h), and
// then `request` on the GUI thread. One at a time.
class EndSignals {
public:
    explicit EndSignals(std::function<void()> request);
    ~EndSignals();  // the signals end the process again; a pending request is dropped
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;
};

}  // namespace kalmora::qt
