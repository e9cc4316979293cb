#include "platform/thread.h"

#include <pthread.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>
#include <system_error>
#include <thread>
#include <utility>

namespace kalmora {

namespace {

constexpr int kLowestNice = -20, kHighestNice = 19;

// What a priority adds to the nice value of the whole program, which may itself have been started as a nice
// one. Only a privileged program may lower its own.
int NicenessOf(Thread::Priority priority) {
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
        if (id != 0) {
            const int own = getpriority(PRIO_PROCESS, static_cast<id_t>(getpid()));
            setpriority(PRIO_PROCESS, static_cast<id_t>(id),
                        std::clamp(own + NicenessOf(priority), kLowestNice, kHighestNice));
        }
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
            work = nullptr;  // what the body owns is gone before the end is reported
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

// Not anonymous: a member of PeriodicTimer holds one.
namespace timer {

// The timer whose call runs on this thread; 0 outside of such calls. A timer is known by a number, since
// another one may be made at its address.
thread_local std::uint64_t timerInCall = 0;

// One run of a timer, from Start to Stop. The timer's thread keeps it alive, also when the timer is gone.
class TimerRun : public std::enable_shared_from_this<TimerRun> {
public:
    using Clock = std::chrono::steady_clock;

    // previous: a run that was stopped from inside its own call and may not be over yet.
    TimerRun(std::uint64_t timer, Clock::duration period, std::function<void()> tick,
             std::shared_ptr<TimerRun> previous)
        : timer_(timer), period_(period), tick_(std::move(tick)), previous_(std::move(previous)) {}

    bool Start() {
        try {
            std::thread([run = shared_from_this()] { run->Run(); }).detach();
        } catch (const std::system_error&) {
            return false;
        }
        return true;
    }

    void Stop() {
        std::unique_lock lock(mutex_);
        stop_ = true;
        changed_.notify_all();
        if (timerInCall == timer_) return;  // waiting for itself, or for a run that waits for this call
        changed_.wait(lock, [this] { return ended_; });
    }

    bool IsStopped() const {
        std::lock_guard lock(mutex_);
        return stop_;
    }

private:
    void WaitUntilEnded() {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return ended_; });
    }

    void Run() {
        NameThisThread("timer");
        if (previous_) previous_->WaitUntilEnded();
        previous_.reset();
        std::unique_lock lock(mutex_);
        Clock::time_point next = Clock::now() + period_;
        while (!stop_) {
            if (changed_.wait_until(lock, next, [this] { return stop_; })) break;
            lock.unlock();
            timerInCall = timer_;
            tick_();
            timerInCall = 0;
            lock.lock();
            // Stay on the grid; the beats that passed during a long call are left out.
            next += period_;
            const Clock::time_point now = Clock::now();
            if (next < now) next += ((now - next) / period_ + 1) * period_;
        }
        lock.unlock();
        tick_ = nullptr;
        lock.lock();
        ended_ = true;
        changed_.notify_all();
    }

    mutable std::mutex mutex_;
    std::condition_variable changed_;
    bool stop_ = false;   // guarded by mutex_
    bool ended_ = false;  // guarded by mutex_
    const std::uint64_t timer_;
    // Set before the thread starts, then its own.
    const Clock::duration period_;
    std::function<void()> tick_;
    std::shared_ptr<TimerRun> previous_;
};

}  // namespace timer

struct PeriodicTimer::State {
    static std::uint64_t NextNumber() {
        static std::atomic<std::uint64_t> last{0};
        return ++last;
    }

    const std::uint64_t number = NextNumber();
    std::mutex mutex;
    std::shared_ptr<timer::TimerRun> run;  // guarded by mutex; the last one, stopped or not
};

PeriodicTimer::PeriodicTimer() : state_(std::make_shared<State>()) {}

PeriodicTimer::~PeriodicTimer() { Stop(); }

bool PeriodicTimer::Start(int periodMs, std::function<void()> tick) {
    if (periodMs <= 0 || !tick) return false;
    std::lock_guard lock(state_->mutex);
    if (state_->run && !state_->run->IsStopped()) return false;
    auto run = std::make_shared<timer::TimerRun>(state_->number, std::chrono::milliseconds(periodMs),
                                                 std::move(tick), state_->run);
    if (!run->Start()) return false;
    state_->run = std::move(run);
    return true;
}

void PeriodicTimer::Stop() {
    std::shared_ptr<timer::TimerRun> run;
    {
        std::lock_guard lock(state_->mutex);
        run = state_->run;
    }
    if (run) run->Stop();
}

bool PeriodicTimer::IsRunning() const {
    std::lock_guard lock(state_->mutex);
    return state_->run && !state_->run->IsStopped();
}

int ProcessorCount() { return std::max(1, static_cast<int>(std::thread::hardware_concurrency())); }

}  // namespace kalmora
