// One beat of the program's clock: each of its tests refuses on its own, in its order.
#include "app/heartbeat.h"

#include <chrono>
#include <future>
#include <thread>

#include "platform/files.h"
#include "store/data_folder.h"
#include "store/date_tree.h"
#include "unit/views/app_fixture.h"
#include "views/calendar_store.h"
#include "views/object_loader.h"

namespace kalmora {
namespace {

constexpr int kPeriod = 3;  // seconds

class HeartbeatTest : public AppTest {
protected:
    HeartbeatTest() {
        AddText(2008, 11, 13, "a.txt", "cat");
        AddText(2008, 12, 24, "b.txt", "dog");
        ShowMonth(2008, 11);
        OpenMainWindow();
        UpdateObjects();
        EXPECT_TRUE(Settle());
        state_.TimingOfPopup = kPeriod;
        state_.TicksInView = 0;
        state_.LastTickClock = clock_.now.load();
        Pointer({10, 10});
        state_.LastCursorX = state_.LastCursorY = 10;
        state_.LastActivity = 0;
    }
    ~HeartbeatTest() override { Settle(); }

    BeatEnd Beat() {
        clock_.now = clock_.now + kPeriod * 1000;
        const BeatEnd end = HeartbeatTick();
        EXPECT_TRUE(end == BeatEnd::Busy || !state_.HeartbeatBusy) << "each end leaves the next beat its way";
        return end;
    }

