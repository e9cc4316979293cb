#include "base/work_gate.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <thread>
#include <vector>

#include "base/stop_token.h"

namespace kalmora {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

// Gives the other thread its turn until the gate shows what is waited for; the bound is only for a gate that
// never does.
template <typename Condition>
bool Eventually(Condition condition) {
    for (const auto end = Clock::now() + 10s; Clock::now() < end; std::this_thread::yield())
        if (condition()) return true;
    return false;
}

TEST(WorkGate, AFreeGateIsTakenAtOnce) {
    WorkGate gate;
    EXPECT_FALSE(gate.IsHeld());
    EXPECT_TRUE(gate.Acquire("first"));
    EXPECT_TRUE(gate.IsHeld());
    EXPECT_FALSE(gate.IsStopRequested());
    gate.Release();
    EXPECT_FALSE(gate.IsHeld());
    EXPECT_TRUE(gate.Acquire("second"));
}

TEST(WorkGate, ANewcomerAsksTheHolderToLeaveAndGoesOnAsSoonAsItHas) {
    WorkGate gate;
    ASSERT_TRUE(gate.Acquire("holder"));
    bool acquired = false;
    std::thread newcomer([&] { acquired = gate.Acquire("newcomer"); });
    EXPECT_TRUE(Eventually([&] { return gate.IsStopRequested(); }));
    const auto released = Clock::now();
    gate.Release();
    newcomer.join();
    EXPECT_TRUE(acquired);
    EXPECT_LT(Clock::now() - released, 1500ms);
    EXPECT_TRUE(gate.IsHeld());
    // The stop was meant for the one who has left.
    EXPECT_FALSE(gate.IsStopRequested());
}

// Looks at intervals, the holder would cost each newcomer half of one.
TEST(WorkGate, AHolderThatWaitsIsWokenByTheNewcomer) {
    constexpr int kRounds = 20;
    WorkGate gate;
    const auto start = Clock::now();
    for (int round = 0; round < kRounds; ++round) {
        ASSERT_TRUE(gate.Acquire("holder"));
        std::thread holder([&] {
            EXPECT_TRUE(StopToken(gate).WaitFor(60'000));
            gate.Release();
        });
        EXPECT_TRUE(gate.Acquire("newcomer"));
        holder.join();
        gate.Release();
    }
    EXPECT_LT(Clock::now() - start, kRounds * 20ms);
}

TEST(WorkGate, ASecondNewcomerIsRefused) {
    WorkGate gate;
    ASSERT_TRUE(gate.Acquire("holder"));
    std::thread first([&] { EXPECT_TRUE(gate.Acquire("first")); });
    ASSERT_TRUE(Eventually([&] { return gate.IsStopRequested(); }));
    const auto start = Clock::now();
    EXPECT_FALSE(gate.Acquire("second"));
    EXPECT_LT(Clock::now() - start, 1s);  // refused, not kept waiting
    gate.Release();
    first.join();
    EXPECT_TRUE(gate.IsHeld());
}

TEST(WorkGate, AStuckHolderIsPassedByAfterTheBoundAndTheGateIsFree) {
    WorkGate gate;
    ASSERT_TRUE(gate.Acquire("stuck"));
    const auto start = Clock::now();
    EXPECT_TRUE(gate.Acquire("newcomer"));
    const auto waited = Clock::now() - start;
    EXPECT_GE(waited, 2150ms);
    EXPECT_LT(waited, 10s);
    // It goes on without holding: all three flags are clear, so that the next one is not refused either.
    EXPECT_FALSE(gate.IsHeld());
    EXPECT_FALSE(gate.IsStopRequested());
    EXPECT_TRUE(gate.Acquire("next"));
}

TEST(WorkGate, AStopIsAskedOnlyOfAHolder) {
    WorkGate gate;
    gate.RequestStop();
    EXPECT_FALSE(gate.IsStopRequested());
    ASSERT_TRUE(gate.Acquire("holder"));
    EXPECT_FALSE(gate.IsStopRequested());
    gate.RequestStop();
    EXPECT_TRUE(gate.IsStopRequested());
    gate.Release();
    EXPECT_FALSE(gate.IsStopRequested());
}

TEST(WorkGate, ATryTakesAFreeGateAloneAndAsksNobodyToLeave) {
    WorkGate gate;
    EXPECT_TRUE(gate.TryAcquire());
    EXPECT_TRUE(gate.IsHeld());
    EXPECT_FALSE(gate.TryAcquire());
    EXPECT_FALSE(gate.IsStopRequested()) << "it asks nobody to leave";
    gate.Release();
    EXPECT_TRUE(gate.TryAcquire());
    gate.RequestStop();
    gate.Release();
    EXPECT_TRUE(gate.TryAcquire());
    EXPECT_FALSE(gate.IsStopRequested()) << "the stop was for the one before";
}

TEST(WorkGate, OneThreadAtATimeWorksBehindIt) {
    WorkGate gate;
    int inside = 0;  // touched by the holder only: the thread sanitizer would report it
    int most = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&] {
            for (int n = 0; n < 200;) {
                if (!gate.Acquire("worker")) continue;
                most = std::max(most, ++inside);
                --inside;
                gate.Release();
                ++n;
            }
        });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(most, 1);
}

}  // namespace
}  // namespace kalmora
