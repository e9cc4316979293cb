// The index in the window: what starts its work, and what of it is seen.
#include <chrono>
#include <thread>

#include "app/app_fixture.h"
#include "app/connect_index.h"
#include "app/desktop_services.h"
#include "app/dispatch.h"
#include "app/heartbeat.h"
#include "base/commands.h"
#include "base/log.h"
#include "index/day_index.h"
#include "index/index_manager.h"
#include "index/update.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "store/data_folder.h"
#include "store/date_tree.h"
#include "views/bar/button_bar.h"
#include "views/control/press_button.h"
#include "views/model/calendar_store.h"

namespace kalmora {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

constexpr double kMinute = 60'000;

// Uptime as the test wants it; sleeping takes no time.
class UptimeClock : public Clock {
public:
    UptimeClock() { SetClock(this); }
    ~UptimeClock() override { SetClock(nullptr); }
    // A day without a folder: every seventh pick would list it.
    SystemTime LocalTime() override { return {2008, 11, 4, 20, 10, 15, 30, 250}; }
    double UptimeMs() override { return now; }
    void SleepMs(int) override {}

    std::atomic<double> now = 0;
};

class IndexWindowTest : public AppTest {
protected:
    IndexWindowTest() {
        Forget();
        state_.run.IndexingEnabled = 1;
        state_.run.InitialScanRunning = 0;
        state_.run.LastActivity = 0;
        ResetIndexes();
    }
    ~IndexWindowTest() override {
        EXPECT_TRUE(Eventually([this] {
            return CountBackgroundUpdates() == 0 && !state_.run.InitialScanRunning &&
                   !state_.run.IndexPreloadRunning;
        }));
        OpenLog("");
        Forget();
        state_.run.IndexingEnabled = 0;
        state_.run.InitialScanRunning = 1;
        state_.run.FirstStartPending = 1;
        ResetIndexes();
    }
    void Forget() { ResetDateTree(); }
    // Serves events meanwhile; bounded.
    template <typename Condition>
    static bool Eventually(const Condition& condition) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        while (!condition()) {
            if (std::chrono::steady_clock::now() > end) return false;
            TheApplication()->ProcessEvents(2);
        }
        return true;
    }
    bool HasIndex(int year, int month, int day) const {
        return files::Exists(files::Join(DayFolder(year, month, day), kIndexFileName));
    }
};

// ---- the idle rule

class IdleRefreshTest : public IndexWindowTest {
protected:
    IdleRefreshTest() {
        AddText(2008, 11, 13, "a.txt", "cat");
        TheDateTree().ScanAll(MainRoot());
    }
    // What has been updated so far.
    std::vector<std::string> AfterMinutes(double minutes) {
        clock_.now = minutes * kMinute;
        IdleRefresh(others_);
        for (std::string& call : Calls()) updated_.push_back(std::move(call));
        return updated_;
    }

    UptimeClock clock_;
    std::vector<std::string> updated_;
};

TEST_F(IdleRefreshTest, StartsAtTheSixthMinuteAndNotBefore) {
    state_.settings.MinutesToSleep = 5;
    EXPECT_THAT(AfterMinutes(5 + 59.0 / 60), IsEmpty());
    EXPECT_THAT(AfterMinutes(6), ElementsAre("UpdateMonth 200811"));
}

TEST_F(IdleRefreshTest, CountsFromTheLastInput) {
    state_.run.LastActivity = 3 * kMinute;
    EXPECT_THAT(AfterMinutes(8.9), IsEmpty());
    EXPECT_THAT(AfterMinutes(9), ElementsAre("UpdateMonth 200811"));
}

TEST_F(IdleRefreshTest, WaitsForEachKindOfWorkAndForTheButton) {
    for (SharedFlag* flag : {&state_.run.BackgroundUpdateRunning, &state_.run.InitialScanRunning,
                             &state_.run.DateScanRunning, &state_.run.IndexPreloadRunning}) {
        *flag = 1;
        EXPECT_THAT(AfterMinutes(60), IsEmpty());
        *flag = 0;
    }
    state_.run.IndexingEnabled = 0;
    EXPECT_THAT(AfterMinutes(60), IsEmpty());
    state_.run.IndexingEnabled = 1;
    EXPECT_THAT(AfterMinutes(60), SizeIs(1));
}

TEST_F(IdleRefreshTest, MonthIsOldAfterTwelveHoursAndASecond) {
    others_.monthAge = 43200;
    EXPECT_THAT(AfterMinutes(60), IsEmpty());
    others_.monthAge = 43201;
    EXPECT_THAT(AfterMinutes(60), ElementsAre("UpdateMonth 200811"));
}

