#include "app/program_end.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <utility>

#include "base/log.h"
#include "base/worker.h"

namespace kalmora {

namespace {

// A disk that answers takes the few small files in far less.
constexpr std::chrono::milliseconds kLastSave{300};

}  // namespace

struct ProgramEnd::State {
    explicit State(Steps all) : steps(std::move(all)) {}

    // Starts the saving unless it has started. Only the starting of its thread is done under the lock.
    static void StartSaving(const std::shared_ptr<State>& state, std::unique_lock<std::mutex>& lock) {
        if (std::exchange(state->isSaving, true)) return;
        const auto body = [state](const StopToken&) {
            state->steps.save();
            std::lock_guard done(state->mutex);
            state->isSaved = true;
            state->changed.notify_all();
        };
        if (StartWorker("Save", Worker::Priority::Normal, body).IsStarted()) return;
        lock.unlock();
        body({});
        lock.lock();
    }

    // Until the time is up or the object has gone.
    static void Watch(const std::shared_ptr<State>& state) {
        std::unique_lock lock(state->mutex);
        const auto isOver = [&] { return state->isOver; };
        if (state->changed.wait_until(lock, state->end - kLastSave, isOver)) return;
        StartSaving(state, lock);
        if (state->changed.wait_until(lock, state->end, isOver)) return;
        lock.unlock();
        Log("[End] the time is up");
        state->steps.leave();
    }

    const Steps steps;
    std::mutex mutex;
    std::condition_variable changed;
    // All guarded by mutex.
    bool hasBegun = false, isSaving = false, isSaved = false, isOver = false;
    std::chrono::steady_clock::time_point end;
};

ProgramEnd::ProgramEnd(Steps steps) : state_(std::make_shared<State>(std::move(steps))) {}

ProgramEnd::~ProgramEnd() {
    std::lock_guard lock(state_->mutex);
    state_->isOver = true;
    state_->changed.notify_all();
}

void ProgramEnd::Begin() {
    {
        std::lock_guard lock(state_->mutex);
        if (std::exchange(state_->hasBegun, true)) return;
        state_->end = std::chrono::steady_clock::now() + std::chrono::milliseconds(state_->steps.longestMs);
    }
    StartWorker("ProgramEnd", Worker::Priority::Normal,
                [state = state_](const StopToken&) { State::Watch(state); });
}

bool ProgramEnd::Save() {
    Begin();
    std::unique_lock lock(state_->mutex);
    State::StartSaving(state_, lock);
    return state_->changed.wait_until(lock, state_->end, [this] { return state_->isSaved; });
}

int ProgramEnd::MsLeft() const {
    std::lock_guard lock(state_->mutex);
    if (!state_->hasBegun) return state_->steps.longestMs;
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(state_->end - std::chrono::steady_clock::now());
    return std::max(0, static_cast<int>(left.count()));
}

}  // namespace kalmora
