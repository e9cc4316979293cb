// One beat of the program's clock: each of its tests refuses on its own, in its order.
#include "app/heartbeat.h"

#include <chrono>
#include <future>
#include <thread>

#include "app/app_fixture.h"
#include "platform/files.h"
#include "store/data_folder.h"
#include "store/date_tree.h"
#include "views/load/object_loader.h"
#include "views/model/calendar_store.h"

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
        UpdateObjects(*calendar_);
        EXPECT_TRUE(WaitUntilIdle());
        calls_.Clear();
        state_.settings.TimingOfPopup = kPeriod;
        state_.run.TicksInView = 0;
        state_.run.LastTickClock = clock_.now.load();
        Pointer({10, 10});
        state_.run.LastCursorX = state_.run.LastCursorY = 10;
        state_.run.LastActivity = 0;
    }
    ~HeartbeatTest() override { WaitUntilIdle(); }

    BeatEnd Beat() {
        clock_.now = clock_.now + kPeriod * 1000;
        const BeatEnd end = heartbeat_.Tick();
        EXPECT_TRUE(end == BeatEnd::Busy || !state_.run.HeartbeatBusy)
            << "each end leaves the next beat its way";
        return end;
    }

    TestClock clock_;
};

TEST_F(HeartbeatTest, RedrawsTheViewAndCounts) {
    EXPECT_EQ(Beat(), BeatEnd::Redrawn);
    EXPECT_EQ(Beat(), BeatEnd::Redrawn);
    EXPECT_EQ(state_.run.TicksInView, 2);
}

TEST_F(HeartbeatTest, NeighborWindowStopsItBeforeAnythingIsNoted) {
    neighbor_.shown = true;
    const double before = state_.run.LastTickClock;
    EXPECT_EQ(Beat(), BeatEnd::NeighborShown);
    EXPECT_EQ(state_.run.LastTickClock, before);
}

TEST_F(HeartbeatTest, BeatSoonerThanNineTenthsOfThePeriodIsDropped) {
    ASSERT_EQ(Beat(), BeatEnd::Redrawn);
    const double last = state_.run.LastTickClock;
    clock_.now = last + kPeriod * 900 - 1;
    EXPECT_EQ(heartbeat_.Tick(), BeatEnd::TooSoon);
    EXPECT_EQ(state_.run.LastTickClock, last);
    clock_.now = last + kPeriod * 900;
    EXPECT_EQ(heartbeat_.Tick(), BeatEnd::Redrawn);
    EXPECT_EQ(state_.run.LastTickClock, last + kPeriod * 900);
}

TEST_F(HeartbeatTest, HiddenWindowGetsNone) {
    state_.run.MainWindowVisible = 0;
    EXPECT_EQ(Beat(), BeatEnd::Hidden);
    EXPECT_EQ(state_.run.LastTickClock, clock_.now) << "the time between two beats is kept all the same";
    EXPECT_EQ(state_.run.TicksInView, 0);
}

TEST_F(HeartbeatTest, PauseStopsIt) {
    state_.run.Paused = 1;
    EXPECT_EQ(Beat(), BeatEnd::PausedByUser);
    EXPECT_EQ(state_.run.TicksInView, 0);
}

TEST_F(HeartbeatTest, BeatInsideAnotherDoesNothing) {
    state_.run.HeartbeatBusy = 1;
    EXPECT_EQ(Beat(), BeatEnd::Busy);
    EXPECT_EQ(state_.run.HeartbeatBusy, 1) << "the mark is the other's";
    state_.run.HeartbeatBusy = 0;
}

TEST_F(HeartbeatTest, WaitsForTheLoader) {
    std::promise<void> go;
    ASSERT_TRUE(calendar_->StartObjectLoader([waiting = go.get_future().share()] { waiting.wait(); }));
    state_.run.LastCursorX = 0;
    EXPECT_EQ(Beat(), BeatEnd::WorkersRunning);
    EXPECT_EQ(state_.run.LastActivity, 0) << "the cursor is looked at only afterwards";
    go.set_value();
    ASSERT_TRUE(WaitUntilIdle());
    EXPECT_EQ(Beat(), BeatEnd::Redrawn);
}

