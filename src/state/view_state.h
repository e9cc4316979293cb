// ViewState: which period is on the screen, and how.
#pragma once

#include <mutex>

#include "state/period.h"

namespace kalmora {

// A value: whoever paints or loads takes one and works with it.
struct ViewState {
    Period period;
    bool scatter = false;          // the period's objects lie strewn over the window
    bool searchResult = false;     // what a search has found is shown instead of the folders
    bool searchAllLoaded = false;  // and it looks in everything that is loaded
    friend bool operator==(const ViewState&, const ViewState&) = default;
};

// The view in force. Replaced as a whole, so that no thread ever sees half a change. Any thread.
class SharedView {
public:
    ViewState Now() const {
        std::lock_guard lock(mutex_);
        return now_;
    }
    // `change` gets a copy of the view and writes into it what becomes the view. It is called under the lock:
    // it computes and does nothing else.
    template <typename Compute>
    void Change(Compute change) {
        std::lock_guard lock(mutex_);
        ViewState next = now_;
        change(next);
        now_ = next;
    }

private:
    mutable std::mutex mutex_;
    ViewState now_;  // guarded by mutex_
};

}  // namespace kalmora
