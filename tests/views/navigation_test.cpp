#include "views/control/navigation.h"

#include <set>

#include "base/random.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "store/data_folder.h"
#include "store/date_tree.h"
#include "views/load/object_loader.h"
#include "views/model/calendar_store.h"
#include "views/view_fixture.h"

namespace kalmora {
namespace {

class NavigationTest : public ViewTest {
protected:
    static std::string Now() {
        const auto& [level, date] = View().period;
        return std::to_string(static_cast<int>(level)) + ":" + std::to_string(date.year) + "/" +
               std::to_string(date.month) + "/" + std::to_string(date.day);
    }
};

TEST_F(NavigationTest, StepsInAMonth) {
    const auto step = [this](Step way) {
        ShowMonth(2008, 11);
        ChangeView([&](ViewState& view) { view.period.date.day = 13; });
        StepPeriod(*calendar_, way);
        EXPECT_TRUE(WaitUntilIdle());
        return Now();
    };
    EXPECT_EQ(step(Step::OuterNext), "2:2009/11/13");
    EXPECT_EQ(step(Step::Next), "2:2008/12/13");
    EXPECT_EQ(step(Step::Previous), "2:2008/10/13");
    EXPECT_EQ(step(Step::OuterPrevious), "2:2007/11/13");
}

TEST_F(NavigationTest, StepsInAYear) {
    const auto step = [this](Step way) {
        ShowYear(2008);
        StepPeriod(*calendar_, way);
        EXPECT_TRUE(WaitUntilIdle());
        return View().period.date.year;
    };
    EXPECT_EQ(step(Step::OuterNext), 2010);
    EXPECT_EQ(step(Step::Next), 2009);
    EXPECT_EQ(step(Step::Previous), 2007);
    EXPECT_EQ(step(Step::OuterPrevious), 2006);
}

TEST_F(NavigationTest, StepsInADay) {
    const auto step = [this](Step way) {
        ShowDay(2008, 11, 13);
        StepPeriod(*calendar_, way);
        EXPECT_TRUE(WaitUntilIdle());
        return Now();
    };
    EXPECT_EQ(step(Step::OuterNext), "4:2008/12/13");
    EXPECT_EQ(step(Step::Next), "4:2008/11/14");
    EXPECT_EQ(step(Step::Previous), "4:2008/11/12");
    EXPECT_EQ(step(Step::OuterPrevious), "4:2008/10/13");
}

TEST_F(NavigationTest, DayIsClampedToTheNewMonthAndNotRestored) {
    ShowDay(2007, 1, 31);
    NextMonth(*calendar_);
    EXPECT_EQ(Now(), "4:2007/2/28");
    NextMonth(*calendar_);
    EXPECT_EQ(Now(), "4:2007/3/28");
}

TEST_F(NavigationTest, DayIsNotClampedOutsideTheDayView) {
    ShowMonth(2007, 1);
    ChangeView([&](ViewState& view) { view.period.date.day = 31; });
    NextMonth(*calendar_);
    EXPECT_EQ(Now(), "2:2007/2/31");
}

TEST_F(NavigationTest, PreviousDayOfNewYearIsTheLastOfDecember) {
    ShowDay(2008, 1, 1);
    PrevDay(*calendar_);
    EXPECT_EQ(Now(), "4:2007/12/31");
}

TEST_F(NavigationTest, NextDayOfTheLastIsTheFirst) {
    ShowDay(2008, 2, 29);
    NextDay(*calendar_);
    EXPECT_EQ(Now(), "4:2008/3/1");
    ShowDay(2008, 12, 31);
    NextDay(*calendar_);
    EXPECT_EQ(Now(), "4:2009/1/1");
}

TEST_F(NavigationTest, DayStepsAdvanceTheDayRing) {
    ShowDay(2008, 11, 13);
    NextDay(*calendar_);
    PrevDay(*calendar_);
    EXPECT_EQ(State().run.DayRing, 2);
    EXPECT_EQ(State().run.AllRing, 0);
}

TEST_F(NavigationTest, MonthsEdgeAdvancesTheScatterRingTwice) {
    ShowDay(2008, 11, 1);
    ChangeView([&](ViewState& view) { view.scatter = true; });
    PrevDay(*calendar_);
    EXPECT_EQ(State().run.AllRing, 2);
    EXPECT_EQ(State().run.DayRing, 0);
}

TEST_F(NavigationTest, RingsWrapAfterThirteen) {
    ShowDay(2008, 11, 1);
    for (int i = 0; i < 13; ++i) NextDay(*calendar_);
    EXPECT_EQ(State().run.DayRing, 0);
}

TEST_F(NavigationTest, FourteenthDayReusesTheFirstViewerEmptied) {
    AddText(2008, 11, 1, "a.txt", "first");
    ShowDay(2008, 11, 1);
    OpenWindow({960, 700});
    UpdateObjects(*calendar_);
    ASSERT_TRUE(WaitUntilIdle());
    ASSERT_EQ(calendar_->dayViewers[0].objects.Count(), 1u);
    for (int i = 0; i < 13; ++i) {
        StepPeriod(*calendar_, Step::Next);
        ASSERT_TRUE(WaitUntilIdle());
    }
    EXPECT_EQ(State().run.DayRing, 0);
    EXPECT_EQ(calendar_->dayViewers[0].objects.Count(), 0u);
    EXPECT_EQ(calendar_->dayViewers[0].day, 14);
}

// The run that draws a day's objects begins with a quiet of 100 ms, which no step waits for.
TEST_F(NavigationTest, StepsThroughDaysAreNotHeldUpByTheQuietBeforeTheirObjects) {
    constexpr int kSteps = 12;
    for (int day = 1; day <= 1 + kSteps; ++day) AddText(2008, 11, day, "a.txt", "x");
    ShowDay(2008, 11, 1);
    OpenWindow({400, 300});
    UpdateObjects(*calendar_);
    const double start = UptimeMs();
    for (int step = 0; step < kSteps; ++step) {
        StepPeriod(*calendar_, Step::Next);
        TheApplication()->ProcessEvents(0);
    }
    EXPECT_LT(UptimeMs() - start, kSteps * 60);
    EXPECT_TRUE(WaitUntilIdle());
    EXPECT_EQ(calendar_->CurrentDayViewer().objects.Count(), 1u);
}

TEST_F(NavigationTest, StepsThatHaveQueuedUpAreFollowedByOneLoadOfTheLast) {
    AddText(2008, 11, 17, "a.txt", "x");
    AddText(2008, 11, 18, "a.txt", "x");
    ShowDay(2008, 11, 13);
    OpenWindow({400, 300});
    UpdateObjects(*calendar_);
    ASSERT_TRUE(WaitUntilIdle());
    navigation_.lines.Clear();
    for (int step = 0; step < 5; ++step) StepPeriod(*calendar_, Step::Next);
    StepPeriod(*calendar_, Step::Previous);
    EXPECT_EQ(Now(), "4:2008/11/17");
    ASSERT_TRUE(WaitUntilIdle());
    EXPECT_THAT(navigation_.lines.Take(), testing::ElementsAre("(Day)\t2008/11/17"));
    EXPECT_EQ(calendar_->CurrentDayViewer().objects.Count(), 1u);
    EXPECT_EQ(calendar_->CurrentDayViewer().day, 17);
}

TEST_F(NavigationTest, AnyOtherLoadOfTheViewServesForTheStepsBeforeIt) {
    ShowMonth(2008, 11);
    StepPeriod(*calendar_, Step::Next);
    JumpTo(*calendar_, 2010, 5, 0);
    ASSERT_TRUE(WaitUntilIdle());
    EXPECT_THAT(navigation_.lines.Take(), testing::ElementsAre("(Month)\t2010/05"));
}

TEST_F(NavigationTest, LevelUpGoesFromDayToMonthToYearAndNoFurther) {
    ShowDay(2008, 11, 13);
    OneLevelUp(*calendar_);
    EXPECT_EQ(View().period.level, Level::Month);
    ASSERT_TRUE(WaitUntilIdle());
    OneLevelUp(*calendar_);
    EXPECT_EQ(View().period.level, Level::Year);
    ASSERT_TRUE(WaitUntilIdle());
    OneLevelUp(*calendar_);
    EXPECT_EQ(View().period.level, Level::Year);
}

TEST_F(NavigationTest, ToYearlyWorksFromAMonthOnly) {
    ShowDay(2008, 11, 13);
    ToYearly(*calendar_);
    EXPECT_EQ(View().period.level, Level::Day);
    ShowMonth(2008, 11);
    ToYearly(*calendar_);
    EXPECT_EQ(View().period.level, Level::Year);
}

TEST_F(NavigationTest, RefusedLevelChangeKeepsTheNewViewWithoutLoadingIt) {
    ShowMonth(2008, 11);
    UpdateObjects(*calendar_);
    ASSERT_TRUE(WaitUntilIdle());
    navigation_.lines.Clear();
    const auto first = State().run.ObjectQueue.Lock(1, 100);
    ToYearly(*calendar_);  // waits its 100 ms and gives up
    EXPECT_EQ(View().period.level, Level::Year);
    EXPECT_THAT(navigation_.lines.Take(), testing::IsEmpty());
    State().run.ObjectQueue.Unlock(first);
}

TEST_F(NavigationTest, CommandIsDroppedWhileAReloadIsBeingStopped) {
    ShowMonth(2008, 11);
    State().run.ObjectGate.Acquire("test");
    State().run.ObjectGate.RequestStop();
    StepPeriod(*calendar_, Step::Next);
    EXPECT_EQ(View().period.date.month, 11);
    State().run.ObjectGate.Release();
}

TEST_F(NavigationTest, JumpWithoutAMonthShowsTheYear) {
    ShowMonth(2008, 11);
    JumpTo(*calendar_, 1999, 0, 0);
    EXPECT_EQ(Now(), "1:1999/0/0");
    ASSERT_TRUE(WaitUntilIdle());
    JumpTo(*calendar_, 1999, 5, 0);
    EXPECT_EQ(Now(), "2:1999/5/0");
    ASSERT_TRUE(WaitUntilIdle());
    JumpTo(*calendar_, 1999, 5, 7);
    EXPECT_EQ(Now(), "4:1999/5/7");
    EXPECT_EQ(State().run.DayRing, 1);
}

TEST_F(NavigationTest, TodayIsTheLocalDate) {
    JumpToToday(*calendar_);
    const SystemTime today = LocalTime();
    EXPECT_EQ(View().period.date.year, today.year);
    EXPECT_EQ(View().period.date.month, today.month);
    EXPECT_EQ(View().period.date.day, today.day);
    EXPECT_EQ(View().period.level, Level::Day);
}

TEST_F(NavigationTest, DownFromAYearEndsInAMonthDrawnAtRandom) {
    MakeDirectories(MakeMonthFolderPath(MainRoot(), 1999, 4));
    std::set<int> months;
    for (int i = 0; i < 40; ++i) {
        ShowYear(1999);
        OpenTodayLevel(*calendar_);
        ASSERT_TRUE(WaitUntilIdle());
        EXPECT_EQ(View().period.level, Level::Month);
        months.insert(View().period.date.month);
    }
    EXPECT_GT(months.size(), 1u) << "the month folder that exists does not decide";
    EXPECT_GE(*months.begin(), 1);
    EXPECT_LE(*months.rbegin(), 12);
}

TEST_F(NavigationTest, DownFromThisYearPutsTodaysMonthIntoTheDay) {
    const SystemTime today = LocalTime();
    ShowYear(today.year);
    ChangeView([&](ViewState& view) { view.period.date.day = 31; });
    OpenTodayLevel(*calendar_);
    EXPECT_EQ(View().period.date.day, today.month);
}

TEST_F(NavigationTest, DownFromAMonthShowsItsFirstDayWithAFolder) {
    MakeDirectories(DayFolder(1999, 4, 9));
    MakeDirectories(DayFolder(1999, 4, 20));
    ShowMonth(1999, 4);
    OpenTodayLevel(*calendar_);
    EXPECT_EQ(Now(), "4:1999/4/9");
}

TEST_F(NavigationTest, DownFromAMonthWithoutFoldersShowsTheFifteenth) {
    ShowMonth(1999, 4);
    OpenTodayLevel(*calendar_);
    EXPECT_EQ(Now(), "4:1999/4/15");
}

TEST_F(NavigationTest, DownFromThisMonthShowsToday) {
    const SystemTime today = LocalTime();
    ShowMonth(today.year, today.month);
    OpenTodayLevel(*calendar_);
    EXPECT_EQ(View().period.date.day, today.day);
}

TEST_F(NavigationTest, DownFromADayDoesNothing) {
    ShowDay(1999, 4, 9);
    OpenTodayLevel(*calendar_);
    EXPECT_EQ(Now(), "4:1999/4/9");
}

TEST_F(NavigationTest, ChangeToMonthlyClearsPressAndTicks) {
    ShowYear(1999);
    State().press.ObjectHit = State().press.PressActive = 1;
    State().run.TicksInView = 12;
    ChangeToMonthly(*calendar_, 6);
    EXPECT_EQ(View().period.level, Level::Month);
    EXPECT_EQ(View().period.date.month, 6);
    EXPECT_EQ(State().press.ObjectHit, 0);
    EXPECT_EQ(State().press.PressActive, 0);
    EXPECT_EQ(State().run.TicksInView, 0);
}

TEST_F(NavigationTest, ModesFlipAndReload) {
    ShowMonth(2008, 11);
    navigation_.lines.Clear();
    ToggleGoodMode(*calendar_);
    ASSERT_TRUE(WaitUntilIdle());
    TogglePublicMode(*calendar_);
    ASSERT_TRUE(WaitUntilIdle());
    ToggleAllView(*calendar_);
    ASSERT_TRUE(WaitUntilIdle());
    EXPECT_EQ(State().settings.GoodMode, 1);
    EXPECT_EQ(State().settings.PublicMode, 1);
    EXPECT_TRUE(View().scatter);
    EXPECT_EQ(navigation_.lines.Take().size(), 3u);
    ToggleAutoNavigate();
    TogglePaused();
    EXPECT_EQ(State().settings.AutoNavigate, 1);
    EXPECT_EQ(State().run.Paused, 1);
    EXPECT_THAT(navigation_.lines.Take(), testing::IsEmpty()) << "these two load nothing";
}

TEST_F(NavigationTest, EachLoadIsToldWithItsPeriod) {
    navigation_.lines.Clear();
    ShowYear(2008);
    UpdateObjects(*calendar_);
    ASSERT_TRUE(WaitUntilIdle());
    ShowMonth(2008, 3);
    UpdateObjects(*calendar_);
    ASSERT_TRUE(WaitUntilIdle());
    ShowDay(2008, 3, 4);
    UpdateObjects(*calendar_);
    ASSERT_TRUE(WaitUntilIdle());
    EXPECT_THAT(navigation_.lines.Take(),
                testing::ElementsAre("(Year)\t2008", "(Month)\t2008/03", "(Day)\t2008/03/04"));
}

class RandomNavigateTest : public NavigationTest {
protected:
    RandomNavigateTest() {
        AddText(2005, 5, 5, "a.txt", "x");
        TheDateTree().Scan(MainRoot(), false);
        State().settings.TimingOfAutoNavigate = 40;
    }
};

TEST_F(RandomNavigateTest, UnlistedYearMayMoveOnAtTheFirstTick) {
    ShowYear(1990);
    State().run.TicksInView = 1;
    EXPECT_TRUE(RandomNavigate(*calendar_));
    EXPECT_EQ(View().period.date.year, 2005);
    EXPECT_EQ(State().run.TicksInView, 0);
}

TEST_F(RandomNavigateTest, MonthStandsForTenTicksAtLeast) {
    ShowMonth(1990, 1);
    State().run.TicksInView = 10;
    EXPECT_FALSE(RandomNavigate(*calendar_));
    EXPECT_EQ(View().period.date.year, 1990);
    State().run.TicksInView = 11;
    EXPECT_TRUE(RandomNavigate(*calendar_));
    EXPECT_EQ(View().period.date.year, 2005);
    EXPECT_EQ(View().period.date.month, 5);
}

TEST_F(RandomNavigateTest, TimingOfAutoNavigateEndsALongStand) {
    State().settings.TimingOfAutoNavigate = 3;
    ShowMonth(1990, 1);
    State().run.TicksInView = 3;
    EXPECT_FALSE(RandomNavigate(*calendar_));
    State().run.TicksInView = 4;
    EXPECT_TRUE(RandomNavigate(*calendar_));
}

TEST_F(RandomNavigateTest, NothingToPickEndsTheBeatWithoutAMove) {
    TheDateTree().Scan(root_ + "/nothing", false);
    ShowDay(1990, 1, 1);
    State().run.TicksInView = 100;
    EXPECT_TRUE(RandomNavigate(*calendar_));
    EXPECT_EQ(Now(), "4:1990/1/1");
}

TEST_F(RandomNavigateTest, DayMoveAdvancesTheDayRing) {
    ShowDay(1990, 1, 1);
    State().run.TicksInView = 1;
    EXPECT_TRUE(RandomNavigate(*calendar_));
    EXPECT_EQ(Now(), "4:2005/5/5");
    EXPECT_EQ(State().run.DayRing, 1);
}

}  // namespace
}  // namespace kalmora
