// StopToken, StopSource, StopRounds: the one way to ask a worker to leave.
//
// Whoever starts work makes a source and keeps it; the work gets the source's token and tests it between any
// two slow steps. A token may have parents: it is stopped as soon as its own source or any parent is, so that
// the end of the program, a newer load and the closing of a view all end the same work.
#pragma once

#include <atomic>
#include <initializer_list>
#include <memory>
#include <mutex>

namespace kalmora {

class WorkGate;

// Small and copyable. Any thread.
class StopToken {
public:
    StopToken() = default;  // never stopped
    // Stopped while the holder of the gate is asked to leave. The gate outlives the token.
    explicit StopToken(const WorkGate& gate);
    // Stopped while the flag is raised: of a stop that is state and may be lowered again. The flag outlives
    // the token.
    explicit StopToken(const std::atomic<bool>& flag);
    // Stopped as soon as any of these is.
    static StopToken AnyOf(std::initializer_list<StopToken> tokens);

    // Costs an atomic read for the source and each of its parents.
    bool IsStopped() const;
    // Waits for the time given, or until the token is stopped: a request wakes it at once, also one at a
    // gate; a raised flag or one of a signal handler within 50 ms. True when stopped.
    bool WaitFor(int milliseconds) const;

private:
    friend class StopSource;
    struct Node;
    explicit StopToken(std::shared_ptr<const Node> node) : node_(std::move(node)) {}
    std::shared_ptr<const Node> node_;  // null: never stopped
};

// Any thread. When the source goes, its tokens stay as they are.
class StopSource {
public:
    explicit StopSource(std::initializer_list<StopToken> parents = {});
    // For good; wakes who waits.
    void RequestStop();
    // The same for a signal handler, which may neither lock nor wake.
    void RequestStopInSignal() noexcept;
    StopToken Token() const;

private:
    std::shared_ptr<StopToken::Node> node_;
};

// Stops all work that has begun, and none that begins later. Any thread.
class StopRounds {
public:
    StopRounds() = default;
    StopRounds(const StopRounds&) = delete;
    StopRounds& operator=(const StopRounds&) = delete;

    // Of work that begins now.
    StopToken Token() const;
    void StopAllSoFar();

private:
    mutable std::mutex mutex_;
    StopSource current_;  // guarded by mutex_
};

}  // namespace kalmora
