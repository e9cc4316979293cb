// Threads that start suspended, have a priority and can be asked whether they still run; a periodic timer.
#pragma once

#include <functional>
#include <memory>

namespace kalmora {

// A worker. It is never joined and never terminated: when the Thread object goes, a running body runs on
// (one that was never resumed is dropped). What the body touches must therefore outlive it or be owned
// by it. Starting and moving belong to one thread at a time; the other members may be called from any.
class Thread {
public:
    // Above-normal 2, normal 0, lowest -2. The system may refuse a raise; it is then as if 0.
    enum class Priority { Lowest = -2, Normal = 0, Highest = 2 };

    Thread() = default;
    ~Thread();
    Thread(Thread&&) noexcept;
    Thread& operator=(Thread&&) noexcept;

    // Makes the thread without running its body. The name (at most 15 bytes) shows in debuggers. False when
    // the system cannot make another thread.
    bool StartSuspended(const char* name, std::function<void()> body);
    void SetPriority(Priority priority);
    void Resume();
    // True from StartSuspended until the body has returned.
    bool IsRunning() const;
    // Waits for the end of the body; false when it still runs after the time. For tests and for the last
    // gate.
    bool WaitForEnd(int milliseconds) const;

private:
    struct State;
    std::shared_ptr<State> state_;
};

// Calls back on a thread of its own, first after one full period; accurate to 100 ms. A call that lasts
// longer than the period delays the next one; calls never overlap and never queue up. Any thread, the
// callback included.
class PeriodicTimer {
public:
    PeriodicTimer();
    ~PeriodicTimer();  // stops; waits for a running call unless it is called from that very call
    PeriodicTimer(const PeriodicTimer&) = delete;
    PeriodicTimer& operator=(const PeriodicTimer&) = delete;

    // False when it runs already, when the period is below 1, or when the system cannot make another thread.
    bool Start(int periodMs, std::function<void()> tick);
    void Stop();  // waits as the destructor does
    bool IsRunning() const;

private:
    struct State;
    std::shared_ptr<State> state_;
};

int ProcessorCount();

}  // namespace kalmora
