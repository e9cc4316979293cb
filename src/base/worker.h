// StartWorker: the one way to start work on a thread of its own.
#pragma once

#include <functional>
#include <memory>

#include "base/stop_token.h"
#include "platform/thread.h"

namespace kalmora {

// A handle on work that was started. Copies are handles on the same work. When the last one goes the work
// goes on: what its body uses must outlive it or be owned by it. Any thread; a handle itself is one thread's
// at a time.
class Worker {
public:
    using Priority = Thread::Priority;

    Worker() = default;  // of nothing: not started, never runs
    // False when the system had no more threads: the body has not run and never will.
    bool IsStarted() const { return state_ != nullptr; }
    // True until the body has returned.
    bool IsRunning() const;
    void RequestStop() const;  // returns at once
    // True when the body has returned, or was never started.
    bool WaitAtMost(int milliseconds) const;
    void WaitForEnd() const;

private:
    struct State;
    friend Worker StartWorker(const char* name, Priority priority,
                              std::function<void(const StopToken& stop)> body, const StopToken& parent);
    std::shared_ptr<State> state_;
};

// Runs the body on a thread of its own, with a token that is stopped by RequestStop of the handle or by the
// parent. The name (at most 15 bytes) shows in debuggers. The system may refuse a raised priority; it is then
// as if Normal. Any thread.
Worker StartWorker(const char* name, Worker::Priority priority,
                   std::function<void(const StopToken& stop)> body, const StopToken& parent = {});

}  // namespace kalmora
