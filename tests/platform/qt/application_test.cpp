#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QGuiApplication>
#include <atomic>
#include <thread>

#include "platform/window.h"
#include "support.h"

namespace kalmora {
namespace {

using namespace test;
using testing::ElementsAre;

TEST(Application, IsOneForTheProcess) {
    ASSERT_NE(TheApplication(), nullptr);
    EXPECT_FALSE(Application::Create("Second", Application::Display::None));
    EXPECT_NE(TheApplication(), nullptr);
}

TEST(Application, KnowsItsThread) {
    EXPECT_TRUE(TheApplication()->IsGuiThread());
    std::thread([] { EXPECT_FALSE(TheApplication()->IsGuiThread()); }).join();
}

TEST(Application, PostedWorkIsDoneLaterAndInItsOrder) {
    std::vector<int> done;
    for (int i = 0; i < 5; ++i) TheApplication()->Post([&done, i] { done.push_back(i); });
    EXPECT_TRUE(done.empty());
    ServeAll();
    EXPECT_THAT(done, ElementsAre(0, 1, 2, 3, 4));
}

TEST(Application, WorkOfManyThreadsIsDoneOnTheGuiThreadEachInItsOrder) {
    constexpr int kThreads = 4, kEach = 200;
    std::vector<std::vector<int>> done(kThreads);
    std::vector<std::thread> threads;
    int count = 0;
    for (int t = 0; t < kThreads; ++t)
        threads.emplace_back([&done, &count, t] {
            for (int i = 0; i < kEach; ++i)
                TheApplication()->Post([&done, &count, t, i] {
                    EXPECT_TRUE(TheApplication()->IsGuiThread());
                    done[static_cast<std::size_t>(t)].push_back(i);
                    ++count;
                });
        });
    EXPECT_TRUE(ServeUntil([&count] { return count == kThreads * kEach; }));
    for (std::thread& thread : threads) thread.join();
    for (const std::vector<int>& each : done) EXPECT_TRUE(std::is_sorted(each.begin(), each.end()));
}

TEST(Application, WorkThatRunsALoopDoesNotHoldUpWhatWaitsBehindIt) {
    std::vector<int> done;
    TheApplication()->Post([&done] {
        done.push_back(1);
        EXPECT_TRUE(ServeUntil([&done] { return done.size() == 2; }));
        done.push_back(3);
    });
    TheApplication()->Post([&done] { done.push_back(2); });
    ServeAll();
    EXPECT_THAT(done, ElementsAre(1, 2, 3));
}

TEST(Application, ProcessEventsReturnsWhenNothingHappens) {
    ServeAll();
    const auto start = std::chrono::steady_clock::now();
    TheApplication()->ProcessEvents(20);
    TheApplication()->ProcessEvents(0);
    TheApplication()->ProcessEvents(-5);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

TEST(Application, QuestionsOnADisplayThatNobodySeesAreAnsweredNo) {
    if (QGuiApplication::platformName() != QLatin1String("offscreen"))
        GTEST_SKIP() << "a user may see it and is asked";
    EXPECT_EQ(ShowMessage(nullptr, "title", "text", MessageButtons::YesNo), MessageAnswer::No);
    EXPECT_EQ(ShowMessage(nullptr, "title", "text", MessageButtons::Ok), MessageAnswer::Ok);
    EXPECT_FALSE(ChooseFolder(nullptr, "title", "/"));
}

// The last one of all, since a process has one loop: quitting cannot be undone.
TEST(ZApplication, RunEndsWithQuitsCode) {
    std::thread([] { TheApplication()->Quit(7); }).join();
    EXPECT_EQ(TheApplication()->Run(), 7);
    EXPECT_EQ(TheApplication()->Run(), 7) << "what was quit once stays so";
}

}  // namespace
}  // namespace kalmora
