#include "base/ticket_lock.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

namespace kalmora {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

TEST(TicketLock, TheFirstHasItAtOnceAndHoldsATicket) {
    TicketLock lock;
    const TicketLock::Ticket ticket = lock.Lock(1, 100);
    EXPECT_GT(ticket, 0.0);
    EXPECT_LE(ticket, 10000.0);
    lock.Unlock(ticket);
    EXPECT_NE(lock.Lock(1, 100), TicketLock::kRefused);
}

TEST(TicketLock, AWaitThatRunsOutIsRefusedAndLeavesTheHolderItsLock) {
    TicketLock lock;
    const TicketLock::Ticket holder = lock.Lock(1, 10);
    const auto start = Clock::now();
    EXPECT_EQ(lock.Lock(5, 10), TicketLock::kRefused);
    EXPECT_GE(Clock::now() - start, 45ms);
    EXPECT_EQ(lock.Lock(1, 1), TicketLock::kRefused);
    lock.Unlock(holder);
    EXPECT_NE(lock.Lock(1, 10), TicketLock::kRefused);
}

TEST(TicketLock, MoreThanSoManyWaitingIsRefusedWithoutAWait) {
    TicketLock lock;
    lock.Lock(0, 0);
    const auto start = Clock::now();
    EXPECT_EQ(lock.Lock(0, 60000), TicketLock::kRefused);
    EXPECT_LT(Clock::now() - start, 10s);
}

TEST(TicketLock, ItGoesToTheFirstThatCameAndALaterOneIsRefusedWhileTooManyWait) {
    TicketLock lock;
    const TicketLock::Ticket holder = lock.Lock(1, 10);
    std::atomic<TicketLock::Ticket> second = TicketLock::kRefused;
    std::thread waiting([&] { second = lock.Lock(100, 600); });
    // Once the other thread queues behind the holder, one try is not enough to join it. Until then
    // the call waits its second and gives up.
    bool refusedAtOnce = false;
    for (int looks = 0; looks < 20 && !refusedAtOnce; ++looks) {
        const auto start = Clock::now();
        EXPECT_EQ(lock.Lock(1, 1000), TicketLock::kRefused);
        refusedAtOnce = Clock::now() - start < 900ms;
    }
    EXPECT_TRUE(refusedAtOnce);
    EXPECT_EQ(second, TicketLock::kRefused);
    lock.Unlock(holder);
    waiting.join();
    EXPECT_NE(second, TicketLock::kRefused);
    lock.Unlock(second);
    EXPECT_NE(lock.Lock(1, 10), TicketLock::kRefused);
}

TEST(TicketLock, AnyThreadMayGiveATicketBack) {
    TicketLock lock;
    const TicketLock::Ticket ticket = lock.Lock(1, 10);
    std::thread([&] { lock.Unlock(ticket); }).join();
    EXPECT_NE(lock.Lock(1, 10), TicketLock::kRefused);
}

TEST(TicketLock, ARefusedTicketGivenBackFreesWhoeverHolds) {
    TicketLock lock;
    lock.Lock(1, 10);
    lock.Unlock(TicketLock::kRefused);
    EXPECT_NE(lock.Lock(1, 10), TicketLock::kRefused);
}

TEST(TicketLock, ATicketThatIsNotInLineChangesNothing) {
    TicketLock lock;
    lock.Unlock(TicketLock::kRefused);
    const TicketLock::Ticket ticket = lock.Lock(1, 10);
    lock.Unlock(ticket + 0.5);
    EXPECT_EQ(lock.Lock(1, 1), TicketLock::kRefused);
    lock.Unlock(ticket);
    lock.Unlock(ticket);
    EXPECT_NE(lock.Lock(1, 10), TicketLock::kRefused);
}

TEST(TicketLock, OneThreadAtATimeHoldsIt) {
    TicketLock lock;
    int inside = 0, most = 0, done = 0;  // touched by the holder only: the thread sanitizer would report it
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&] {
            for (int n = 0; n < 200; ++n) {
                const TicketGuard guard(lock, 1000, 60);
                if (!guard) continue;
                most = std::max(most, ++inside);
                --inside;
                ++done;
            }
        });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(most, 1);
    EXPECT_EQ(done, 800);
}

TEST(TicketGuard, GivesTheLockBackAtTheEndOfItsScope) {
    TicketLock lock;
    {
        const TicketGuard guard(lock, 1, 10);
        EXPECT_TRUE(guard);
        const TicketGuard second(lock, 1, 1);
        EXPECT_FALSE(second);
    }
    const TicketGuard again(lock, 1, 10);
    EXPECT_TRUE(again);
}

TEST(TicketGuard, ARefusedOneLeavesTheHolderItsLock) {
    TicketLock lock;
    const TicketLock::Ticket holder = lock.Lock(1, 10);
    { const TicketGuard refused(lock, 1, 1); }
    EXPECT_EQ(lock.Lock(1, 1), TicketLock::kRefused);
    lock.Unlock(holder);
}

}  // namespace
}  // namespace kalmora
