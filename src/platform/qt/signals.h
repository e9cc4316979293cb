// The system's wish that the program end (SIGTERM, SIGINT, SIGHUP), brought to the GUI thread.
#pragma once

#include <functional>

namespace kalmora::qt {

// From its making on these signals do not end the process but call whoever watches them (end_signals.h), and
// then `wish` on the GUI thread. One at a time.
class EndSignals {
public:
    explicit EndSignals(std::function<void()> wish);
    ~EndSignals();  // the signals end the process again; a wish that is under way is dropped
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;
};

}  // namespace kalmora::qt
