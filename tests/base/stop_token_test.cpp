#include "base/stop_token.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "base/work_gate.h"

namespace kalmora {
namespace {

using Clock = std::chrono::steady_clock;

double MsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

TEST(StopToken, OfNobodyIsNeverStopped) {
    const StopToken token;
    EXPECT_FALSE(token.IsStopped());
    EXPECT_FALSE(token.WaitFor(0));
}

TEST(StopToken, IsStoppedForGoodByItsSource) {
    StopSource source;
    const StopToken token = source.Token(), copy = token;
    EXPECT_FALSE(token.IsStopped());
    source.RequestStop();
    EXPECT_TRUE(token.IsStopped());
    EXPECT_TRUE(copy.IsStopped());
    EXPECT_TRUE(source.Token().IsStopped());
}

TEST(StopToken, OutlivesItsSource) {
    StopToken running, stopped;
    {
        StopSource one, other;
        running = one.Token();
        stopped = other.Token();
        other.RequestStop();
    }
    EXPECT_FALSE(running.IsStopped());
    EXPECT_TRUE(stopped.IsStopped());
}

TEST(StopToken, ChildIsStoppedByAnyParentAndStopsNone) {
    StopSource program, load;
    StopSource child({program.Token(), load.Token()});
    StopSource grandchild({child.Token()});
    child.RequestStop();
    EXPECT_FALSE(program.Token().IsStopped());
    EXPECT_TRUE(grandchild.Token().IsStopped());

    StopSource other({program.Token(), load.Token()});
    EXPECT_FALSE(other.Token().IsStopped());
    load.RequestStop();
    EXPECT_TRUE(other.Token().IsStopped());
    EXPECT_FALSE(program.Token().IsStopped());
}

TEST(StopToken, AnyOfIsStoppedByEach) {
    StopSource one, other;
    const StopToken both = StopToken::AnyOf({one.Token(), StopToken(), other.Token()});
    EXPECT_FALSE(both.IsStopped());
    other.RequestStop();
    EXPECT_TRUE(both.IsStopped());
}

TEST(StopToken, OfAGateIsStoppedWhileItsHolderIsAskedToLeave) {
    WorkGate gate;
    const StopToken token(gate);
    gate.RequestStop();
    EXPECT_FALSE(token.IsStopped()) << "no source holds it";
    ASSERT_TRUE(gate.Acquire("first"));
    EXPECT_FALSE(token.IsStopped());
    gate.RequestStop();
    EXPECT_TRUE(token.IsStopped());
    gate.Release();
    EXPECT_FALSE(token.IsStopped());
}

TEST(StopToken, OfAFlagIsStoppedWhileItIsRaised) {
    std::atomic<bool> flag = false;
    const StopToken token(flag);
    EXPECT_FALSE(token.IsStopped());
    flag = true;
    EXPECT_TRUE(token.IsStopped());
    EXPECT_TRUE(token.WaitFor(60'000));
    flag = false;
    EXPECT_FALSE(token.IsStopped());
}

TEST(StopToken, WaitLastsItsTimeWhereNobodyStops) {
    StopSource source;
    const auto start = Clock::now();
    EXPECT_FALSE(source.Token().WaitFor(60));
    EXPECT_GE(MsSince(start), 60);
}

TEST(StopToken, StopOfAParentWakesWhoWaits) {
    StopSource parent;
    const StopSource child({parent.Token()});
    std::thread stopper([&] { parent.RequestStop(); });
    EXPECT_TRUE(child.Token().WaitFor(60'000));
    stopper.join();
}

TEST(StopToken, StopThatCannotWakeIsFeltAllTheSame) {
    StopSource inSignal;
    WorkGate gate;
    ASSERT_TRUE(gate.Acquire("holder"));
    std::thread stopper([&] {
        inSignal.RequestStopInSignal();
        gate.RequestStop();
    });
    EXPECT_TRUE(inSignal.Token().WaitFor(60'000));
    EXPECT_TRUE(StopToken(gate).WaitFor(60'000));
    stopper.join();
}

TEST(StopRounds, StopWhatHasBegunAndNothingLater) {
    StopRounds rounds;
    const StopToken before = rounds.Token();
    rounds.StopAllSoFar();
    const StopToken after = rounds.Token();
    EXPECT_TRUE(before.IsStopped());
    EXPECT_FALSE(after.IsStopped());
    rounds.StopAllSoFar();
    EXPECT_TRUE(after.IsStopped());
}

}  // namespace
}  // namespace kalmora
