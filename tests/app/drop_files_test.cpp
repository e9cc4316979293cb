// Files that are dropped on the window: which day they are meant for, and what is done with them.
#include "app/drop_files.h"

#include <filesystem>
#include <fstream>

#include "app/connect_index.h"
#include "app/drop_target.h"
#include "base/dates.h"
#include "index/day_index.h"
#include "index/index_manager.h"
#include "index/update.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "support/permissions.h"
#include "views/load/arrivals.h"
#include "views/load/object_loader.h"
#include "views/model/calendar_geometry.h"
#include "views/model/calendar_store.h"
#include "views/view_fixture.h"

namespace kalmora {
namespace {

using testing::HasSubstr;

class DropTest : public ViewTest {
protected:
    DropTest() {
        ResetIndexes();
        State().settings.TempFolder = root_ + "/Temp";
        State().settings.DayEndTimeForScrap = 24;
        OpenWindow({960, 700});
    }
    ~DropTest() override {
        ChangeView([&](ViewState& view) { view.scatter = false; });
        State().settings.CalendarMode = 1;
        State().settings.TempFolder.clear();
        ResetIndexes();
    }
    std::string Add(const std::string& name, std::string_view content = "content") const {
        const std::string path = root_ + "/desktop/" + name;
        std::filesystem::create_directories(std::filesystem::path(path).parent_path());
        std::ofstream(path, std::ios::binary) << content;
        return path;
    }
    static Point Middle(const Rect& rect) { return {rect.x + rect.width / 2, rect.y + rect.height / 2}; }
    static MonthGrid Grid() {
        const Size client = ClientSize();
        return MakeMonthGrid(View().period.date.year, View().period.date.month,
                             {0, 0, client.width, client.height}, false);
    }
    static Point OnDay(int day) { return Middle(MonthCellRect(Grid(), day)); }
    std::string Day(int day, const std::string& name) const { return DayFolder(2008, 11, day) + "/" + name; }
    static std::string Content(const std::string& path) {
        return files::ReadWholeFile(path).value_or("none");
    }
};

using DropTargetTest = DropTest;
using DropFilesTest = DropTest;
using ArrivalsTest = DropTest;

// ---- which day

TEST_F(DropTargetTest, MonthGivesTheDayUnderThePointOrItsBackground) {
    ShowMonth(2008, 11);
    for (const int day : {1, 13, 30}) {
        const auto target = FindDropTarget(*calendar_, OnDay(day));
        ASSERT_TRUE(target);
        EXPECT_EQ(target->day, (CalendarDate{2008, 11, day}));
        EXPECT_FALSE(target->isBackground);
    }
    const auto below = FindDropTarget(*calendar_, {950, 690});
    ASSERT_TRUE(below);
    EXPECT_EQ(below->day, (CalendarDate{2008, 11, 0}));
    EXPECT_TRUE(below->isBackground);
    EXPECT_FALSE(FindDropTarget(*calendar_, {-5, 10})) << "beside the window";
    EXPECT_FALSE(FindDropTarget(*calendar_, {10, 5000}));
}

TEST_F(DropTargetTest, YearGivesTheDayOrTheMonth) {
    ShowYear(2008);
    const int width = ClientSize().width;
    const Rect month = YearMonthRect(width, 11);
    const MonthGrid grid = MakeMonthGrid(2008, 11, month, true);
    const auto day = FindDropTarget(*calendar_, Middle(MonthCellRect(grid, 13)));
    ASSERT_TRUE(day);
    EXPECT_EQ(day->day, (CalendarDate{2008, 11, 13}));
    EXPECT_FALSE(day->isBackground);
    const auto heading = FindDropTarget(*calendar_, {month.x + month.width - 3, month.y + 3});
    ASSERT_TRUE(heading);
    EXPECT_EQ(heading->day, (CalendarDate{2008, 11, 0}));
    EXPECT_TRUE(heading->isBackground);
    const auto below = FindDropTarget(*calendar_, {5, 690});
    ASSERT_TRUE(below);
    EXPECT_TRUE(below->isBackground);
    EXPECT_EQ(below->day.month, 0);
    State().settings.CalendarMode = 0;
    EXPECT_FALSE(FindDropTarget(*calendar_, Middle(MonthCellRect(grid, 13))))
        << "one picture a month is no place";
    EXPECT_TRUE(FindDropTarget(*calendar_, {5, 690}));
}

TEST_F(DropTargetTest, DayGivesItselfAndItsTwoBackgrounds) {
    ShowDay(2008, 11, 13);
    const auto middle = FindDropTarget(*calendar_, {400, 200});
    ASSERT_TRUE(middle);
    EXPECT_EQ(middle->day, (CalendarDate{2008, 11, 13}));
    EXPECT_FALSE(middle->isBackground);
    EXPECT_TRUE(FindDropTarget(*calendar_, {20, 200})->isBackground) << "the column of the hours";
    EXPECT_TRUE(FindDropTarget(*calendar_, {400, 695})->isBackground) << "below the lines";
}

TEST_F(DropTargetTest, ScatterStandsForTheDateOfTheView) {
    ShowDay(2008, 11, 13);
    ChangeView([&](ViewState& view) {
        view.period.level = Level::Month;
        view.scatter = true;
    });
    const auto target = FindDropTarget(*calendar_, {400, 200});
    ASSERT_TRUE(target);
    EXPECT_EQ(target->day, (CalendarDate{2008, 11, 13}));
    EXPECT_FALSE(target->isBackground);
}

// ---- what is done with the file

TEST_F(DropFilesTest, FileMovesIntoTheDay) {
    ShowMonth(2008, 11);
    const std::string path = Add("a.txt");
    DropFiles(*calendar_, {{path}, OnDay(13), false}, DropPlace::MainWindow);
    EXPECT_EQ(Content(Day(13, "a.txt")), "content");
    EXPECT_FALSE(files::Exists(path));
}

TEST_F(DropFilesTest, MovedFileWaitsForTheUpdate) {
    ShowMonth(2008, 11);
    DropFiles(*calendar_, {{Add("a.txt")}, OnDay(13), false}, DropPlace::MainWindow);
    EXPECT_FALSE(files::Exists(Day(13, kIndexFileName)));
}

TEST_F(DropFilesTest, WithControlItIsCopiedAndIndexed) {
    ShowMonth(2008, 11);
    const std::string path = Add("a.txt");
    DropFiles(*calendar_, {{path}, OnDay(13), true}, DropPlace::MainWindow);
    EXPECT_EQ(Content(Day(13, "a.txt")), "content");
    EXPECT_TRUE(files::Exists(path));
    EXPECT_THAT(Content(Day(13, kIndexFileName)), HasSubstr("FILE=a.txt"));
}

TEST_F(DropFilesTest, ReadOnlyAndEmptyFilesAreCopied) {
    ShowMonth(2008, 11);
    const std::string locked = Add("locked.txt"), empty = Add("empty.mov", "");
    test::MakeReadOnly(locked);
    DropFiles(*calendar_, {{locked, empty}, OnDay(13), false}, DropPlace::MainWindow);
    EXPECT_TRUE(files::Exists(locked) && files::Exists(empty));
    EXPECT_TRUE(files::Exists(Day(13, "locked.txt")) && files::Exists(Day(13, "empty.mov")));
    EXPECT_THAT(Content(Day(13, kIndexFileName)), HasSubstr("FILE=locked.txt"));
}

TEST_F(DropFilesTest, FileThatIsThereAlreadyStaysWhereItIs) {
    ShowMonth(2008, 11);
    AddText(2008, 11, 13, "a.txt", "content");
    const std::string path = Add("a.txt");
    EXPECT_FALSE(DropFiles(*calendar_, {{path}, OnDay(13), false}, DropPlace::MainWindow).viewChanged);
    EXPECT_TRUE(files::Exists(path));
    EXPECT_FALSE(files::Exists(Day(13, "a[1].txt")));
}

TEST_F(DropFilesTest, ProgramThatGaveThemIsToldWhatWasDone) {
    ShowMonth(2008, 11);
    const auto drop = [this](std::vector<std::string> paths, Point point, bool copies = false) {
        return DropFiles(*calendar_, {std::move(paths), point, copies}, DropPlace::MainWindow).result;
    };
    EXPECT_EQ(drop({Add("a.txt"), Add("b.txt")}, OnDay(13)), DropResult::Moved);
    EXPECT_EQ(drop({Add("c.txt")}, OnDay(13), true), DropResult::Copied);
    const std::string empty = Add("empty.mov", "");
    EXPECT_EQ(drop({Add("d.txt"), empty}, OnDay(13)), DropResult::Copied) << "one of them was copied";
    EXPECT_TRUE(files::Exists(empty));
    EXPECT_EQ(drop({Add("sea.jpg")}, {950, 690}), DropResult::Copied) << "a background";
    EXPECT_EQ(drop({Add("e.txt"), root_ + "/desktop/gone-1.txt"}, OnDay(13)), DropResult::Copied);
}

TEST_F(DropFilesTest, FileThatWasNotTakenCostsNothing) {
    ShowMonth(2008, 11);
    AddText(2008, 11, 13, "a.txt", "content");
    const std::string existing = Add("a.txt"), other = Add("b.txt");
    EXPECT_EQ(DropFiles(*calendar_, {{existing}, OnDay(13)}, DropPlace::MainWindow).result,
              DropResult::NotTaken);
    EXPECT_EQ(DropFiles(*calendar_, {{other, existing}, OnDay(13)}, DropPlace::MainWindow).result,
              DropResult::Copied)
        << "a program that gets the answer move deletes both";
    EXPECT_TRUE(files::Exists(existing));
    EXPECT_EQ(DropFiles(*calendar_, {{Add("x.txt")}, {-5, 10}}, DropPlace::MainWindow).result,
              DropResult::NotTaken);
    EXPECT_EQ(DropFiles(*calendar_, {{Add("x.txt")}, {950, 690}}, DropPlace::MainWindow).result,
              DropResult::NotTaken)
        << "a text is no background";
    EXPECT_EQ(DropFiles(*calendar_, {{root_ + "/desktop/gone.txt"}, OnDay(13)}, DropPlace::MainWindow).result,
              DropResult::NotTaken);
}

TEST_F(DropFilesTest, FolderIsImportedLikeACard) {
    ShowMonth(2008, 11);
    State().settings.RemoveImportFiles = true;
    const std::string below = Add("trip/a/sunrise.txt", "[2008/11/20 06:30]\nSunrise");
    Add("trip/noon.txt", "[2008/11/21 12:00]\nNoon");
    EXPECT_EQ(
        DropFiles(*calendar_, {{root_ + "/desktop/trip"}, OnDay(13), true}, DropPlace::MainWindow).result,
        DropResult::Copied);
    EXPECT_TRUE(files::Exists(Day(20, "sunrise.txt")) && files::Exists(Day(21, "noon.txt")));
    EXPECT_TRUE(files::Exists(below)) << "it stays when it is copied";
    State().settings.RemoveImportFiles = false;
    while (CountBackgroundUpdates() > 0) SleepMs(1);  // of the index, behind the import
}

TEST_F(DropFilesTest, DropWaitsForTheImportThatRuns) {
    ShowMonth(2008, 11);
    const std::string path = Add("a.txt");
    State().run.ImportRunning = 1;
    bool waited = false;
    TheApplication()->Post([&] {
        waited = files::Exists(path);
        State().run.ImportRunning = 0;
    });
    EXPECT_EQ(DropFiles(*calendar_, {{path}, OnDay(13), false}, DropPlace::MainWindow).result,
              DropResult::Moved);
    EXPECT_TRUE(waited) << "events are served meanwhile";
    EXPECT_EQ(State().run.ImportRunning, 0);
}

TEST_F(DropFilesTest, GaugeShowsHowFarADropIs) {
    ConnectIndex();
    ShowMonth(2008, 11);
    DropFiles(*calendar_, {{Add("a.txt"), Add("b.txt")}, OnDay(13), false}, DropPlace::MainWindow);
    const int x = 960 - 410, y = 700 - 38 - 35;
    EXPECT_EQ(PixelAt(x + 199, y + 1), ColorFromBgr(0xC86432)) << "one of two";
    EXPECT_EQ(PixelAt(x + 201, y + 1), ColorFromBgr(0xB4B4B4));
    TheApplication()->ProcessEvents(10);
    EXPECT_NE(PixelAt(x + 201, y + 1), ColorFromBgr(0xB4B4B4)) << "it goes with the next painting";
}

TEST_F(DropFilesTest, NameThatDoesNotStandIsRepaired) {
    ShowMonth(2008, 11);
    const std::string path = Add("name.jpg");
    DropFiles(*calendar_, {{root_ + "/desktop/name-xxx.jpg", root_ + "/desktop/gone.jpg"}, OnDay(13), false},
              DropPlace::MainWindow);
    EXPECT_EQ(Content(Day(13, "name.jpg")), "content");
    EXPECT_TRUE(files::Exists(path)) << "it is copied";
}

TEST(RepairDroppedName, LeavesOutWhatStandsBehindTheDash) {
    EXPECT_EQ(RepairDroppedName("/d/name-xxx.jpg"), "/d/name.jpg");
    EXPECT_EQ(RepairDroppedName("/d/a-b-c.jpg"), "/d/a-b.jpg");
    EXPECT_EQ(RepairDroppedName("/d/name.jpg"), "");
    EXPECT_EQ(RepairDroppedName("/d-e/name.jpg"), "") << "a dash of the folder";
    EXPECT_EQ(RepairDroppedName("/d/-.jpg"), "");
    EXPECT_EQ(RepairDroppedName("/d/name-xxx"), "");
    EXPECT_EQ(RepairDroppedName(""), "");
}

TEST_F(DropFilesTest, PictureOnABackgroundBecomesOne) {
    ShowMonth(2008, 11);
    const std::string picture = Add("sea.jpg"), text = Add("a.txt");
    EXPECT_TRUE(
        DropFiles(*calendar_, {{picture, text}, {950, 690}, false}, DropPlace::MainWindow).viewChanged);
    const std::string target = DayFolder(2008, 11, 0) + "/back_sea.jpg";
    EXPECT_EQ(Content(target), "content");
    EXPECT_EQ(calendar_->backgrounds.CurrentImage(), target);
    EXPECT_TRUE(files::Exists(picture) && files::Exists(text)) << "both stay";
    ShowDay(2008, 11, 13);
    EXPECT_TRUE(DropFiles(*calendar_, {{picture}, {20, 200}, false}, DropPlace::MainWindow).viewChanged);
    EXPECT_TRUE(files::Exists(Day(13, "back_sea.jpg")));
    EXPECT_FALSE(DropFiles(*calendar_, {{picture}, {20, 200}, false}, DropPlace::MainWindow).viewChanged)
        << "it is there";
    ShowYear(2008);
    EXPECT_FALSE(DropFiles(*calendar_, {{picture}, {5, 690}, false}, DropPlace::MainWindow).viewChanged)
        << "a year takes none";
}

TEST_F(DropFilesTest, BackgroundIsThatOfThePeriodInWhichItWasDropped) {
    ShowDay(2008, 11, 13);
    State().run.ImportRunning = 1;
    TheApplication()->Post([&] {
        ShowMonth(2008, 12);
        State().run.ImportRunning = 0;
    });
    EXPECT_TRUE(
        DropFiles(*calendar_, {{Add("sea.jpg")}, {20, 200}, false}, DropPlace::MainWindow).viewChanged);
    EXPECT_TRUE(files::Exists(Day(13, "back_sea.jpg")));
    EXPECT_EQ(calendar_->backgrounds.CurrentImage(), "") << "it is none of the month in view";
}

TEST_F(DropFilesTest, ScrapBelongsToTodayAfterTheDayEnd) {
    ShowMonth(2008, 11);
    const SystemTime now = LocalTime();
    State().settings.DayEndTimeForScrap = 48;  // the whole day belongs to the day before
    const SystemTime day = AddDays(now, -1);
    const std::string path = Add("a.txt");
    const FileTime old{128'710'000'000'000'000u};
    ASSERT_TRUE(files::SetTimes(path, old, old));
    DropFiles(*calendar_, {{path}, {-100, -100}, false}, DropPlace::ScrapAgent);
    const std::string target = DayFolder(day.year, day.month, day.day) + "/a.txt";
    ASSERT_EQ(Content(target), "content");
    EXPECT_GT(files::GetStatus(target)->written.ticks + 600'000'000ull, CurrentFileTime().ticks)
        << "its time is that of the moment";
}

// ---- the view

TEST_F(ArrivalsTest, FileJoinsTheDayInView) {
    ShowDay(2008, 11, 13);
    AddText(2008, 11, 13, "first.txt", "one");
    UpdateObjects(*calendar_);
    ASSERT_TRUE(WaitUntilIdle());
    ASSERT_EQ(calendar_->CurrentDayViewer().objects.Count(), 1u);
    EXPECT_TRUE(DropFiles(*calendar_, {{Add("second.txt", "two")}, {400, 200}, false}, DropPlace::MainWindow)
                    .viewChanged);
    EXPECT_EQ(calendar_->CurrentDayViewer().objects.Count(), 2u);
    EXPECT_FALSE(AddToView(*calendar_, Day(14, "third.txt"), {2008, 11, 14})) << "another day";
    EXPECT_FALSE(AddToView(*calendar_, Day(13, "what.xyz"), {2008, 11, 13})) << "nothing that is shown";
}

TEST_F(ArrivalsTest, FileJoinsItsCellOfTheMonthAndTheYear) {
    ShowMonth(2008, 11);
    UpdateObjects(*calendar_);
    ASSERT_TRUE(WaitUntilIdle());
    const std::string path = AddPicture(2008, 11, 13, "a.png", {255, 0, 0});
    EXPECT_TRUE(AddToView(*calendar_, path, {2008, 11, 13}));
    EXPECT_EQ(calendar_->MonthOf(2008, 11).days[12].objects.size(), 1u);
    EXPECT_FALSE(AddToView(*calendar_, path, {2008, 12, 13}));
    EXPECT_FALSE(AddToView(*calendar_, path, {2009, 11, 13}));
    EXPECT_FALSE(AddToView(*calendar_, path, {2008, 11, 31})) << "no such day";
    ShowYear(2008);
    EXPECT_TRUE(AddToView(*calendar_, path, {2008, 12, 13}));
    ASSERT_TRUE(WaitUntilIdle());
}

TEST_F(ArrivalsTest, FileJoinsTheScatter) {
    ShowMonth(2008, 11);
    ChangeView([&](ViewState& view) { view.scatter = true; });
    calendar_->CurrentAllViewer().Clear();
    EXPECT_TRUE(AddToView(*calendar_, AddText(2008, 11, 13, "a.txt", "one"), {2008, 11, 13}));
    EXPECT_EQ(calendar_->CurrentAllViewer().objects.Count(), 1u);
}

}  // namespace
}  // namespace kalmora