    TestClock clock_;
};

TEST_F(HeartbeatTest, RedrawsTheViewAndCounts) {
    EXPECT_EQ(Beat(), BeatEnd::Redrawn);
    EXPECT_EQ(Beat(), BeatEnd::Redrawn);
    EXPECT_EQ(state_.TicksInView, 2);
}

TEST_F(HeartbeatTest, NeighborWindowStopsItBeforeAnythingIsNoted) {
    neighborShown_ = true;
    const double before = state_.LastTickClock;
    EXPECT_EQ(Beat(), BeatEnd::NeighborShown);
    EXPECT_EQ(state_.LastTickClock, before);
}

TEST_F(HeartbeatTest, BeatSoonerThanNineTenthsOfThePeriodIsDropped) {
    ASSERT_EQ(Beat(), BeatEnd::Redrawn);
    const double last = state_.LastTickClock;
    clock_.now = last + kPeriod * 900 - 1;
    EXPECT_EQ(HeartbeatTick(), BeatEnd::TooSoon);
    EXPECT_EQ(state_.LastTickClock, last);
    clock_.now = last + kPeriod * 900;
    EXPECT_EQ(HeartbeatTick(), BeatEnd::Redrawn);
    EXPECT_EQ(state_.LastTickClock, last + kPeriod * 900);
}

TEST_F(HeartbeatTest, HiddenWindowGetsNone) {
    state_.MainWindowVisible = 0;
    EXPECT_EQ(Beat(), BeatEnd::Hidden);
    EXPECT_EQ(state_.LastTickClock, clock_.now) << "the time between two beats is kept all the same";
    EXPECT_EQ(state_.TicksInView, 0);
}

TEST_F(HeartbeatTest, PauseStopsIt) {
    state_.Paused = 1;
    EXPECT_EQ(Beat(), BeatEnd::PausedByUser);
    EXPECT_EQ(state_.TicksInView, 0);
}

TEST_F(HeartbeatTest, BeatInsideAnotherDoesNothing) {
    state_.HeartbeatBusy = 1;
    EXPECT_EQ(Beat(), BeatEnd::Busy);
    EXPECT_EQ(state_.HeartbeatBusy, 1) << "the mark is the other's";
    state_.HeartbeatBusy = 0;
}

TEST_F(HeartbeatTest, WaitsForTheLoader) {
    std::promise<void> go;
    ASSERT_TRUE(Calendar().StartObjectLoader([waiting = go.get_future().share()] { waiting.wait(); }));
    state_.LastCursorX = 0;
    EXPECT_EQ(Beat(), BeatEnd::WorkersRunning);
    EXPECT_EQ(state_.LastActivity, 0) << "the cursor is looked at only afterwards";
    go.set_value();
    ASSERT_TRUE(Settle());
    EXPECT_EQ(Beat(), BeatEnd::Redrawn);
}

TEST_F(HeartbeatTest, WaitsForThePaintThread) {
    std::promise<void> go;
    ASSERT_TRUE(Calendar().StartPaintThread([waiting = go.get_future().share()] {
        waiting.wait();
        Calendar().EndPaintRun();
    }));
    EXPECT_EQ(Beat(), BeatEnd::WorkersRunning);
    go.set_value();
    ASSERT_TRUE(Settle());
    EXPECT_EQ(Beat(), BeatEnd::Redrawn);
}

TEST_F(HeartbeatTest, CursorThatMovedIsActivity) {
    Beat();
    EXPECT_EQ(state_.LastActivity, 0) << "it stood still";
    for (const Point moved : {Point{11, 10}, Point{11, 9}}) {
        Pointer(moved);
        EXPECT_EQ(Beat(), BeatEnd::Redrawn);
        EXPECT_EQ(state_.LastActivity, clock_.now);
        EXPECT_EQ(state_.LastCursorX, moved.x);
        EXPECT_EQ(state_.LastCursorY, moved.y);
    }
}

TEST_F(HeartbeatTest, HeldLeftButtonStopsAllButTheActivity) {
    estimateShown_ = true;
    Pointer({300, 200}, true);
    EXPECT_EQ(Beat(), BeatEnd::ButtonDown);
    EXPECT_EQ(state_.LastActivity, clock_.now);
    EXPECT_TRUE(estimateShown_);
    EXPECT_EQ(state_.TicksInView, 0);
}

TEST_F(HeartbeatTest, RosetteThatStandsIsHiddenInsteadOfABeat) {
    ASSERT_TRUE(state_.ObjectGate.Acquire("test"));
    estimateShown_ = true;
    EXPECT_EQ(Beat(), BeatEnd::EstimateHidden);
    EXPECT_THAT(Calls(), testing::ElementsAre("HideEstimate"));
    EXPECT_EQ(Beat(), BeatEnd::GateHeld) << "the test after it, in the next beat";
    state_.ObjectGate.Release();
}

TEST_F(HeartbeatTest, HeldGateStopsItBeforeTheStartUpWork) {
    state_.FirstStartPending = state_.FirstLoadDone = 1;
    ASSERT_TRUE(state_.ObjectGate.Acquire("test"));
    EXPECT_EQ(Beat(), BeatEnd::GateHeld);
    EXPECT_EQ(state_.FirstStartPending, 1);
    state_.ObjectGate.Release();
    EXPECT_EQ(Beat(), BeatEnd::Redrawn);
    EXPECT_EQ(state_.FirstStartPending, 0);
    while (state_.InitialScanRunning) std::this_thread::yield();
}

TEST_F(HeartbeatTest, StartUpWorkWaitsForTheFirstLoadAndComesOnce) {
    state_.FirstStartPending = 1;
    state_.FirstLoadDone = 0;
    state_.InitialScanRunning = 1;
    state_.LoadIndexInitially = true;
    int preloads = 0;
    Shell().PreloadIndexes = [&] { ++preloads; };
    EXPECT_EQ(Beat(), BeatEnd::Redrawn);
    EXPECT_EQ(state_.FirstStartPending, 1);
    state_.FirstLoadDone = 1;
    // Also under an open slide show, which ends the beat only afterwards.
    slideShowOpen_ = true;
    EXPECT_EQ(Beat(), BeatEnd::SlideShowStands);
    EXPECT_EQ(state_.FirstStartPending, 0);
    while (state_.InitialScanRunning || state_.IndexPreloadRunning) std::this_thread::yield();
    EXPECT_EQ(preloads, 1);
    EXPECT_EQ(TheDateTree().Nodes(kMonthLevel).size(), 2u);
    Beat();
    EXPECT_FALSE(state_.InitialScanRunning);
    EXPECT_EQ(preloads, 1);
}

TEST_F(HeartbeatTest, OpenSlideShowStandsStill) {
    slideShowOpen_ = true;
    TheDateTree().ScanAll(MainRoot());
    state_.AutoNavigate = 1;
    state_.TicksInView = 1000;
    EXPECT_EQ(Beat(), BeatEnd::SlideShowStands);
    EXPECT_EQ(state_.TicksInView, 1000);
}

TEST_F(HeartbeatTest, SlideShowThatMovesByItselfLetsTheCalendarMoveToo) {
    slideShowOpen_ = true;
    state_.SlideShowAutoNavigate = 1;
    EXPECT_EQ(Beat(), BeatEnd::SlideShowOpen) << "but nothing of it is drawn";
    EXPECT_EQ(state_.TicksInView, 0);
    TheDateTree().ScanAll(MainRoot());
    state_.AutoNavigate = 1;
    state_.TicksInView = 1000;
    EXPECT_EQ(Beat(), BeatEnd::Navigated);
}

TEST_F(HeartbeatTest, AutoNavigationMovesOn) {
    TheDateTree().ScanAll(MainRoot());
    state_.AutoNavigate = 1;
    state_.TicksInView = 1000;
    EXPECT_EQ(Beat(), BeatEnd::Navigated);
    ASSERT_TRUE(Settle());
    EXPECT_EQ(state_.TicksInView, 0);
}

TEST_F(HeartbeatTest, AutoNavigationWaitsForTheScanAndForAFirstBeatInTheView) {
    TheDateTree().ScanAll(MainRoot());
    state_.AutoNavigate = 1;
    state_.TimingOfAutoNavigate = -1;  // would move on at once
    state_.TicksInView = 1000;
    state_.InitialScanRunning = 1;
    EXPECT_EQ(Beat(), BeatEnd::Redrawn);
    state_.InitialScanRunning = 0;
    state_.TicksInView = 0;
    EXPECT_EQ(Beat(), BeatEnd::Redrawn);
    state_.TicksInView = 1000;
    state_.AutoNavigate = 0;
    EXPECT_EQ(Beat(), BeatEnd::Redrawn);
    state_.AutoNavigate = 2;
    EXPECT_EQ(Beat(), BeatEnd::Redrawn) << "any other value than 1 is off";
}

TEST_F(HeartbeatTest, ViewThatStandsItsTimeIsRedrawnMeanwhile) {
    TheDateTree().ScanAll(MainRoot());
    state_.AutoNavigate = 1;
    state_.TimingOfAutoNavigate = 40;
    state_.TicksInView = 5;
    EXPECT_EQ(Beat(), BeatEnd::Redrawn);
    EXPECT_EQ(state_.TicksInView, 6);
}

TEST_F(HeartbeatTest, ViewThatIsNotReadyIsLoaded) {
    Calendar().MonthOf(2008, 11).ready = false;
    EXPECT_EQ(Beat(), BeatEnd::Reloaded);
    ASSERT_TRUE(Settle());
    EXPECT_TRUE(Calendar().MonthOf(2008, 11).ready);
    EXPECT_EQ(Beat(), BeatEnd::Redrawn);
}

TEST_F(HeartbeatTest, YearIsReadyWhileItIsBeingLoaded) {
    ShowYear(2008);
    YearView& year = Calendar().SlotOf(2008);
    year.ready = false;
    year.loading = true;
    EXPECT_EQ(Beat(), BeatEnd::Redrawn);
    year.loading = false;
    EXPECT_EQ(Beat(), BeatEnd::Reloaded);
    ASSERT_TRUE(Settle());
}

TEST_F(HeartbeatTest, ScatterAndDayAreAlwaysReady) {
    ShowYear(1999);
    state_.AllViewMode = 1;
    EXPECT_EQ(Beat(), BeatEnd::Redrawn);
    state_.AllViewMode = 0;
    EXPECT_EQ(Beat(), BeatEnd::Reloaded);
    ASSERT_TRUE(Settle());
    ShowDay(1999, 1, 1);
    EXPECT_EQ(Beat(), BeatEnd::Redrawn);
}

TEST_F(HeartbeatTest, TicksBeginAnewAboveThirtyThousand) {
    state_.TimingOfChangeBgImage = 0;
    state_.TicksInView = 29999;
    EXPECT_EQ(Beat(), BeatEnd::Redrawn);
    EXPECT_EQ(state_.TicksInView, 30000);
    EXPECT_EQ(Beat(), BeatEnd::Redrawn);
    EXPECT_EQ(state_.TicksInView, 0);
}

}  // namespace
}  // namespace kalmora
