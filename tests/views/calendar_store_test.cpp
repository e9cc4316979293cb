// The workers of the store: which of them count as running.
#include "views/model/calendar_store.h"

#include <atomic>
#include <future>
#include <thread>

#include "views/control/calendar_views.h"
#include "views/load/object_loader.h"
#include "views/view_fixture.h"

namespace kalmora {
namespace {

using CalendarStoreTest = ViewTest;

TEST_F(CalendarStoreTest, TwoStoresHoldObjectsOfTheirOwn) {
    AddText(2008, 11, 3, "a.txt", "x");
    ShowDay(2008, 11, 3);
    CalendarStore other({slideShow_, music_, navigation_, commands_, filter_, observer_});
    IntroduceViews(other);
    UpdateObjects(other);
    while (other.AreWorkersRunning()) TheApplication()->ProcessEvents(1);
    EXPECT_EQ(other.CurrentDayViewer().objects.Count(), 1u);
    EXPECT_EQ(calendar_->CurrentDayViewer().objects.Count(), 0u);
}

TEST_F(CalendarStoreTest, WorkerThatWasLetGoCountsUntilItHasLeft) {
    std::promise<void> go;
    ASSERT_TRUE(calendar_->StartObjectLoader([leave = go.get_future().share()] { leave.wait(); }));
    ASSERT_TRUE(calendar_->StartObjectLoader([] {}));
    while (calendar_->IsObjectLoaderRunning()) TheApplication()->ProcessEvents(1);
    EXPECT_TRUE(calendar_->AreWorkersRunning()) << "the first one still waits";
    go.set_value();
    EXPECT_TRUE(WaitUntilIdle());
    EXPECT_FALSE(calendar_->AreWorkersRunning());
}

TEST_F(CalendarStoreTest, PaintRunThatANewerOneHasFollowedLeavesItsPaintsAlone) {
    std::promise<void> go;
    std::uint64_t first = 0, second = 0;
    ASSERT_TRUE(calendar_->StartPaintThread([&](std::uint64_t run) { first = run; }));
    ASSERT_TRUE(WaitUntilIdle());
    ASSERT_TRUE(calendar_->LeavePaintToRun()) << "the first has not ended its run";
    ASSERT_TRUE(calendar_->StartPaintThread([&second, leave = go.get_future().share()](std::uint64_t run) {
        second = run;
        leave.wait();
    }));
    EXPECT_FALSE(calendar_->TakePaintLeftToRun(first));
    EXPECT_FALSE(calendar_->EndPaintRun(first));
    EXPECT_TRUE(calendar_->LeavePaintToRun()) << "the second goes on";
    go.set_value();
    ASSERT_TRUE(WaitUntilIdle());
    EXPECT_TRUE(calendar_->TakePaintLeftToRun(second)) << "what was left to the first is its own";
    EXPECT_FALSE(calendar_->EndPaintRun(second));
    EXPECT_FALSE(calendar_->LeavePaintToRun()) << "no run goes";
}

TEST_F(CalendarStoreTest, GoesAfterItsWorkers) {
    std::atomic<bool> hasLeft = false;
    std::promise<void> go;
    ASSERT_TRUE(calendar_->StartPaintThread([&hasLeft, leave = go.get_future().share()](std::uint64_t) {
        leave.wait();
        hasLeft = true;
    }));
    std::thread release([&go] { go.set_value(); });
    calendar_.reset();
    EXPECT_TRUE(hasLeft);
    release.join();
    calendar_ = std::make_unique<CalendarStore>(
        ViewPartners{slideShow_, music_, navigation_, commands_, filter_, observer_});
}

}  // namespace
}  // namespace kalmora
