// WorkGate: who may work on the object lists (or a month), one worker at a time, with a bounded, polite wait.
#pragma once

#include <atomic>
#include <condition_variable>
#include <mutex>

namespace kalmora {

// Three flags: held, stop, waiter. A newcomer who finds it held asks the holder to stop, which wakes a holder
// that waits on a StopToken of the gate, and waits itself until the holder has left, for at most 22 times
// 100 ms; then it goes on as if the gate were free, so that a stuck worker can never freeze the
// program. Any thread; every member is guarded by one mutex that is held for the flag changes only.
class WorkGate {
public:
    // False when another newcomer waits already. True otherwise: either the gate is now held, or the wait ran
    // out, all three flags are clear, and the caller goes on without holding it. The name is for the log.
    bool Acquire(const char* name);
    // Takes the gate if it is free and nobody waits for it; asks nobody to stop.
    bool TryAcquire();
    // Clears held; a waiter goes on at once.
    void Release();

    bool IsHeld() const;
    // True when the holder has been asked to leave: held and stop are both set. Costs an atomic read.
    bool IsStopRequested() const;
    // stop := held, as the month's stop request does.
    void RequestStop();

private:
    void ShowStop() { isStopRequested_ = held_ && stop_; }

    mutable std::mutex mutex_;
    std::condition_variable released_;
    bool held_ = false;                          // guarded by mutex_
    bool stop_ = false;                          // guarded by mutex_
    bool waiter_ = false;                        // guarded by mutex_
    std::atomic<bool> isStopRequested_ = false;  // held_ && stop_; written under mutex_
};

}  // namespace kalmora
