#include "base/worker.h"

#include <limits>
#include <utility>

namespace kalmora {

struct Worker::State {
    explicit State(const StopToken& parent) : stop({parent}) {}

    StopSource stop;
    Thread thread;
};

bool Worker::IsRunning() const { return state_ && state_->thread.IsRunning(); }

void Worker::RequestStop() const {
    if (state_) state_->stop.RequestStop();
}

bool Worker::WaitAtMost(int milliseconds) const { return !state_ || state_->thread.WaitForEnd(milliseconds); }

void Worker::WaitForEnd() const {
    while (!WaitAtMost(std::numeric_limits<int>::max())) continue;
}

Worker StartWorker(const char* name, Worker::Priority priority,
                   std::function<void(const StopToken& stop)> body, const StopToken& parent) {
    auto state = std::make_shared<Worker::State>(parent);
    // The body keeps the token and not the state: a thread that held itself would never go.
    if (!state->thread.StartSuspended(name,
                                      [work = std::move(body), stop = state->stop.Token()] { work(stop); }))
        return {};
    state->thread.SetPriority(priority);
    state->thread.Resume();
    Worker worker;
    worker.state_ = std::move(state);
    return worker;
}

}  // namespace kalmora
