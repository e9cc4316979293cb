// The system's wish that the program end (SIGTERM, SIGINT, SIGHUP), brought to the GUI thread.
#pragma once

#include <QSocketNotifier>
#include <functional>
#include <memory>

namespace kalmora::qt {

// From its making on these signals do not end the process but call `wish`, on the GUI thread. One at a time.
class EndSignals {
public:
    explicit EndSignals(std::function<void()> wish);
    ~EndSignals();  // the signals end the process again
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;

private:
    const std::function<void()> wish_;
    int readEnd_ = -1;
    std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace kalmora::qt