TEST_F(HeartbeatTest, WaitsForThePaintThread) {
    std::promise<void> go;
    ASSERT_TRUE(calendar_->StartPaintThread([this, waiting = go.get_future().share()](std::uint64_t run) {
        waiting.wait();
        calendar_->EndPaintRun(run);
    }));
    EXPECT_EQ(Beat(), BeatEnd::WorkersRunning);
    go.set_value();
    ASSERT_TRUE(WaitUntilIdle());
    EXPECT_EQ(Beat(), BeatEnd::Redrawn);
}

TEST_F(HeartbeatTest, CursorThatMovedIsActivity) {
    Beat();
    EXPECT_EQ(state_.run.LastActivity, 0) << "it did not move";
    for (const Point moved : {Point{11, 10}, Point{11, 9}}) {
        Pointer(moved);
        EXPECT_EQ(Beat(), BeatEnd::Redrawn);
        EXPECT_EQ(state_.run.LastActivity, clock_.now);
        EXPECT_EQ(state_.run.LastCursorX, moved.x);
        EXPECT_EQ(state_.run.LastCursorY, moved.y);
    }
}

TEST_F(HeartbeatTest, HeldLeftButtonStopsAllButTheActivity) {
    others_.petalsShown = true;
    Pointer({300, 200}, true);
    EXPECT_EQ(Beat(), BeatEnd::ButtonDown);
    EXPECT_EQ(state_.run.LastActivity, clock_.now);
    EXPECT_TRUE(others_.petalsShown);
    EXPECT_EQ(state_.run.TicksInView, 0);
}

TEST_F(HeartbeatTest, ShownPetalsAreHiddenInsteadOfABeat) {
    ASSERT_TRUE(state_.run.ObjectGate.Acquire("test"));
    others_.petalsShown = true;
    EXPECT_EQ(Beat(), BeatEnd::PetalsHidden);
    EXPECT_THAT(Calls(), testing::ElementsAre("HidePetals"));
    EXPECT_EQ(Beat(), BeatEnd::GateHeld) << "the test after it, in the next beat";
    state_.run.ObjectGate.Release();
}

TEST_F(HeartbeatTest, HeldGateStopsItBeforeTheStartUpWork) {
    state_.run.FirstStartPending = state_.run.FirstLoadDone = 1;
    ASSERT_TRUE(state_.run.ObjectGate.Acquire("test"));
    EXPECT_EQ(Beat(), BeatEnd::GateHeld);
    EXPECT_EQ(state_.run.FirstStartPending, 1);
    state_.run.ObjectGate.Release();
    EXPECT_EQ(Beat(), BeatEnd::Redrawn);
    EXPECT_EQ(state_.run.FirstStartPending, 0);
    while (state_.run.InitialScanRunning) std::this_thread::yield();
}

TEST_F(HeartbeatTest, StartUpWorkWaitsForTheFirstLoadAndComesOnce) {
    state_.run.FirstStartPending = 1;
    state_.run.FirstLoadDone = 0;
    state_.run.InitialScanRunning = 1;
    state_.settings.LoadIndexInitially = true;
    EXPECT_EQ(Beat(), BeatEnd::Redrawn);
    EXPECT_EQ(state_.run.FirstStartPending, 1);
    state_.run.FirstLoadDone = 1;
    // Also under an open slide show, which ends the beat only afterwards.
    slideShow_.shown = true;
    EXPECT_EQ(Beat(), BeatEnd::SlideShowKeepsView);
    EXPECT_EQ(state_.run.FirstStartPending, 0);
    while (state_.run.InitialScanRunning || state_.run.IndexPreloadRunning) std::this_thread::yield();
    EXPECT_EQ(others_.preloads, 1);
    EXPECT_EQ(TheDateTree().Nodes(kMonthLevel).size(), 2u);
    Beat();
    EXPECT_FALSE(state_.run.InitialScanRunning);
    EXPECT_EQ(others_.preloads, 1);
}

TEST_F(HeartbeatTest, OpenSlideShowKeepsViewStill) {
    slideShow_.shown = true;
    TheDateTree().ScanAll(MainRoot());
    state_.settings.AutoNavigate = 1;
    state_.run.TicksInView = 1000;
    EXPECT_EQ(Beat(), BeatEnd::SlideShowKeepsView);
    EXPECT_EQ(state_.run.TicksInView, 1000);
}

