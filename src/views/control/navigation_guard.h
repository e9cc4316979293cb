// The guard of every navigation command: one change at a time, and none while a reload is being stopped.
#pragma once

#include "state/app_state.h"

namespace kalmora {

class NavigationGuard {
public:
    NavigationGuard() {
        AppState& state = State();
        if (state.run.ObjectGate.IsStopRequested()) return;
        entered_ = state.run.ObjectQueue.Lock(1, 100) != TicketLock::kRefused;
    }
    ~NavigationGuard() {
        // Pops the head: the next in the queue has waited longest and continues.
        if (entered_) State().run.ObjectQueue.Unlock();
    }
    NavigationGuard(const NavigationGuard&) = delete;
    NavigationGuard& operator=(const NavigationGuard&) = delete;
    explicit operator bool() const { return entered_; }

private:
    bool entered_ = false;
};

}  // namespace kalmora