TEST_F(IdleRefreshTest, ThreeYoungMonthsStartNothingAndAreLogged) {
    StartLog();
    others_.monthAge = 100;
    AfterMinutes(60);
    EXPECT_THAT(updated_, IsEmpty());
    const std::string line = "[Update] no. Elapsed Time = 100 < 43200 (2008/11)\n";
    std::size_t lines = 0;
    const std::string log = Logged();
    for (std::size_t at = log.find(line); at != std::string::npos; at = log.find(line, at + 1)) ++lines;
    EXPECT_EQ(lines, 3u) << log;
    others_.monthAge = 360000;
    AfterMinutes(60);
    EXPECT_THAT(Logged(), HasSubstr("[Update] ok. Elapsed Time = 360000 > 43200 (2008/11)\n"));
}

TEST_F(IdleRefreshTest, EmptyDateTreeStartsNothing) {
    TheDateTree().Scan(files::Join(root_, "no files"), false);
    StartLog();
    EXPECT_THAT(AfterMinutes(60), IsEmpty());
    EXPECT_EQ(Logged(), "");
}

TEST_F(IdleRefreshTest, PicksTheMonthThatWasPickedLessOften) {
    AddText(2008, 12, 1, "b.txt", "dog");
    TheDateTree().ScanAll(MainRoot());
    for (int i = 0; i < 2; ++i) AfterMinutes(60);
    EXPECT_THAT(updated_, testing::UnorderedElementsAre("UpdateMonth 200811", "UpdateMonth 200812"));
}

TEST_F(IdleRefreshTest, GoesOnWhileTheWindowIsHidden) {
    state_.run.MainWindowVisible = 0;
    EXPECT_THAT(AfterMinutes(60), SizeIs(1));
}

// ---- the whole, connected

class ConnectedIndexTest : public IndexWindowTest {
protected:
    ConnectedIndexTest() {
        AddText(2008, 11, 13, "a.txt", "cat");
        state_.settings.ShowButtonIndexing = true;
        ShowMonth(2008, 11);
        OpenWindow({960, 700});
        ConnectIndex();
        SetButtonStates();
    }
    // The middle of a button by its tip.
    void PressIndexing() {
        state_.settings.UseJapanese = false;
        SetButtonStates();
        for (const ButtonInfo& button : VisibleButtons())
            if (button.name == "Indexing")
                PressButton(*calendar_,
                            {button.area.x + button.area.width / 2, button.area.y + button.area.height / 2});
    }

    DesktopIndexUpdates updates_;
    Heartbeat beating_{*calendar_, slideShow_, neighbor_, others_, updates_};
    const AppParts connected_{*calendar_, slideShow_, neighbor_, music_,  filter_, others_,
                              others_,    others_,    others_,   others_, others_, others_,
                              others_,    updates_,   others_,   keys_,   tray_,   beating_};
};

TEST_F(ConnectedIndexTest, CommandUpdatesTheMonthInView) {
    DispatchCommand(connected_, *window_, kCommandUpdateMonth);
    EXPECT_TRUE(Eventually([&] { return HasIndex(2008, 11, 13) && !state_.run.BackgroundUpdateRunning; }));
}

TEST_F(ConnectedIndexTest, CommandDoesNotAskForTheButton) {
    state_.run.IndexingEnabled = 0;
    DispatchCommand(connected_, *window_, kCommandUpdateMonth);
    EXPECT_TRUE(Eventually([&] { return HasIndex(2008, 11, 13); }));
}

TEST_F(ConnectedIndexTest, UserWhoIsAwayFindsTheIndexUpToDate) {
    TheDateTree().ScanAll(MainRoot());
    state_.run.LastActivity = UptimeMs() - 6 * kMinute;
    IdleRefresh(updates_);
    EXPECT_TRUE(Eventually([&] { return HasIndex(2008, 11, 13) && !state_.run.BackgroundUpdateRunning; }));
    // The month is listed now, and its record has never been updated: old as the program.
    EXPECT_LT(updates_.SecondsSinceUpdate(2008, 11), 43200);
}

TEST_F(ConnectedIndexTest, FirstBeatScansTheDatesAndLoadsTheIndexesAhead) {
    AddText(2008, 12, 1, "b.txt", "dog");
    const SystemTime now = LocalTime();
    AddText(now.year, now.month, now.day, "c.txt", "today");
    state_.run.FirstStartPending = 1;
    state_.run.FirstLoadDone = 1;
    state_.run.MainWindowVisible = 1;
    state_.settings.AutoNavigate = 0;
    state_.run.LastTickClock = -1e9;
    state_.settings.LoadIndexInitially = true;
    state_.settings.NumberOfLoadIndex = 1;
    beating_.Tick();
    EXPECT_FALSE(state_.run.FirstStartPending);
    EXPECT_TRUE(
        Eventually([&] { return !state_.run.InitialScanRunning && !state_.run.IndexPreloadRunning; }));
    EXPECT_THAT(TheDateTree().Nodes(kMonthLevel), SizeIs(3));
    EXPECT_TRUE(HasIndex(now.year, now.month, now.day));
    EXPECT_FALSE(HasIndex(2008, 11, 13));
}

