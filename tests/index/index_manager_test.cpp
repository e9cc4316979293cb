#include "index/index_manager.h"

#include <future>
#include <thread>

#include "base/log.h"
#include "index/index_tree.h"
#include "index/update.h"
#include "index_fixture.h"

namespace kalmora {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

class ManagerTest : public IndexTest {
protected:
    ManagerTest() { PutInDay("a.txt", "cat"); }
    // "2008/11 2008/12" in the order of the list.
    std::string ListOf(const IndexManager& one) const {
        std::string text;
        for (const MonthPointer& month : one.Months()) {
            if (!text.empty()) text += ' ';
            text += std::to_string(month->year) + "/" + std::to_string(month->month);
        }
        return text;
    }
    // Its logs during the work.
    template <typename Work>
    std::string LogOf(const Work& work) {
        EXPECT_TRUE(OpenLog(At("log.dat")));
        work();
        OpenLog("");
        return ContentOf(At("log.dat"));
    }

    IndexManager manager{root, context};
};
using IndexManagerLoad = ManagerTest;
using IndexManagerStop = ManagerTest;
using IndexManagerUpdate = ManagerTest;
using IndexManagerCopy = ManagerTest;
using AddFile = ManagerTest;

// ---- loading

TEST_F(IndexManagerLoad, FirstTouchLeavesABlankMonth) {
    manager.Load(2008, 11, 0);
    EXPECT_TRUE(HasIndex());
    EXPECT_FALSE(manager.IsLoaded(2008, 11, 0));
    EXPECT_EQ(ListOf(manager), "2008/11");
    EXPECT_FALSE(manager.Months().front()->IsLoaded(13));
    EXPECT_FALSE(manager.IsBusy());
}

TEST_F(IndexManagerLoad, SecondTouchFillsTheMonthFromTheIndexFiles) {
    manager.Load(2008, 11, 0);
    PutIndex("FILE=from index.txt\n-\n");
    manager.Load(2008, 11, 0);
    EXPECT_TRUE(manager.IsLoaded(2008, 11, 0));
    EXPECT_THAT(NamesOf(*manager.FindMonth(2008, 11)->Day(13)), ElementsAre("from index.txt"));
}

TEST_F(IndexManagerLoad, ThirdTouchReadsNothingAndMovesToTheFront) {
    manager.Load(2008, 11, 0);
    manager.Load(2008, 11, 0);
    manager.Load(2008, 12, 0);
    EXPECT_EQ(ListOf(manager), "2008/12 2008/11");
    files::RemoveFolderTree(files::Join(root, "2008"));
    manager.Load(2008, 11, 0);
    EXPECT_EQ(ListOf(manager), "2008/11 2008/12");
    EXPECT_THAT(manager.FindMonth(2008, 11)->Day(13)->entries, SizeIs(1));
}

TEST_F(IndexManagerLoad, WholeYear) {
    manager.Load(2008, 0, 0);
    EXPECT_THAT(manager.Months(), SizeIs(12));
    EXPECT_FALSE(manager.IsLoaded(2008, 0, 0));
    manager.Load(2008, 0, 0);
    EXPECT_TRUE(manager.IsLoaded(2008, 0, 0));
    EXPECT_EQ(manager.Months().front()->month, 12);
}

TEST_F(IndexManagerLoad, OneDay) {
    manager.Load(2008, 11, 13);
    EXPECT_TRUE(HasIndex());
    manager.Load(2008, 11, 13);
    EXPECT_TRUE(manager.IsLoaded(2008, 11, 13));
    EXPECT_FALSE(manager.IsLoaded(2008, 11, 12));
    EXPECT_FALSE(manager.IsLoaded(2008, 11, 0));
}

TEST_F(IndexManagerLoad, YearZeroMakesTwelveEmptyMonths) {
    manager.Load(0, 0, 0);
    manager.Load(0, 0, 0);
    EXPECT_THAT(manager.Months(), SizeIs(12));
    EXPECT_FALSE(manager.IsLoaded(0, 0, 0));
    EXPECT_FALSE(manager.IsLoaded(0, 1, 0));
}

TEST_F(IndexManagerLoad, MonthThatIsNotInTheListIsNotLoaded) {
    EXPECT_FALSE(manager.IsLoaded(2008, 11, 13));
    EXPECT_FALSE(manager.IsLoaded(2008, 11, 0));
    EXPECT_FALSE(manager.IsLoaded(2008, 0, 0));
    EXPECT_THAT(manager.Months(), IsEmpty());
}

TEST_F(IndexManagerLoad, IsToldInTheLog) {
    EXPECT_THAT(LogOf([&] { manager.Load(2008, 11, 0); }), HasSubstr("[IndexManager] Load (2008/11)"));
}

TEST_F(IndexManagerLoad, MonthsComeIntoMemoryAtOnceTheLastInFront) {
    PutInDay("old.txt");
    const std::vector<CalendarDate> months{{2007, 3, 0}, {2008, 11, 0}, {2008, 12, 0}};
    EXPECT_TRUE(manager.LoadMonths(months));
    EXPECT_EQ(ListOf(manager), "2008/12 2008/11 2007/3");
    EXPECT_TRUE(manager.IsLoaded(2008, 11, 0));
    EXPECT_THAT(manager.FindMonth(2008, 11)->Day(13)->entries, SizeIs(2));
}

TEST_F(IndexManagerLoad, MonthsAreNotLoadedWhenInterrupted) {
    interrupt.RequestStop();
    EXPECT_FALSE(manager.LoadMonths({{2008, 11, 0}}));
}

// ---- stopping

// Turning the indexing off while nothing ran swallowed the next two updates.
TEST_F(IndexManagerStop, RequestWithoutWorkEndsNothingLater) {
    manager.Load(2008, 11, 0);
    manager.RequestStop();
    manager.Load(2008, 11, 0);
    EXPECT_TRUE(manager.IsLoaded(2008, 11, 0));
    PutInDay("b.txt");
    manager.RequestStop();
    manager.Update(2008, 11, 0);
    EXPECT_THAT(IndexOf(), HasSubstr("b.txt"));
}

TEST_F(IndexManagerStop, RequestBetweenTheOrderAndItsWorkEndsIt) {
    manager.Load(2008, 11, 0);
    PutInDay("b.txt");
    const StopToken ordered = manager.BeginWork();
    manager.RequestStop();
    manager.Update(2008, 11, 0, ordered);
    EXPECT_THAT(IndexOf(), Not(HasSubstr("b.txt")));
}

TEST_F(IndexManagerStop, RequestEndsAllThatRuns) {
    manager.Load(2008, 10, 0);
    manager.Load(2008, 11, 0);
    std::vector<std::string> texts;
    probe.onProgress = [&, days = 0](double, const std::string& text) mutable {
        texts.push_back(text);
        // Another update begins while this one runs, and then both are stopped.
        if (++days == 5) manager.Update(2008, 10, 0);
        if (days == 10) manager.RequestStop();
    };
    manager.Update(2008, 11, 0);
    EXPECT_THAT(texts, Contains("Canceled. (2008/10)"));
    EXPECT_EQ(texts.back(), "Canceled. (2008/11)");
}

TEST_F(IndexManagerStop, RunningLoadOfAListedMonthIsCanceled) {
    manager.Load(2008, 11, 0);
    int days = 0;
    std::vector<std::string> texts;
    probe.onProgress = [&](double, const std::string& text) {
        texts.push_back(text);
        if (++days == 5) manager.RequestStop();
    };
    manager.Load(2008, 11, 0);
    EXPECT_EQ(texts.back(), "Canceled. (2008/11/00)");
    EXPECT_FALSE(manager.IsBusy());
}

TEST_F(IndexManagerStop, FirstTouchIsCanceledToo) {
    PutInDay("late.txt", "x", 28);
    int days = 0;
    probe.onProgress = [&](double, const std::string&) {
        if (++days == 5) manager.RequestStop();
    };
    manager.Load(2008, 11, 0);
    EXPECT_FALSE(HasIndex(28));
    probe.onProgress = nullptr;
    manager.Load(2008, 11, 0);
    EXPECT_TRUE(manager.IsLoaded(2008, 11, 0));
    EXPECT_TRUE(HasIndex(28));
}

TEST_F(IndexManagerStop, YearEndsAtTheMonthThatWasStopped) {
    int texts = 0;
    probe.onProgress = [&](double, const std::string&) {
        if (++texts == 40) manager.RequestStop();  // in February
    };
    manager.Load(2008, 0, 0);
    EXPECT_THAT(manager.Months(), SizeIs(2));
}

TEST_F(IndexManagerStop, MonthsThatAreNotTheTargetGoOn) {
    manager.Load(2008, 10, 0);
    manager.Load(2008, 11, 0);
    const StopToken onOctober = manager.FindMonth(2008, 10)->BeginWork();
    const StopToken onNovember = manager.FindMonth(2008, 11)->BeginWork();
    probe.onProgress = [&](double, const std::string&) { manager.RequestStop(); };
    manager.Load(2008, 11, 0);
    EXPECT_TRUE(onNovember.IsStopped());
    EXPECT_FALSE(onOctober.IsStopped());
}

TEST_F(IndexManagerStop, BothManagersAreStoppedAndTheReasonTold) {
    State().settings.OtherDirectory = MakeFolder("other");
    State().settings.UseOtherFolder = true;
    MainIndex().Load(2008, 11, 0);
    OtherIndex().Load(2008, 11, 0);
    const std::string log = LogOf([this] {
        StopIndexing(nullptr);
        probe.onProgress = [](double, const std::string&) { StopIndexing("stop by user"); };
        MainIndex().Update(2008, 11, 0);
        OtherIndex().Update(2008, 11, 0);
        probe.onProgress = nullptr;
    });
    EXPECT_THAT(log, HasSubstr("[Stop Indexing] stop by user"));
    EXPECT_THAT(log, HasSubstr("[Stop Indexing] none"));
    EXPECT_THAT(log, HasSubstr("[Month] Stop indexing (2008/11)"));
    EXPECT_EQ(MainIndex().FindMonth(2008, 11)->lastUpdateSeconds, 0);
    EXPECT_EQ(OtherIndex().FindMonth(2008, 11)->lastUpdateSeconds, 0);
}

TEST_F(IndexManagerStop, OtherManagerIsLeftAloneWhileItIsNotUsed) {
    State().settings.OtherDirectory = MakeFolder("other");
    State().settings.UseOtherFolder = false;
    const StopToken before = OtherIndex().BeginWork();
    StopIndexing("test");
    EXPECT_FALSE(before.IsStopped());
    EXPECT_EQ(OtherIndexInUse(), nullptr);
    State().settings.UseOtherFolder = true;
    EXPECT_EQ(OtherIndexInUse(), &OtherIndex());
}

// ---- copies

TEST_F(IndexManagerCopy, MissingMonthIsListedUnloaded) {
    const MonthPointer copy = manager.GetMonthCopy(2008, 11);
    EXPECT_EQ(ListOf(manager), "2008/11");
    EXPECT_FALSE(copy->IsLoaded(13));
    copy->Load(0);
    EXPECT_FALSE(manager.IsLoaded(2008, 11, 13));
    manager.Load(2008, 11, 0);  // no first touch any more
    EXPECT_TRUE(manager.IsLoaded(2008, 11, 0));
}

TEST_F(IndexManagerCopy, OrderOfTheListStays) {
    manager.Load(2008, 10, 0);
    manager.Load(2008, 11, 0);
    manager.GetMonthCopy(2008, 10);
    EXPECT_EQ(ListOf(manager), "2008/11 2008/10");
}

// ---- updating

TEST_F(IndexManagerUpdate, MonthThatIsNotInTheListIsBroughtUpToDateOnTheDisk) {
    manager.Update(2008, 11, 0);
    EXPECT_TRUE(HasIndex());
    EXPECT_EQ(ListOf(manager), "2008/11");
    EXPECT_FALSE(manager.IsLoaded(2008, 11, 0));
    EXPECT_EQ(manager.FindMonth(2008, 11)->lastUpdateSeconds, 0);
}

TEST_F(IndexManagerUpdate, RecordsOfUnchangedFilesAreKept) {
    const FileTime written = files::GetStatus(PathOf("a.txt"))->written;
    char time[40];
    std::snprintf(time, sizeof time, "TIME=(%X,%X)\n", written.High(), written.Low());
    PutIndex("FILE=a.txt\n" + std::string(time) + "COMM=kept\n-\n");
    PutInDay("b.txt");
    manager.Update(2008, 11, 0);
    EXPECT_THAT(IndexOf(), HasSubstr("COMM=kept"));
    EXPECT_THAT(IndexOf(), HasSubstr("FILE=b.txt"));
}

TEST_F(IndexManagerUpdate, ListedMonthLearnsWhatIsNew) {
    manager.Load(2008, 11, 0);
    manager.Load(2008, 11, 0);
    PutInDay("b.txt");
    EXPECT_THAT(manager.FindMonth(2008, 11)->Day(13)->entries, SizeIs(1));
    manager.Update(2008, 11, 0);
    EXPECT_THAT(manager.FindMonth(2008, 11)->Day(13)->entries, SizeIs(2));
    EXPECT_THAT(IndexOf(), HasSubstr("FILE=b.txt"));
}

TEST_F(IndexManagerUpdate, OneDayOfAListedMonth) {
    manager.Load(2008, 11, 0);
    manager.Load(2008, 11, 0);
    PutInDay("b.txt");
    PutInDay("c.txt", "x", 14);
    manager.Update(2008, 11, 13);
    EXPECT_THAT(manager.FindMonth(2008, 11)->Day(13)->entries, SizeIs(2));
    EXPECT_FALSE(HasIndex(14));
}

TEST_F(IndexManagerUpdate, AgeIsCountedFromTheLastUpdateOrTheStart) {
    clock.uptimeMs = 500'000;
    EXPECT_EQ(manager.SecondsSinceUpdate(2008, 11), 360000);
    manager.Load(2008, 11, 0);
    EXPECT_EQ(manager.SecondsSinceUpdate(2008, 11), 500);
    clock.uptimeMs = 1'000'000;
    manager.Update(2008, 11, 0);
    EXPECT_EQ(manager.SecondsSinceUpdate(2008, 11), 0);
    clock.uptimeMs = 44'200'999;
    EXPECT_EQ(manager.SecondsSinceUpdate(2008, 11), 43200);
    clock.uptimeMs = 44'201'000;
    EXPECT_EQ(manager.SecondsSinceUpdate(2008, 11), 43201);
}

// With only a year in view, the year's own folder got an index file.
TEST_F(IndexManagerUpdate, BareYearIsUpdatedMonthByMonthAndGetsNoIndexOfItsOwn) {
    PutInDay("b.txt");
    UpdateMonthOfBothRoots(2008, 0);
    EXPECT_THAT(IndexOf(), HasSubstr("b.txt"));
    MainIndex().Load(2008, 0, 5);
    MainIndex().Update(2008, 0, 5);
    AddFileToIndex(root + "/2008/stray.txt");
    for (const auto& entry : std::filesystem::directory_iterator(root + "/2008"))
        EXPECT_TRUE(entry.is_directory()) << entry.path();
}

TEST_F(IndexManagerUpdate, StopRequestEndsItAndNotTheNextOne) {
    manager.Load(2008, 11, 0);
    manager.Load(2008, 11, 0);
    PutInDay("b.txt");
    probe.onProgress = [&](double, const std::string&) { manager.RequestStop(); };
    manager.Update(2008, 11, 0);
    EXPECT_THAT(IndexOf(), Not(HasSubstr("b.txt")));
    probe.onProgress = nullptr;
    manager.Update(2008, 11, 0);
    EXPECT_THAT(IndexOf(), HasSubstr("b.txt"));
}

TEST_F(IndexManagerUpdate, RequestsAreTakenOneByOne) {
    PutInDay("b.txt", "x", 14);
    manager.Update(0, 0, 1);  // nothing was asked for
    EXPECT_FALSE(HasIndex());
    manager.RequestUpdate({2008, 11, 13});
    manager.RequestUpdate({2008, 11, 14});
    manager.Update(0, 0, 1);
    EXPECT_TRUE(HasIndex(13));
    EXPECT_FALSE(HasIndex(14));
    manager.Update(0, 0, 1);
    EXPECT_TRUE(HasIndex(14));
}

TEST_F(IndexManagerUpdate, UpdateOfAMonthAnswersItsRequests) {
    manager.RequestUpdate({2008, 0, 0});
    manager.RequestUpdate({2008, 11, 0});
    manager.RequestUpdate({2008, 12, 0});
    manager.Update(2008, 11, 0);
    manager.Load(2008, 12, 0);
    PutInDay("x.txt");
    manager.Update(0, 0, 1);  // the only one left is December's
    EXPECT_EQ(manager.CurrentTarget(), (CalendarDate{0, 0, 0}));
    EXPECT_THAT(IndexOf(), Not(HasSubstr("x.txt")));
}

TEST_F(IndexManagerUpdate, BothRootsInTheBackground) {
    State().settings.OtherDirectory = MakeFolder("other");
    State().settings.UseOtherFolder = true;
    const std::string other = Put("other/2008/200811/2008_1113/o.txt");
    const std::string log = LogOf([this] { UpdateMonthOfBothRoots(2008, 11); });
    EXPECT_TRUE(HasIndex());
    EXPECT_TRUE(files::Exists(At("other/2008/200811/2008_1113/$calendar.cidx")));
    EXPECT_THAT(log, HasSubstr("Updating by backprocess: 2008/11"));
    EXPECT_THAT(log, HasSubstr("Updated: 2008/11"));
    EXPECT_THAT(log, HasSubstr("----------------------------------"));
}

TEST_F(IndexManagerUpdate, BackgroundThreadIsMarkedWhileItRuns) {
    StartBackgroundUpdate(200811);
    for (int i = 0; i < 10000 && State().run.BackgroundUpdateRunning; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    EXPECT_FALSE(State().run.BackgroundUpdateRunning);
    EXPECT_TRUE(HasIndex());
}

// ---- loading ahead

using PreloadIndexesTest = ManagerTest;

TEST_F(PreloadIndexesTest, ZeroMonthsLoadNothing) {
    State().settings.NumberOfLoadIndex = 0;
    PreloadIndexes();
    EXPECT_THAT(MainIndex().Months(), IsEmpty());
}

TEST_F(PreloadIndexesTest, GoesBackOverTheEndsOfYears) {
    clock.now = {2009, 1, 4, 15, 10, 0, 0, 0};
    State().settings.NumberOfLoadIndex = 14;
    PreloadIndexes();
    EXPECT_EQ(
        ListOf(MainIndex()),
        "2007/12 2008/1 2008/2 2008/3 2008/4 2008/5 2008/6 2008/7 2008/8 2008/9 2008/10 2008/11 2008/12 "
        "2009/1");
    EXPECT_TRUE(HasIndex());
}

TEST_F(PreloadIndexesTest, OtherFolderIsLoadedWhereItIsUsed) {
    State().settings.NumberOfLoadIndex = 1;
    State().settings.OtherDirectory = MakeFolder("other");
    State().settings.UseOtherFolder = true;
    PreloadIndexes();
    EXPECT_THAT(OtherIndex().Months(), SizeIs(1));
}

// ---- adding a file

TEST_F(AddFile, IndexFileKnowsItAndTheListedRecordDoesNot) {
    MainIndex().Load(2008, 11, 0);
    MainIndex().Load(2008, 11, 0);
    PutInDay("b.txt", "bird");
    AddFileToIndex(PathOf("b.txt"));
    EXPECT_THAT(IndexOf(), HasSubstr("FILE=b.txt"));
    EXPECT_THAT(MainIndex().FindMonth(2008, 11)->Day(13)->entries, SizeIs(1));
    MainIndex().Update(2008, 11, 0);
    EXPECT_THAT(MainIndex().FindMonth(2008, 11)->Day(13)->entries, SizeIs(2));
}

TEST_F(AddFile, FilesThatWereAddedBeforeStayInTheFile) {
    MainIndex().Load(2008, 11, 0);
    MainIndex().Load(2008, 11, 0);
    for (const char* name : {"b.txt", "c.txt", "d.txt"}) AddFileToIndex(PutInDay(name));
    EXPECT_THAT(NamesOf(LoadDay()), ElementsAre("a.txt", "b.txt", "c.txt", "d.txt"));
}

TEST_F(AddFile, KnownFileThatChangedIsKnownToTheListToo) {
    Touch(PathOf("a.txt"), 0);
    MainIndex().Load(2008, 11, 0);
    MainIndex().Load(2008, 11, 0);
    Touch(PutInDay("a.txt", "lion"), 1);
    AddFileToIndex(PathOf("a.txt"));
    EXPECT_EQ(MainIndex().FindMonth(2008, 11)->Day(13)->Find(PathOf("a.txt"))->comment, "lion");
    EXPECT_THAT(IndexOf(), HasSubstr("COMM=lion"));
}

TEST_F(AddFile, UnlistedMonthIsListed) {
    AddFileToIndex(PathOf("a.txt"));
    EXPECT_EQ(ListOf(MainIndex()), "2008/11");
    EXPECT_FALSE(MainIndex().IsLoaded(2008, 11, 13));
}

TEST_F(AddFile, PathsInNeitherRootDoNothing) {
    State().settings.OtherDirectory = At("other");
    for (const std::string& path : {At("elsewhere/2008/200811/2008_1113/a.txt"), std::string("/etc/passwd"),
                                    std::string(), std::string("a.txt"), root, root + "/"})
        AddFileToIndex(path);
    EXPECT_THAT(MainIndex().Months(), IsEmpty());
    EXPECT_FALSE(HasIndex());
}

TEST_F(AddFile, PathsAboveADayDoNothing) {
    Put("files/2008/200811/back.jpg");
    AddFileToIndex(At("files/2008/200811/back.jpg"));
    AddFileToIndex(At("files/2008/200813/2008_1301/a.txt"));
    AddFileToIndex(At("files/2008/200802/2008_0231/a.txt"));
    EXPECT_FALSE(files::Exists(At("files/2008/200811/$calendar.cidx")));
}

TEST_F(AddFile, FileOfTheOtherRootGoesIntoItsOwnIndex) {
    State().settings.OtherDirectory = MakeFolder("other");
    const std::string path = Put("other/2008/200811/2008_1113/o.txt", "owl");
    AddFileToIndex(path);
    EXPECT_THAT(ContentOf(At("other/2008/200811/2008_1113/$calendar.cidx")), HasSubstr("FILE=o.txt"));
    EXPECT_FALSE(HasIndex());
}

TEST_F(AddFile, ManyFilesAtOnce) {
    std::vector<std::string> paths;
    for (const int day : {13, 14})
        for (const char* name : {"x.txt", "y.txt"}) paths.push_back(PutInDay(name, "x", day));
    AddFilesToIndex(paths);
    EXPECT_THAT(NamesOf(LoadDay(13)), ElementsAre("a.txt", "x.txt", "y.txt"));
    EXPECT_THAT(NamesOf(LoadDay(14)), ElementsAre("x.txt", "y.txt"));
}

TEST_F(AddFile, FileThatIsNotThereYetHasARecord) {
    AddFileToIndex(PathOf("coming.lnk"));
    EXPECT_THAT(IndexOf(), HasSubstr("FILE=coming.lnk"));
}

// ---- the tree

using IndexTree = ManagerTest;

TEST_F(IndexTree, MonthsAreListedByTheNamesOfTheirFolders) {
    for (const char* folder : {"2008/200803", "2007/200712", "2008/200813", "2008/2008011", "2008/x",
                               "abc/200801", "2009/200801", "12345/1234501", "0005/000501"})
        MakeFolder(std::string("files/") + folder);
    Put("files/2008/200804");  // a file
    EXPECT_THAT(ListMonths(root),
                ElementsAre(CalendarDate{5, 1, 0}, CalendarDate{2007, 12, 0}, CalendarDate{2008, 3, 0},
                            CalendarDate{2008, 11, 0}, CalendarDate{12345, 1, 0}));
    EXPECT_THAT(ListMonths(root, 2008), ElementsAre(CalendarDate{2008, 3, 0}, CalendarDate{2008, 11, 0}));
    EXPECT_THAT(ListMonths(At("nowhere")), IsEmpty());
}

TEST_F(IndexTree, EachMonthIsWorkedOnOnce) {
    std::vector<CalendarDate> months;
    for (int year = 2000; year < 2010; ++year)
        for (int month = 1; month <= 12; ++month) months.push_back({year, month, 0});
    std::mutex mutex;
    std::vector<CalendarDate> seen;
    std::vector<std::size_t> done;
    EXPECT_TRUE(RunOverMonths(
        months, StopToken(),
        [&](const CalendarDate& month, IndexBatch&) {
            std::lock_guard lock(mutex);
            seen.push_back(month);
            return true;
        },
        [&](std::size_t count) { done.push_back(count); }));
    std::sort(seen.begin(), seen.end());
    EXPECT_EQ(seen, months);
    EXPECT_EQ(done.size(), 120u);
    EXPECT_EQ(done.back(), 120u);
}

TEST_F(IndexTree, MonthThatFailsLeavesTheOthersAlone) {
    std::vector<CalendarDate> months(1000, CalendarDate{2008, 11, 0});
    std::atomic<int> count = 0;
    EXPECT_FALSE(
        RunOverMonths(months, StopToken(), [&](const CalendarDate&, IndexBatch&) { return ++count != 10; }));
    EXPECT_EQ(count, 1000);
    EXPECT_TRUE(RunOverMonths({}, StopToken(), [](const CalendarDate&, IndexBatch&) { return false; }));
}

}  // namespace
}  // namespace kalmora
