#include "base/stop_token.h"

#include <algorithm>
#include <chrono>
#include <utility>
#include <vector>

#include "base/stop_wakeup.h"
#include "base/work_gate.h"

namespace kalmora {

struct StopToken::Node {
    std::atomic<bool> isStopped = false;
    std::vector<StopToken> parents;  // not changed once the node is handed out
    const WorkGate* gate = nullptr;
    const std::atomic<bool>* flag = nullptr;

    bool IsStopped() const {
        if (isStopped.load(std::memory_order_acquire) || (gate && gate->IsStopRequested()) || (flag && *flag))
            return true;
        return std::any_of(parents.begin(), parents.end(),
                           [](const StopToken& parent) { return parent.IsStopped(); });
    }
};

namespace {

static_assert(std::atomic<bool>::is_always_lock_free, "it is set in a signal handler");

// How soon a stop is felt that cannot wake.
constexpr std::chrono::milliseconds kTokenLookInterval{50};

}  // namespace

StopToken::StopToken(const WorkGate& gate) {
    const auto node = std::make_shared<Node>();
    node->gate = &gate;
    node_ = node;
}

StopToken::StopToken(const std::atomic<bool>& flag) {
    const auto node = std::make_shared<Node>();
    node->flag = &flag;
    node_ = node;
}

StopToken StopToken::AnyOf(std::initializer_list<StopToken> tokens) { return StopSource(tokens).Token(); }

bool StopToken::IsStopped() const { return node_ && node_->IsStopped(); }

bool StopToken::WaitFor(int milliseconds) const {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point end = Clock::now() + std::chrono::milliseconds(std::max(milliseconds, 0));
    StopWakeup& wakeup = TheStopWakeup();
    std::unique_lock lock(wakeup.mutex);
    while (!IsStopped()) {
        const Clock::time_point now = Clock::now();
        if (now >= end) return false;
        wakeup.requested.wait_until(lock, std::min(end, now + kTokenLookInterval));
    }
    return true;
}

StopSource::StopSource(std::initializer_list<StopToken> parents)
    : node_(std::make_shared<StopToken::Node>()) {
    for (const StopToken& parent : parents)
        if (parent.node_) node_->parents.push_back(parent);
}

void StopSource::RequestStop() {
    RequestStopInSignal();
    TheStopWakeup().Notify();
}

void StopSource::RequestStopInSignal() noexcept { node_->isStopped.store(true, std::memory_order_release); }

StopToken StopSource::Token() const { return StopToken(node_); }

StopToken StopRounds::Token() const {
    std::lock_guard lock(mutex_);
    return current_.Token();
}

void StopRounds::StopAllSoFar() {
    StopSource stopped;
    {
        std::lock_guard lock(mutex_);
        std::swap(stopped, current_);
    }
    stopped.RequestStop();
}

}  // namespace kalmora
