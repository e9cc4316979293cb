// TicketLock: a first-come lock whose wait is bounded; a caller that cannot have it soon is refused.
#pragma once

#include <condition_variable>
#include <deque>
#include <mutex>

namespace kalmora {

// Not re-entrant. Any thread may take it and any thread may give it back: the ticket is the ownership, so the
// lock can be handed from the thread that starts a worker to the worker itself.
class TicketLock {
public:
    using Ticket = double;
    static constexpr Ticket kRefused = 0.0;

    // Waits for at most tries times sleepMs until the own ticket stands at the head. kRefused when more than
    // `tries` tickets wait already or when the tries are used up.
    Ticket Lock(int tries, int sleepMs);
    // Gives the ticket back; kRefused pops whatever stands at the head.
    void Unlock(Ticket ticket = kRefused);

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<Ticket> tickets_;  // guarded by mutex_; the head holds the lock
};

// Takes the lock for a scope. Test it before touching what the lock guards.
class TicketGuard {
public:
    TicketGuard(TicketLock& lock, int tries, int sleepMs) : lock_(lock), ticket_(lock.Lock(tries, sleepMs)) {}
    ~TicketGuard() {
        if (ticket_ != TicketLock::kRefused) lock_.Unlock(ticket_);
    }
    TicketGuard(const TicketGuard&) = delete;
    TicketGuard& operator=(const TicketGuard&) = delete;
    explicit operator bool() const { return ticket_ != TicketLock::kRefused; }

private:
    TicketLock& lock_;
    TicketLock::Ticket ticket_;
};

}  // namespace kalmora
