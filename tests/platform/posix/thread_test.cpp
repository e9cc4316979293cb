#include "platform/thread.h"

#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/resource.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

namespace kalmora {
namespace {

using SteadyClock = std::chrono::steady_clock;
constexpr int kLongMs = 10'000;  // never waited for when all is well

// Something that a test waits for and a worker gives.
class Signal {
public:
    void Give() {
        std::lock_guard lock(mutex_);
        ++given_;
        changed_.notify_all();
    }
    bool Wait(int count = 1) {
        std::unique_lock lock(mutex_);
        return changed_.wait_for(lock, std::chrono::milliseconds(kLongMs), [&] { return given_ >= count; });
    }
    int Given() {
        std::lock_guard lock(mutex_);
        return given_;
    }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    int given_ = 0;
};

TEST(Thread, RunsNothingBeforeItIsResumed) {
    std::atomic<bool> hasRun{false};
    Thread thread;
    ASSERT_TRUE(thread.StartSuspended("test", [&] { hasRun = true; }));
    EXPECT_TRUE(thread.IsRunning());
    EXPECT_FALSE(thread.WaitForEnd(20));
    EXPECT_FALSE(hasRun);
    thread.Resume();
    EXPECT_TRUE(thread.WaitForEnd(kLongMs));
    EXPECT_TRUE(hasRun);
    EXPECT_FALSE(thread.IsRunning());
}

TEST(Thread, IsRunningUntilItsBodyHasReturned) {
    Signal started, mayEnd;
    Thread thread;
    ASSERT_TRUE(thread.StartSuspended("test", [&] {
        started.Give();
        mayEnd.Wait();
    }));
    thread.Resume();
    ASSERT_TRUE(started.Wait());
    EXPECT_TRUE(thread.IsRunning());
    mayEnd.Give();
    EXPECT_TRUE(thread.WaitForEnd(kLongMs));
    EXPECT_FALSE(thread.IsRunning());
}

TEST(Thread, WithoutABodyIsNotRunning) {
    Thread thread;
    EXPECT_FALSE(thread.IsRunning());
    EXPECT_TRUE(thread.WaitForEnd(0));
    thread.Resume();
    thread.SetPriority(Thread::Priority::Lowest);
}

TEST(Thread, DropsItsBodyWhenItGoesBeforeItWasResumed) {
    std::atomic<bool> hasRun{false};
    auto owned = std::make_shared<int>(1);
    {
        Thread thread;
        ASSERT_TRUE(thread.StartSuspended("test", [&hasRun, owned] { hasRun = *owned == 1; }));
        EXPECT_EQ(owned.use_count(), 2);
    }
    EXPECT_EQ(owned.use_count(), 1) << "what the body owned is gone";
    EXPECT_FALSE(hasRun);
}

TEST(Thread, GoesOnByItselfWhenTheObjectGoes) {
    auto done = std::make_shared<Signal>();
    auto mayEnd = std::make_shared<Signal>();
    {
        Thread thread;
        ASSERT_TRUE(thread.StartSuspended("test", [done, mayEnd] {
            mayEnd->Wait();
            done->Give();
        }));
        thread.Resume();
    }
    mayEnd->Give();
    EXPECT_TRUE(done->Wait());
}

TEST(Thread, HasLetGoOfWhatItOwnedWhenItHasEnded) {
    auto owned = std::make_shared<int>(1);
    Thread thread;
    ASSERT_TRUE(thread.StartSuspended("test", [owned] {}));
    thread.Resume();
    ASSERT_TRUE(thread.WaitForEnd(kLongMs));
    EXPECT_EQ(owned.use_count(), 1);
}

TEST(Thread, MovesWithItsWorker) {
    Signal mayEnd;
    Thread first;
    ASSERT_TRUE(first.StartSuspended("test", [&] { mayEnd.Wait(); }));
    Thread second = std::move(first);
    EXPECT_FALSE(first.IsRunning());  // NOLINT: a moved-from thread is documented to have none
    EXPECT_TRUE(second.IsRunning());
    second.Resume();
    first = std::move(second);
    mayEnd.Give();
    EXPECT_TRUE(first.WaitForEnd(kLongMs));
}

TEST(Thread, CanBeStartedAgainAndDropsTheSuspendedOneBefore) {
    std::atomic<int> hasRun{0};
    Thread thread;
    ASSERT_TRUE(thread.StartSuspended("one", [&] { hasRun += 1; }));
    ASSERT_TRUE(thread.StartSuspended("two", [&] { hasRun += 2; }));
    thread.Resume();
    EXPECT_TRUE(thread.WaitForEnd(kLongMs));
    EXPECT_EQ(hasRun, 2);
}

TEST(Thread, CarriesItsNameCutToFifteenBytes) {
    std::string name;
    Thread thread;
    ASSERT_TRUE(thread.StartSuspended("BackgroundUpdateThread", [&] {
        char buffer[32] = {};
        pthread_getname_np(pthread_self(), buffer, sizeof buffer);
        name = buffer;
    }));
    thread.Resume();
    ASSERT_TRUE(thread.WaitForEnd(kLongMs));
    EXPECT_EQ(name, "BackgroundUpdat");
}

TEST(Thread, OfLowestPriorityIsNicerThanTheProgram) {
    const int own = getpriority(PRIO_PROCESS, 0);
    int niceValue = -100;
    Thread thread;
    ASSERT_TRUE(thread.StartSuspended(
        "test", [&] { niceValue = getpriority(PRIO_PROCESS, static_cast<id_t>(gettid())); }));
    thread.SetPriority(Thread::Priority::Lowest);
    thread.Resume();
    ASSERT_TRUE(thread.WaitForEnd(kLongMs));
    EXPECT_EQ(niceValue, std::min(own + 10, 19));
    EXPECT_EQ(getpriority(PRIO_PROCESS, 0), own) << "no other thread is touched";
}

TEST(Thread, TakesAPriorityAtAnyTime) {
    Signal started, mayEnd;
    Thread thread;
    thread.SetPriority(Thread::Priority::Highest);
    ASSERT_TRUE(thread.StartSuspended("test", [&] {
        started.Give();
        mayEnd.Wait();
    }));
    thread.SetPriority(Thread::Priority::Highest);  // refused without the right to it: then as if normal
    thread.Resume();
    ASSERT_TRUE(started.Wait());
    thread.SetPriority(Thread::Priority::Lowest);
    thread.SetPriority(Thread::Priority::Normal);
    mayEnd.Give();
    ASSERT_TRUE(thread.WaitForEnd(kLongMs));
    thread.SetPriority(Thread::Priority::Lowest);
    EXPECT_FALSE(thread.IsRunning());
}

TEST(PeriodicTimer, CallsBackAgainAndAgainOnAThreadOfItsOwn) {
    Signal ticks;
    std::thread::id id;
    PeriodicTimer timer;
    ASSERT_TRUE(timer.Start(5, [&] {
        id = std::this_thread::get_id();
        ticks.Give();
    }));
    EXPECT_TRUE(timer.IsRunning());
    EXPECT_TRUE(ticks.Wait(5));
    timer.Stop();
    EXPECT_FALSE(timer.IsRunning());
    EXPECT_NE(id, std::this_thread::get_id());
}

TEST(PeriodicTimer, CallsFirstAfterOneFullPeriod) {
    const auto start = SteadyClock::now();
    SteadyClock::time_point first;
    Signal ticked;
    PeriodicTimer timer;
    ASSERT_TRUE(timer.Start(60, [&] {
        if (ticked.Given() == 0) first = SteadyClock::now();
        ticked.Give();
    }));
    ASSERT_TRUE(ticked.Wait());
    timer.Stop();
    EXPECT_GE(first - start, std::chrono::milliseconds(60));
}

TEST(PeriodicTimer, MakesNoCallAfterStop) {
    std::atomic<bool> isStopped{false}, isLate{false};
    Signal ticks;
    PeriodicTimer timer;
    for (int round = 0; round < 20; ++round) {
        isStopped = false;
        ASSERT_TRUE(timer.Start(1, [&] {
            if (isStopped) isLate = true;
            ticks.Give();
        }));
        ASSERT_TRUE(ticks.Wait(ticks.Given() + 1));
        timer.Stop();
        isStopped = true;
    }
    EXPECT_FALSE(isLate);
}

TEST(PeriodicTimer, WaitsForARunningCallWhenItGoes) {
    Signal started, mayEnd;
    std::atomic<bool> isOver{false};
    auto timer = std::make_unique<PeriodicTimer>();
    ASSERT_TRUE(timer->Start(1, [&] {
        started.Give();
        mayEnd.Wait();
        isOver = true;
    }));
    ASSERT_TRUE(started.Wait());
    std::thread helper([&] { mayEnd.Give(); });
    timer.reset();
    EXPECT_TRUE(isOver);
    helper.join();
}

TEST(PeriodicTimer, NeitherOverlapsNorCatchesUpAfterALongCall) {
    std::atomic<int> inside{0};
    std::atomic<bool> hasOverlapped{false};
    std::vector<SteadyClock::time_point> starts;
    SteadyClock::time_point longCallEnd;
    Signal ticks;
    PeriodicTimer timer;
    constexpr auto kPeriod = std::chrono::milliseconds(20);
    ASSERT_TRUE(timer.Start(20, [&] {
        if (++inside > 1) hasOverlapped = true;
        if (starts.size() < 4) starts.push_back(SteadyClock::now());
        if (starts.size() == 1) {
            // A call of five periods.
            while (SteadyClock::now() < starts[0] + 5 * kPeriod) std::this_thread::yield();
            longCallEnd = SteadyClock::now();
        }
        --inside;
        ticks.Give();
    }));
    ASSERT_TRUE(ticks.Wait(4));
    timer.Stop();
    EXPECT_FALSE(hasOverlapped);
    EXPECT_GE(starts[1], longCallEnd);
    EXPECT_GT(starts[3] - starts[1], kPeriod / 2) << "the missed calls were not made up for";
}

TEST(PeriodicTimer, CanBeStoppedFromItsOwnCall) {
    Signal stopped;
    std::atomic<int> calls{0};
    PeriodicTimer timer;
    ASSERT_TRUE(timer.Start(1, [&] {
        ++calls;
        timer.Stop();
        stopped.Give();
    }));
    ASSERT_TRUE(stopped.Wait());
    EXPECT_FALSE(timer.IsRunning());
    timer.Stop();
    EXPECT_EQ(calls, 1);
}

TEST(PeriodicTimer, CanBeDestroyedFromItsOwnCall) {
    auto done = std::make_shared<Signal>();
    auto* timer = new PeriodicTimer;
    ASSERT_TRUE(timer->Start(1, [timer, done] {
        auto keep = done;  // the call is over before what it owns goes
        delete timer;
        keep->Give();
    }));
    EXPECT_TRUE(done->Wait());
}

TEST(PeriodicTimer, CanTakeAnotherPeriodInItsOwnCall) {
    Signal slow;
    PeriodicTimer timer;
    ASSERT_TRUE(timer.Start(1, [&] {
        timer.Stop();
        EXPECT_TRUE(timer.Start(2, [&] { slow.Give(); }));
    }));
    EXPECT_TRUE(slow.Wait(2));
}

TEST(PeriodicTimer, CanBeStartedAndStoppedAgainInItsOwnCall) {
    Signal done;
    std::atomic<bool> wasCalled{false};
    PeriodicTimer timer;
    ASSERT_TRUE(timer.Start(1, [&] {
        timer.Stop();
        EXPECT_TRUE(timer.Start(1, [&] { wasCalled = true; }));
        timer.Stop();
        done.Give();
    }));
    ASSERT_TRUE(done.Wait());
    timer.Stop();
    EXPECT_FALSE(timer.IsRunning());
    EXPECT_FALSE(wasCalled);
}

TEST(PeriodicTimer, RefusesAPeriodOfNothingAndASecondStart) {
    PeriodicTimer timer;
    EXPECT_FALSE(timer.Start(0, [] {}));
    EXPECT_FALSE(timer.Start(-1, [] {}));
    EXPECT_FALSE(timer.Start(1000, nullptr));
    EXPECT_FALSE(timer.IsRunning());
    EXPECT_TRUE(timer.Start(1000, [] {}));
    EXPECT_FALSE(timer.Start(1000, [] {}));
    timer.Stop();
    timer.Stop();
    EXPECT_TRUE(timer.Start(1000, [] {}));
}

TEST(PeriodicTimer, StopsAtOnceDuringALongPeriod) {
    const auto start = SteadyClock::now();
    {
        PeriodicTimer timer;
        ASSERT_TRUE(timer.Start(3'600'000, [] {}));
    }
    EXPECT_LT(SteadyClock::now() - start, std::chrono::seconds(5));
}

TEST(ProcessorCount, IsAtLeastOne) { EXPECT_GE(ProcessorCount(), 1); }

}  // namespace
}  // namespace kalmora