TEST_F(HeartbeatTest, SlideShowThatMovesByItselfLetsTheCalendarMoveToo) {
    slideShow_.shown = true;
    state_.settings.SlideShowAutoNavigate = 1;
    EXPECT_EQ(Beat(), BeatEnd::SlideShowOpen) << "but nothing of it is drawn";
    EXPECT_EQ(state_.run.TicksInView, 0);
    TheDateTree().ScanAll(MainRoot());
    state_.settings.AutoNavigate = 1;
    state_.run.TicksInView = 1000;
    EXPECT_EQ(Beat(), BeatEnd::Navigated);
}

TEST_F(HeartbeatTest, AutoNavigationMovesOn) {
    TheDateTree().ScanAll(MainRoot());
    state_.settings.AutoNavigate = 1;
    state_.run.TicksInView = 1000;
    EXPECT_EQ(Beat(), BeatEnd::Navigated);
    ASSERT_TRUE(WaitUntilIdle());
    EXPECT_EQ(state_.run.TicksInView, 0);
}

TEST_F(HeartbeatTest, AutoNavigationWaitsForTheScanAndForAFirstBeatInTheView) {
    TheDateTree().ScanAll(MainRoot());
    state_.settings.AutoNavigate = 1;
    state_.settings.TimingOfAutoNavigate = -1;  // would move on at once
    state_.run.TicksInView = 1000;
    state_.run.InitialScanRunning = 1;
    EXPECT_EQ(Beat(), BeatEnd::Redrawn);
    state_.run.InitialScanRunning = 0;
    state_.run.TicksInView = 0;
    EXPECT_EQ(Beat(), BeatEnd::Redrawn);
    state_.run.TicksInView = 1000;
    state_.settings.AutoNavigate = 0;
    EXPECT_EQ(Beat(), BeatEnd::Redrawn);
    state_.settings.AutoNavigate = 2;
    EXPECT_EQ(Beat(), BeatEnd::Redrawn) << "any other value than 1 is off";
}

TEST_F(HeartbeatTest, ViewThatStandsItsTimeIsRedrawnMeanwhile) {
    TheDateTree().ScanAll(MainRoot());
    state_.settings.AutoNavigate = 1;
    state_.settings.TimingOfAutoNavigate = 40;
    state_.run.TicksInView = 5;
    EXPECT_EQ(Beat(), BeatEnd::Redrawn);
    EXPECT_EQ(state_.run.TicksInView, 6);
}

TEST_F(HeartbeatTest, ViewThatIsNotReadyIsLoaded) {
    calendar_->MonthOf(2008, 11).ready = false;
    EXPECT_EQ(Beat(), BeatEnd::Reloaded);
    ASSERT_TRUE(WaitUntilIdle());
    EXPECT_TRUE(calendar_->MonthOf(2008, 11).ready);
    EXPECT_EQ(Beat(), BeatEnd::Redrawn);
}

TEST_F(HeartbeatTest, YearIsReadyWhileItIsBeingLoaded) {
    ShowYear(2008);
    YearView& year = calendar_->SlotOf(2008);
    year.ready = false;
    year.loading = true;
    EXPECT_EQ(Beat(), BeatEnd::Redrawn);
    year.loading = false;
    EXPECT_EQ(Beat(), BeatEnd::Reloaded);
    ASSERT_TRUE(WaitUntilIdle());
}

TEST_F(HeartbeatTest, ScatterAndDayAreAlwaysReady) {
    ShowYear(1999);
    ChangeView([&](ViewState& view) { view.scatter = true; });
    EXPECT_EQ(Beat(), BeatEnd::Redrawn);
    ChangeView([&](ViewState& view) { view.scatter = false; });
    EXPECT_EQ(Beat(), BeatEnd::Reloaded);
    ASSERT_TRUE(WaitUntilIdle());
    ShowDay(1999, 1, 1);
    EXPECT_EQ(Beat(), BeatEnd::Redrawn);
}

TEST_F(HeartbeatTest, TicksBeginAnewAboveThirtyThousand) {
    state_.settings.TimingOfChangeBgImage = 0;
    state_.run.TicksInView = 29999;
    EXPECT_EQ(Beat(), BeatEnd::Redrawn);
    EXPECT_EQ(state_.run.TicksInView, 30000);
    EXPECT_EQ(Beat(), BeatEnd::Redrawn);
    EXPECT_EQ(state_.run.TicksInView, 0);
}

}  // namespace
}  // namespace kalmora