TEST_F(ConnectedIndexTest, NothingIsLoadedAheadUnlessItIsWanted) {
    const SystemTime now = LocalTime();
    AddText(now.year, now.month, now.day, "c.txt", "today");
    state_.run.FirstStartPending = 1;
    state_.run.FirstLoadDone = 1;
    state_.run.MainWindowVisible = 1;
    state_.run.LastTickClock = -1e9;
    state_.settings.LoadIndexInitially = false;
    beating_.Tick();
    EXPECT_TRUE(Eventually([&] { return !state_.run.InitialScanRunning; }));
    EXPECT_FALSE(state_.run.IndexPreloadRunning);
    EXPECT_FALSE(HasIndex(now.year, now.month, now.day));
}

TEST_F(ConnectedIndexTest, ButtonTurnsTheWorkOnAndStopsItWhenItTurnsItOff) {
    state_.run.IndexingEnabled = 0;
    MainIndex().Load(2008, 11, 0);
    StartLog();
    PressIndexing();
    EXPECT_TRUE(state_.run.IndexingEnabled);
    EXPECT_THAT(Logged(), Not(HasSubstr("[Stop Indexing]")));
    PressIndexing();
    EXPECT_FALSE(state_.run.IndexingEnabled);
    EXPECT_THAT(Logged(), HasSubstr("[Stop Indexing] stop by user\n"));
    MainIndex().Load(2008, 11, 0);
    EXPECT_TRUE(MainIndex().IsLoaded(2008, 11, 0)) << "it stops what runs, and nothing later";
}

TEST_F(ConnectedIndexTest, ProgressIsDrawnOnTheWindow) {
    constexpr Color kDone = ColorFromBgr(0xC86432), kRest = ColorFromBgr(0xB4B4B4);
    DesktopWork().progress->OnProgress(0.5, "Updating (2008/11)");
    // The gauge: 400 wide at 410 from the right edge, 35 above the labels, which are 38 high.
    const int x = 960 - 410, y = 700 - 38 - 35;
    EXPECT_EQ(PixelAt(x + 1, y + 1), kDone);
    EXPECT_EQ(PixelAt(x + 199, y + 1), kDone);
    EXPECT_EQ(PixelAt(x + 201, y + 1), kRest);
    EXPECT_EQ(PixelAt(x + 399, y + 1), kRest);
    DesktopWork().progress->OnUpdateProgress(0.5);
    EXPECT_EQ(PixelAt(479, 0), ColorFromBgr(0xFF7864));
    EXPECT_EQ(PixelAt(481, 0), ColorFromBgr(0xFFB4A0));
    DesktopWork().progress->OnUpdateProgress(1);
    EXPECT_EQ(PixelAt(479, 0), ColorFromBgr(0xE6FFFF));
}

TEST_F(ConnectedIndexTest, ScanOfTheDatesIsShownAsItGoes) {
    ASSERT_TRUE(TheDateTree().ScanAll(MainRoot()));
    EXPECT_EQ(PixelAt(960 - 410 + 399, 700 - 38 - 35 + 1), ColorFromBgr(0xC86432));
}

TEST_F(ConnectedIndexTest, ProgressWithoutAWindowIsHarmless) {
    SetMainWindow(nullptr);
    DesktopWork().progress->OnProgress(0.5, "Updating (2008/11)");
    DesktopWork().progress->OnUpdateProgress(0.5);
    ASSERT_TRUE(TheDateTree().ScanAll(MainRoot()));
    EXPECT_TRUE(TheDateTree().Pick(kDayLevel));
}

class HeldProgress final : public ProgressListener {
public:
    void OnProgress(double, const std::string& text) override {
        if (text != "Loading (2008/10)" || held.exchange(true)) return;
        while (!letGo) std::this_thread::yield();
    }
    std::atomic<bool> held = false, letGo = false;
};

// Two updates at once: the first one that ends clears the flag of both.
TEST_F(ConnectedIndexTest, FlagIsClearedByTheFirstThatEnds) {
    AddText(2008, 10, 1, "b.txt", "dog");
    HeldProgress progress;
    ResetIndexes({{}, &progress});
    StartBackgroundUpdate(200810);
    ASSERT_TRUE(Eventually([&] { return progress.held.load(); }));
    StartBackgroundUpdate(200811);
    EXPECT_EQ(CountBackgroundUpdates(), 2);
    EXPECT_TRUE(Eventually([&] { return CountBackgroundUpdates() == 1; }));
    EXPECT_FALSE(state_.run.BackgroundUpdateRunning);
    progress.letGo = true;
    EXPECT_TRUE(Eventually([&] { return CountBackgroundUpdates() == 0; }));
    EXPECT_TRUE(HasIndex(2008, 10, 1));
    EXPECT_TRUE(HasIndex(2008, 11, 13));
}

}  // namespace
}  // namespace kalmora
