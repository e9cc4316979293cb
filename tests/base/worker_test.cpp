#include "base/worker.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>

namespace kalmora {
namespace {

constexpr int kLong = 60'000;  // milliseconds

TEST(Worker, HandleOfNothingHasEnded) {
    const Worker none;
    EXPECT_FALSE(none.IsStarted());
    EXPECT_FALSE(none.IsRunning());
    EXPECT_TRUE(none.WaitAtMost(0));
    none.RequestStop();
}

TEST(Worker, RunsItsBodyOnceAndEnds) {
    std::atomic<int> runs = 0;
    const Worker worker = StartWorker("test", Worker::Priority::Normal, [&](const StopToken&) { ++runs; });
    ASSERT_TRUE(worker.IsStarted());
    EXPECT_TRUE(worker.WaitAtMost(kLong));
    EXPECT_FALSE(worker.IsRunning());
    EXPECT_EQ(runs, 1);
}

TEST(Worker, LeavesWhenItsHandleOrTheParentSaysSo) {
    const auto waits = [](const StopToken& stop) { stop.WaitFor(kLong); };
    const Worker own = StartWorker("own", Worker::Priority::Lowest, waits);
    EXPECT_TRUE(own.IsRunning());
    EXPECT_FALSE(own.WaitAtMost(0));
    own.RequestStop();
    EXPECT_TRUE(own.WaitAtMost(kLong));

    StopSource parent;
    const Worker child = StartWorker("child", Worker::Priority::Highest, waits, parent.Token());
    parent.RequestStop();
    EXPECT_TRUE(child.WaitAtMost(kLong));
}

TEST(Worker, GoesOnWhenNobodyHoldsAHandle) {
    StopSource done;
    const auto owned = std::make_shared<int>(0);
    StartWorker("alone", Worker::Priority::Normal, [owned, done](const StopToken&) mutable {
        ++*owned;
        done.RequestStop();
    });
    EXPECT_TRUE(done.Token().WaitFor(kLong));
    EXPECT_EQ(*owned, 1);
}

TEST(Worker, WhatTheBodyOwnsIsGoneWhenItHasEnded) {
    const auto owned = std::make_shared<int>(0);
    const Worker worker = StartWorker("owner", Worker::Priority::Normal, [owned](const StopToken&) {});
    worker.WaitForEnd();
    EXPECT_EQ(owned.use_count(), 1);
}

}  // namespace
}  // namespace kalmora
