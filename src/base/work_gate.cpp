#include "base/work_gate.h"

#include <chrono>

#include "base/log.h"
#include "base/stop_wakeup.h"

namespace kalmora {

namespace {
constexpr int kMaxLooks = 22;
constexpr std::chrono::milliseconds kLookInterval{100};
}  // namespace

bool WorkGate::Acquire(const char* name) {
    std::unique_lock lock(mutex_);
    if (waiter_) return false;
    waiter_ = true;
    if (held_) {
        stop_ = true;
        ShowStop();
        TheStopWakeup().Notify();
        // 2.2 s is the bound: the waiter is woken the moment the holder leaves.
        if (!released_.wait_for(lock, kMaxLooks * kLookInterval, [this] { return !held_; })) {
            held_ = stop_ = waiter_ = false;
            ShowStop();
            Log("[WorkGate] %s goes on without waiting any longer", name);
            return true;
        }
    }
    stop_ = false;
    waiter_ = false;
    held_ = true;
    ShowStop();
    return true;
}

bool WorkGate::TryAcquire() {
    std::lock_guard lock(mutex_);
    if (held_ || waiter_) return false;
    held_ = true;
    stop_ = false;
    ShowStop();
    return true;
}

void WorkGate::Release() {
    {
        std::lock_guard lock(mutex_);
        held_ = false;
        ShowStop();
    }
    released_.notify_all();
}

bool WorkGate::IsHeld() const {
    std::lock_guard lock(mutex_);
    return held_;
}

bool WorkGate::IsStopRequested() const { return isStopRequested_; }

void WorkGate::RequestStop() {
    {
        std::lock_guard lock(mutex_);
        stop_ = held_;
        ShowStop();
    }
    TheStopWakeup().Notify();
}

}  // namespace kalmora
