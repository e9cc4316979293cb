#include "store/date_tree.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <map>
#include <thread>

#include "store/data_folder.h"
#include "store/extension_table.h"
#include "store_fixture.h"
#include "support/closed_folder.h"

namespace kalmora {

void PrintTo(const CalendarDate& date, std::ostream* out) {
    *out << date.year << '/' << date.month << '/' << date.day;
}

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class DateTreeTest : public StoreTest {
protected:
    DateTreeTest() : root(MakeFolder("files")) {
        ReadExtensionTableText("[IMAGE]\njpg\n[TEXT]\ntxt\n[MUSIC]\nmp3\n[MOVIE]\navi\n");
    }
    ~DateTreeTest() override { ClearExtensionTable(); }

    // A file of a day, named below the day's folder.
    void PutDay(const CalendarDate& date, const std::string& name) {
        const std::string folder = MakeDayFolderPath("files", date.year, date.month, date.day);
        Put(files::Join(folder, name));
    }
    std::vector<CalendarDate> Dates(int level) const {
        std::vector<CalendarDate> dates;
        for (const DateNode& node : tree.Nodes(level)) dates.push_back(node.date);
        return dates;
    }

    class Listener final : public DateTreeListener {
    public:
        void OnScanProgress(double ratio) override {
            if (onProgress) onProgress(ratio);
        }
        void OnDayPicked() override {
            if (onDayPicked) onDayPicked();
        }
        std::function<void(double ratio)> onProgress;
        std::function<void()> onDayPicked;
    };

    const std::string root;
    Listener listener;
    DateTree tree{listener};
};

using DateTreeScan = DateTreeTest;
using DateTreePick = DateTreeTest;

TEST_F(DateTreeScan, ListsTheDaysMonthsAndYearsThatHaveSomethingToShow) {
    PutDay({2008, 11, 13}, "a.jpg");
    PutDay({2008, 11, 13}, "b.txt");
    PutDay({2008, 11, 14}, "c.lnk");
    PutDay({2009, 1, 1}, "d.jpg");
    ASSERT_TRUE(tree.ScanAll(root));
    EXPECT_THAT(Dates(kYearLevel), ElementsAre(CalendarDate{2008, 0, 0}, CalendarDate{2009, 0, 0}));
    EXPECT_THAT(Dates(kMonthLevel), ElementsAre(CalendarDate{2008, 11, 0}, CalendarDate{2009, 1, 0}));
    EXPECT_THAT(Dates(kDayLevel), ElementsAre(CalendarDate{2008, 11, 13}, CalendarDate{2008, 11, 14},
                                              CalendarDate{2009, 1, 1}));
    EXPECT_EQ(tree.CountOf(2008, 11, 13), 2);
    EXPECT_EQ(tree.CountOf(2008, 11, 0), 3);
    EXPECT_EQ(tree.CountOf(2008, 0, 0), 3);
    EXPECT_EQ(tree.Nodes(kDayLevel)[0].level, kDayLevel);
}

TEST_F(DateTreeScan, FilesOfOtherKindsCountAsFilesOnly) {
    PutDay({2008, 11, 13}, "a.jpg");
    PutDay({2008, 11, 13}, "song.mp3");
    PutDay({2008, 11, 13}, "film.avi");
    PutDay({2008, 11, 13}, "$calendar.cidx");
    ASSERT_TRUE(tree.ScanAll(root));
    const DateNode day = tree.Nodes(kDayLevel).at(0);
    EXPECT_EQ(day.fileCount, 4);
    EXPECT_EQ(day.shownCount, 1);
}

TEST_F(DateTreeScan, SubFoldersAreCountedAtAnyDepth) {
    PutDay({2008, 11, 13}, "trip/morning/a.jpg");
    PutDay({2008, 11, 13}, "trip/b.jpg");
    PutDay({2008, 11, 13}, "c.jpg");
    ASSERT_TRUE(tree.ScanAll(root));
    EXPECT_EQ(tree.CountOf(2008, 11, 13), 3);
}

TEST_F(DateTreeScan, ADayWithNothingToShowIsDropped) {
    PutDay({2008, 11, 13}, "song.mp3");
    MakeFolder("files/2008/200812/2008_1201");
    ASSERT_TRUE(tree.ScanAll(root));
    for (int level = kYearLevel; level <= kDayLevel; ++level) EXPECT_THAT(Dates(level), IsEmpty());
}

TEST_F(DateTreeScan, DaysBeyondTheMonthsLengthStayUnseen) {
    PutDay({2007, 2, 29}, "a.jpg");
    PutDay({2007, 2, 30}, "a.jpg");
    PutDay({2008, 2, 29}, "a.jpg");
    ASSERT_TRUE(tree.ScanAll(root));
    EXPECT_THAT(Dates(kDayLevel), ElementsAre(CalendarDate{2008, 2, 29}));
}

TEST_F(DateTreeScan, AFolderWhoseNameIsNoNumberIsTheYearZero) {
    MakeFolder("files/abc");
    PutDay({0, 1, 2}, "a.jpg");
    Put("files/readme.txt");
    Put("files/1999");  // a file is no year
    ASSERT_TRUE(tree.ScanAll(root));
    EXPECT_THAT(Dates(kDayLevel), ElementsAre(CalendarDate{0, 1, 2}));
}

TEST_F(DateTreeScan, AFolderNameIsReadAsFarAsItIsANumber) {
    PutDay({2008, 11, 13}, "a.jpg");
    MakeFolder("files/2008 old");
    MakeFolder("files/99999999999999999999");
    MakeFolder("files/-7");
    ASSERT_TRUE(tree.ScanAll(root));
    EXPECT_THAT(Dates(kDayLevel), ElementsAre(CalendarDate{2008, 11, 13}));
}

TEST_F(DateTreeScan, CountingOnlyLeavesTheListsAsTheyAre) {
    PutDay({2008, 11, 13}, "a.jpg");
    ASSERT_TRUE(tree.ScanAll(root));
    PutDay({2008, 11, 14}, "a.jpg");
    ASSERT_TRUE(tree.Scan(root, true));
    EXPECT_THAT(Dates(kDayLevel), ElementsAre(CalendarDate{2008, 11, 13}));
    ASSERT_TRUE(tree.Scan(root, false));
    EXPECT_EQ(Dates(kDayLevel).size(), 2u);
    ASSERT_TRUE(tree.Scan(root, false));
    EXPECT_EQ(Dates(kDayLevel).size(), 2u);
}

TEST_F(DateTreeScan, ProgressRisesToOneADayFolderAtATime) {
    PutDay({2008, 11, 13}, "a.jpg");
    PutDay({2008, 11, 14}, "song.mp3");
    PutDay({2008, 12, 1}, "a.jpg");
    PutDay({2009, 1, 1}, "a.jpg");
    std::vector<double> ratios;
    listener.onProgress = [&](double ratio) { ratios.push_back(ratio); };
    ASSERT_TRUE(tree.ScanAll(root));
    EXPECT_THAT(ratios, ElementsAre(0.25, 0.5, 0.75, 1.0));
}

TEST_F(DateTreeScan, ProgressStaysBelowOneWhenDaysCameAfterTheCount) {
    PutDay({2008, 11, 13}, "a.jpg");
    ASSERT_TRUE(tree.Scan(root, true));
    PutDay({2008, 11, 14}, "a.jpg");
    std::vector<double> ratios;
    listener.onProgress = [&](double ratio) { ratios.push_back(ratio); };
    ASSERT_TRUE(tree.Scan(root, false));
    EXPECT_THAT(ratios, ElementsAre(1.0, 1.0));
}

TEST_F(DateTreeScan, RestsAfterEachMonthThatHoldsSomething) {
    PutDay({2008, 11, 13}, "a.jpg");
    PutDay({2008, 11, 14}, "a.jpg");
    PutDay({2008, 12, 1}, "a.jpg");
    PutDay({2009, 1, 1}, "song.mp3");
    ASSERT_TRUE(tree.Scan(root, true));
    EXPECT_EQ(clock.sleptMs, 0);
    ASSERT_TRUE(tree.Scan(root, false));
    EXPECT_EQ(clock.sleptMs, 200);
}

TEST_F(DateTreeScan, TheFlagIsSetWhileTheScanRuns) {
    PutDay({2008, 11, 13}, "a.jpg");
    int seen = -1;
    listener.onProgress = [&](double) { seen = State().run.DateScanRunning; };
    ASSERT_TRUE(tree.ScanAll(root));
    EXPECT_EQ(seen, 1);
    EXPECT_EQ(State().run.DateScanRunning, 0);
}

TEST_F(DateTreeScan, ARootThatIsMissingHoldsNothing) {
    EXPECT_TRUE(tree.ScanAll(At("absent")));
    EXPECT_TRUE(tree.ScanAll(""));
    EXPECT_THAT(Dates(kYearLevel), IsEmpty());
}

TEST_F(DateTreeScan, LinksThatRunInACircleEnd) {
    PutDay({2008, 11, 13}, "sub/a.jpg");
    const std::string day = MakeDayFolderPath(root, 2008, 11, 13);
    std::filesystem::create_symlink(day, (day + "/sub/again"));
    std::filesystem::create_symlink(".", (day + "/self"));
    std::filesystem::create_symlink(root, (root + "/2010"));
    ASSERT_TRUE(tree.ScanAll(root));
    EXPECT_EQ(tree.CountOf(2008, 11, 13), 1);
}

TEST_F(DateTreeScan, AYearThatIsALinkToAFolderIsAYear) {
    Put("elsewhere/200811/2008_1113/a.jpg");
    std::filesystem::create_symlink(At("elsewhere"), (root + "/2008"));
    ASSERT_TRUE(tree.ScanAll(root));
    EXPECT_EQ(tree.CountOf(2008, 11, 13), 1);
}

TEST_F(DateTreeScan, AFolderWithoutPermissionIsEmpty) {
    PutDay({2008, 11, 13}, "a.jpg");
    PutDay({2008, 11, 14}, "a.jpg");
    const std::string closed = MakeDayFolderPath(root, 2008, 11, 13);
    const test::ClosedFolder cannotBeListed(closed);
    EXPECT_TRUE(tree.ScanAll(root));
    EXPECT_EQ(Dates(kDayLevel).size(), 1u);
}

TEST_F(DateTreeScan, AStopIsFeltBetweenTwoDays) {
    PutDay({2008, 11, 13}, "a.jpg");
    PutDay({2008, 11, 14}, "a.jpg");
    StopSource stop;
    listener.onProgress = [&](double) { stop.RequestStop(); };
    EXPECT_FALSE(tree.ScanAll(root, stop.Token()));
    EXPECT_THAT(Dates(kDayLevel), IsEmpty());
    EXPECT_EQ(State().run.DateScanRunning, 0);
    EXPECT_FALSE(tree.ScanAll(root, stop.Token()));
}

TEST_F(DateTreeScan, CountIsEmptyForWhatIsNotListed) {
    PutDay({2008, 11, 13}, "a.jpg");
    ASSERT_TRUE(tree.ScanAll(root));
    EXPECT_FALSE(tree.CountOf(2008, 11, 14));
    EXPECT_FALSE(tree.CountOf(2008, 12, 0));
    EXPECT_FALSE(tree.CountOf(2007, 0, 0));
    EXPECT_FALSE(tree.CountOf(2009, 0, 0));
    EXPECT_THAT(tree.Nodes(0), IsEmpty());
    EXPECT_THAT(tree.Nodes(4), IsEmpty());
}

TEST_F(DateTreePick, AnEmptyListGivesNothing) {
    for (int level = -1; level <= 5; ++level) EXPECT_FALSE(tree.Pick(level)) << level;
}

TEST_F(DateTreePick, EachLevelGivesItsOwnPartOfADate) {
    PutDay({2008, 11, 13}, "a.jpg");
    ASSERT_TRUE(tree.ScanAll(root));
    EXPECT_EQ(tree.Pick(kYearLevel), (CalendarDate{2008, 0, 0}));
    EXPECT_EQ(tree.Pick(kMonthLevel), (CalendarDate{2008, 11, 0}));
    EXPECT_EQ(tree.Pick(kDayLevel), (CalendarDate{2008, 11, 13}));
    EXPECT_EQ(tree.Nodes(kDayLevel)[0].timesChosen, 1);
}

TEST_F(DateTreePick, OnlyADayAsksForARepaint) {
    PutDay({2008, 11, 13}, "a.jpg");
    ASSERT_TRUE(tree.ScanAll(root));
    int asked = 0;
    listener.onDayPicked = [&] { ++asked; };
    tree.Pick(kYearLevel);
    tree.Pick(kMonthLevel);
    EXPECT_EQ(asked, 0);
    tree.Pick(kDayLevel);
    EXPECT_EQ(asked, 1);
}

TEST_F(DateTreePick, DatesNotYetShownArePreferred) {
    for (int day = 1; day <= 28; ++day) PutDay({2008, 2, day}, "a.jpg");
    ASSERT_TRUE(tree.ScanAll(root));
    std::map<CalendarDate, int> chosen;
    for (int i = 0; i < 28; ++i) {
        clock.now.milliseconds = static_cast<std::uint16_t>(i * 7);
        ++chosen[*tree.Pick(kDayLevel)];
    }
    // Blind drawing would show some 18 of 28 days; ten draws that look for a new one show nearly all.
    EXPECT_GE(chosen.size(), 24u);
}

TEST_F(DateTreePick, TheSameClockGivesTheSameDates) {
    for (int day = 1; day <= 28; ++day) PutDay({2008, 2, day}, "a.jpg");
    DateTree twin;
    ASSERT_TRUE(tree.ScanAll(root));
    ASSERT_TRUE(twin.ScanAll(root));
    for (int i = 0; i < 10; ++i) {
        clock.now.second = static_cast<std::uint16_t>(i);
        EXPECT_EQ(tree.Pick(kDayLevel), twin.Pick(kDayLevel));
    }
}

TEST_F(DateTreePick, TheLeastChosenIsTakenWhenAllWereShown) {
    PutDay({2008, 2, 1}, "a.jpg");
    PutDay({2008, 2, 2}, "a.jpg");
    ASSERT_TRUE(tree.ScanAll(root));
    for (int i = 0; i < 40; ++i) {
        clock.now.milliseconds = static_cast<std::uint16_t>(i * 13);
        ASSERT_TRUE(tree.Pick(kDayLevel));
    }
    const auto nodes = tree.Nodes(kDayLevel);
    EXPECT_NEAR(nodes[0].timesChosen, nodes[1].timesChosen, 1);
}

TEST_F(DateTreePick, TodayIsListedAtTheSeventhCallWhenItsFolderHasComeUp) {
    State().settings.DataDirectory = root;
    PutDay({2008, 11, 12}, "a.jpg");
    ASSERT_TRUE(tree.ScanAll(root));
    PutDay({2008, 11, 13}, "a.jpg");
    PutDay({2008, 11, 13}, "b.txt");
    for (int call = 1; call <= 6; ++call) {
        tree.Pick(kYearLevel);
        EXPECT_FALSE(tree.CountOf(2008, 11, 13)) << call;
    }
    tree.Pick(kYearLevel);
    EXPECT_EQ(tree.CountOf(2008, 11, 13), 2);
    EXPECT_EQ(tree.CountOf(2008, 11, 0), 3);
    EXPECT_EQ(tree.CountOf(2008, 0, 0), 1);  // the year is left as it was
    for (int call = 0; call < 14; ++call) tree.Pick(kYearLevel);
    EXPECT_EQ(tree.CountOf(2008, 11, 0), 3);
    EXPECT_EQ(tree.Nodes(kDayLevel).size(), 2u);
}

TEST_F(DateTreePick, TodayIsListedEvenInANewMonthAndWithNothingToShow) {
    State().settings.DataDirectory = root;
    MakeFolder("files/2008/200811/2008_1113");
    for (int call = 0; call < 7; ++call) tree.Pick(kDayLevel);
    EXPECT_EQ(tree.CountOf(2008, 11, 13), 0);
    EXPECT_EQ(tree.CountOf(2008, 11, 0), 0);
    EXPECT_FALSE(tree.CountOf(2008, 0, 0));
}

TEST_F(DateTreePick, ATodayWithoutAFolderIsNotListed) {
    State().settings.DataDirectory = root;
    for (int call = 0; call < 14; ++call) tree.Pick(kDayLevel);
    EXPECT_THAT(tree.Nodes(kDayLevel), IsEmpty());
}

TEST_F(DateTreePick, MayBeAskedByOtherThreadsWhileTheScanRuns) {
    for (int month = 1; month <= 12; ++month) PutDay({2008, month, 1}, "a.jpg");
    std::atomic<bool> scanned = false;
    std::vector<std::thread> askers;
    for (int i = 0; i < 2; ++i)
        askers.emplace_back([&] {
            do {
                tree.Pick(kMonthLevel);
                tree.CountOf(2008, 5, 0);
            } while (!scanned);
        });
    EXPECT_TRUE(tree.ScanAll(root));
    scanned = true;
    for (std::thread& asker : askers) asker.join();
    EXPECT_EQ(tree.Nodes(kMonthLevel).size(), 12u);
}

}  // namespace
}  // namespace kalmora
