#include "base/ticket_lock.h"

#include <algorithm>
#include <chrono>

#include "base/random.h"

namespace kalmora {

TicketLock::Ticket TicketLock::Lock(int tries, int sleepMs) {
    std::unique_lock lock(mutex_);
    if (std::ssize(tickets_) > tries) return kRefused;
    const Ticket ticket = Random() % 10000 + (Random() % 10000) / 10000.0 + 0.0001;
    tickets_.push_back(ticket);
    const auto bound = std::chrono::milliseconds(static_cast<long long>(tries) * sleepMs);
    const bool first =
        changed_.wait_for(lock, bound, [&] { return !tickets_.empty() && tickets_.front() == ticket; });
    if (first) return ticket;
    std::erase(tickets_, ticket);
    lock.unlock();
    changed_.notify_all();
    return kRefused;
}

void TicketLock::Unlock(Ticket ticket) {
    {
        std::lock_guard lock(mutex_);
        if (ticket == kRefused) {
            if (!tickets_.empty()) tickets_.pop_front();
        } else {
            std::erase(tickets_, ticket);
        }
    }
    changed_.notify_all();
}

}  // namespace kalmora
