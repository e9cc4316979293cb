#include "platform/thread.h"

#include <pthread.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <system_error>
#include <thread>
#include <utility>

namespace kalmora {

namespace {

// Nice values that stand for the priorities. Only a privileged program may go below 0.
int NiceValue(Thread::Priority priority) {
    switch (priority) {
        case Thread::Priority::Lowest:
            return 10;
        case Thread::Priority::Highest:
            return -5;
        case Thread::Priority::Normal:
            break;
    }
    return 0;
}

void NameThisThread(const std::string& name) {
    pthread_setname_np(pthread_self(), name.substr(0, 15).c_str());
}

}  // namespace

struct Thread::State {
    mutable std::mutex mutex;
    std::condition_variable changed;
    // All guarded by mutex.
    std::function<void()> body;
    bool resumed = false;
    bool dropped = false;
    bool running = true;
    pid_t id = 0;  // of the kernel's thread; 0 until it has come up and again once it has ended
    Priority priority = Priority::Normal;

    void ApplyPriority() const {
        // A refusal is no failure: the worker then runs as the others do.
        if (id != 0) setpriority(PRIO_PROCESS, static_cast<id_t>(id), NiceValue(priority));
    }

    void Run(const std::string& name) {
        NameThisThread(name);
        std::unique_lock lock(mutex);
        id = gettid();
        if (priority != Priority::Normal) ApplyPriority();
        changed.wait(lock, [this] { return resumed || dropped; });
        if (resumed) {
            std::function<void()> work = std::move(body);
            lock.unlock();
            work();
            work = nullptr;  // what the body owns is gone before anybody is told of the end
            lock.lock();
        }
        id = 0;
        running = false;
        changed.notify_all();
    }
};

Thread::~Thread() {
    if (!state_) return;
    std::function<void()> unused;
    std::lock_guard lock(state_->mutex);
    if (state_->resumed) return;
    unused = std::move(state_->body);
    state_->body = nullptr;
    state_->dropped = true;
    state_->changed.notify_all();
}

Thread::Thread(Thread&& other) noexcept = default;

Thread& Thread::operator=(Thread&& other) noexcept {
    if (this != &other) {
        Thread old;
        old.state_ = std::exchange(state_, std::move(other.state_));
    }
    return *this;
}

bool Thread::StartSuspended(const char* name, std::function<void()> body) {
    auto state = std::make_shared<State>();
    state->body = std::move(body);
    try {
        std::thread([state, threadName = std::string(name ? name : "")] { state->Run(threadName); }).detach();
    } catch (const std::system_error&) {
        return false;
    }
    Thread started;
    started.state_ = std::move(state);
    *this = std::move(started);
    return true;
}

void Thread::SetPriority(Priority priority) {
    if (!state_) return;
    std::lock_guard lock(state_->mutex);
    state_->priority = priority;
    state_->ApplyPriority();
}

void Thread::Resume() {
    if (!state_) return;
    std::lock_guard lock(state_->mutex);
    state_->resumed = true;
    state_->changed.notify_all();
}

bool Thread::IsRunning() const {
    if (!state_) return false;
    std::lock_guard lock(state_->mutex);
    return state_->running;
}

bool Thread::WaitForEnd(int milliseconds) const {
    if (!state_) return true;
    std::unique_lock lock(state_->mutex);
    return state_->changed.wait_for(lock, std::chrono::milliseconds(std::max(milliseconds, 0)),
                                    [this] { return !state_->running; });
}

struct PeriodicTimer::State {
    using Clock = std::chrono::steady_clock;

    mutable std::mutex mutex;
    std::condition_variable changed;
    bool stop = false;   // guarded by mutex
    bool ended = false;  // guarded by mutex
    std::thread::id id;  // guarded by mutex; of the timer's thread
    // Set before the thread starts, then its own.
    Clock::duration period{};
    std::function<void()> tick;
    std::shared_ptr<State> previous;  // a run that was stopped from inside its own call and may not be over

    void WaitUntilEnded() {
        std::unique_lock lock(mutex);
        changed.wait(lock, [this] { return ended; });
    }

    void Run() {
        NameThisThread("timer");
        if (previous) previous->WaitUntilEnded();
        previous.reset();
        std::unique_lock lock(mutex);
        Clock::time_point next = Clock::now() + period;
        while (!stop) {
            if (changed.wait_until(lock, next, [this] { return stop; })) break;
            lock.unlock();
            tick();
            lock.lock();
            // Stay on the grid; the beats that passed during a long call are left out.
            next += period;
            const Clock::time_point now = Clock::now();
            if (next < now) next += ((now - next) / period + 1) * period;
        }
        lock.unlock();
        tick = nullptr;
        lock.lock();
        ended = true;
        changed.notify_all();
    }
};

PeriodicTimer::PeriodicTimer() = default;

PeriodicTimer::~PeriodicTimer() { Stop(); }

bool PeriodicTimer::Start(int periodMs, std::function<void()> tick) {
    if (periodMs <= 0 || !tick || IsRunning()) return false;
    auto state = std::make_shared<State>();
    state->period = std::chrono::milliseconds(periodMs);
    state->tick = std::move(tick);
    state->previous = state_;
    try {
        // The thread's own number is known to Stop before the first call can be made.
        std::lock_guard lock(state->mutex);
        std::thread thread([state] { state->Run(); });
        state->id = thread.get_id();
        thread.detach();
    } catch (const std::system_error&) {
        return false;
    }
    state_ = std::move(state);
    return true;
}

void PeriodicTimer::Stop() {
    if (!state_) return;
    std::unique_lock lock(state_->mutex);
    state_->stop = true;
    state_->changed.notify_all();
    if (state_->id == std::this_thread::get_id()) return;
    state_->changed.wait(lock, [this] { return state_->ended; });
}

bool PeriodicTimer::IsRunning() const {
    if (!state_) return false;
    std::lock_guard lock(state_->mutex);
    return !state_->stop;
}

int ProcessorCount() { return std::max(1, static_cast<int>(std::thread::hardware_concurrency())); }

}  // namespace kalmora
