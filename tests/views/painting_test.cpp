#include <filesystem>
#include <future>

#include "platform/clock.h"
#include "platform/files.h"
#include "store/data_folder.h"
#include "support/closed_folder.h"
#include "views/control/navigation.h"
#include "views/load/object_loader.h"
#include "views/model/calendar_geometry.h"
#include "views/model/calendar_store.h"
#include "views/model/cell_content.h"
#include "views/model/stop_load.h"
#include "views/paint/draw_objects.h"
#include "views/paint/heartbeat_redraw.h"
#include "views/paint/paint_cell.h"
#include "views/paint/paint_month.h"
#include "views/paint/paint_on_window.h"
#include "views/paint/paint_view.h"
#include "views/paint/progress_stripe.h"
#include "views/view_fixture.h"

namespace kalmora {
namespace {

constexpr Color kRed{200, 30, 30}, kGreen{30, 180, 30}, kBlue{30, 30, 200};

// ---- the place of a picture in its cell

// ---- grids

class PaintingTest : public ViewTest {
protected:
    void Load() {
        UpdateObjects(*calendar_);
        ASSERT_TRUE(WaitUntilIdle());
    }
    static Rect Cell(int day) { return MonthCellRect(MakeMonthGrid(2008, 11, {0, 0, 960, 700}, false), day); }
    Color CentreOf(int day) const {
        const Rect cell = Cell(day);
        return PixelAt(cell.x + cell.width / 2, cell.y + cell.height * 3 / 4);
    }
};

TEST_F(PaintingTest, MonthShowsEachDaysPicture) {
    AddPicture(2008, 11, 3, "a.png", kRed);
    AddPicture(2008, 11, 13, "b.png", kGreen);
    ShowMonth(2008, 11);
    OpenWindow({960, 700});
    Load();
    EXPECT_EQ(CentreOf(3), kRed);
    EXPECT_EQ(CentreOf(13), kGreen);
    EXPECT_EQ(calendar_->objectsDrawn, 2);
    EXPECT_TRUE(IsViewReady(*calendar_));
}

TEST_F(PaintingTest, YearShowsEachDaysPicture) {
    AddPicture(2008, 2, 3, "a.png", kRed);
    AddPicture(2008, 11, 13, "b.png", kGreen);
    ShowYear(2008);
    OpenWindow({960, 700});
    Load();
    const Rect cell = MonthCellRect(MakeMonthGrid(2008, 11, YearMonthRect(960, 11), true), 13);
    EXPECT_EQ(PixelAt(cell.x + cell.width / 2 + 6, cell.y + cell.height - 4), kGreen);
    EXPECT_EQ(calendar_->objectsDrawn, 2);
}

TEST_F(PaintingTest, YearWithoutDayGridsShowsOnePictureAMonth) {
    AddPicture(2008, 2, 3, "a.png", kRed);
    State().settings.CalendarMode = 0;
    ShowYear(2008);
    OpenWindow({960, 700});
    Load();
    const Rect month = YearMonthRect(960, 2);
    EXPECT_EQ(PixelAt(month.x + month.width / 2, month.y + month.height / 2), kRed);
    EXPECT_EQ(calendar_->objectsDrawn, 1);
}

TEST_F(PaintingTest, TextFrameTakesTheColoursOfItsHead) {
    AddText(2008, 11, 3, "a.txt", "[Memo]\nmilk");
    AddText(2008, 11, 4, "b.txt", "http://example.net");
    AddText(2008, 11, 5, "c.txt", "plain");
    AddText(2008, 11, 6, "d.txt", "[memo] other case");
    ShowMonth(2008, 11);
    OpenWindow({960, 700});
    Load();
    EXPECT_EQ(CentreOf(3), (Color{255, 238, 238}));
    EXPECT_EQ(CentreOf(4), (Color{238, 255, 255}));
    EXPECT_EQ(CentreOf(5), (Color{255, 255, 238}));
    EXPECT_EQ(CentreOf(6), (Color{255, 238, 255})) << "another case is an unknown head in a cell";
}

TEST_F(PaintingTest, VanishedFileIsPassedOver) {
    const std::string gone = AddPicture(2008, 11, 3, "a.png", kRed);
    AddPicture(2008, 11, 3, "b.png", kGreen);
    ShowMonth(2008, 11);
    OpenWindow({960, 700});
    Load();
    files::RemoveFile(gone);
    PaintView(*calendar_);
    ASSERT_TRUE(WaitUntilIdle());
    EXPECT_EQ(CentreOf(3), kGreen);
    EXPECT_LE(ContentOfCell(*calendar_, 2008, 11, 3).count, 2u);
}

TEST_F(PaintingTest, FileThatVanishesBetweenListingAndReadingLeavesTheCellEmpty) {
    const std::string gone = AddPicture(2008, 11, 3, "a.png", kRed);
    ShowMonth(2008, 11);
    OpenWindow({960, 700});
    Load();
    files::RemoveFile(gone);
    PaintView(*calendar_);
    ASSERT_TRUE(WaitUntilIdle());
    EXPECT_NE(CentreOf(3), kRed);
}

TEST_F(PaintingTest, BrokenPicturesDrawNothing) {
    AddText(2008, 11, 3, "zero.jpg", "");
    AddText(2008, 11, 4, "garbage.jpg", std::string(5000, '\xFF'));
    AddText(2008, 11, 5, "zero.avi", "");
    AddText(2008, 11, 6, "zero.png", "");
    ShowMonth(2008, 11);
    OpenWindow({960, 700});
    Load();
    EXPECT_EQ(calendar_->objectsDrawn, 0);
}

TEST_F(PaintingTest, TextOfAGigabyteShowsItsHead) {
    const std::string huge = AddText(2008, 11, 3, "huge.txt", "[Memo]\nthe rest is a hole");
    std::error_code error;
    std::filesystem::resize_file(huge, std::uintmax_t{1} << 30, error);  // takes no room on the disk
    ASSERT_FALSE(error);
    ShowMonth(2008, 11);
    OpenWindow({960, 700});
    Load();
    EXPECT_EQ(CentreOf(3), (Color{255, 238, 238}));
}

TEST_F(PaintingTest, FolderWithoutPermissionIsAnEmptyDay) {
    AddPicture(2008, 11, 3, "a.png", kRed);
    AddPicture(2008, 11, 4, "b.png", kGreen);
    const test::ClosedFolder cannotBeListed(DayFolder(2008, 11, 3));
    ShowMonth(2008, 11);
    OpenWindow({960, 700});
    Load();
    EXPECT_EQ(CentreOf(4), kGreen);
    EXPECT_EQ(ContentOfCell(*calendar_, 2008, 11, 3).count, 0u);
}

TEST_F(PaintingTest, EmptyMonthIsAGrid) {
    ShowMonth(2008, 11);
    OpenWindow({960, 700});
    Load();
    const Rect cell = Cell(13);
    const Color paper = PixelAt(cell.x + cell.width / 2, cell.y + cell.height / 2);
    EXPECT_NE(PixelAt(cell.x, cell.y + cell.height / 2), paper) << "its frame";
    EXPECT_TRUE(IsViewReady(*calendar_));
}

TEST_F(PaintingTest, WindowWithoutASizeIsNoTrouble) {
    AddPicture(2008, 11, 3, "a.png", kRed);
    ShowMonth(2008, 11);
    OpenWindow({1, 1});
    Load();
    window_->SetFrame({0, 0, 5000, 3});
    ASSERT_TRUE(WaitUntilIdle());
    window_->SetFrame({0, 0, 960, 700});
    ASSERT_TRUE(WaitUntilIdle());
    EXPECT_EQ(CentreOf(3), kRed);
}

TEST_F(PaintingTest, MonthOutsideTheCalendarIsNotDrawn) {
    ShowMonth(2008, 13);
    OpenWindow({960, 700});
    PaintView(*calendar_);
    EXPECT_TRUE(WaitUntilIdle());
}

TEST_F(PaintingTest, SecondRootAddsItsObjects) {
    AddPicture(2008, 11, 3, "a.png", kRed);
    State().settings.UseOtherFolder = true;
    State().settings.OtherDirectory = root_ + "/other";
    AddFile(root_ + "/other/2008/200811/2008_1103", "note.txt", "x");
    ShowMonth(2008, 11);
    OpenWindow({960, 700});
    Load();
    EXPECT_EQ(ContentOfCell(*calendar_, 2008, 11, 3).count, 2u);
}

TEST_F(PaintingTest, YearSlotIsTakenByTheYearThatSharesIt) {
    AddPicture(2008, 11, 3, "a.png", kRed);
    ShowMonth(2008, 11);
    OpenWindow({960, 700});
    Load();
    ShowMonth(2008 + 13, 11);
    Load();
    EXPECT_EQ(ContentOfCell(*calendar_, 2008, 11, 3).count, 0u);
    EXPECT_FALSE(ContentOfCell(*calendar_, 2008, 11, 3).active);
    EXPECT_TRUE(ContentOfCell(*calendar_, 2021, 11, 3).active);
}

TEST_F(PaintingTest, OwnBackgroundOfTheMonthIsDrawn) {
    AddPicture(2008, 11, 1, "x.png", kRed);
    WritePicture(root_ + "/files/2008/200811/back.png", kBlue, {32, 32});
    ShowMonth(2008, 11);
    OpenWindow({960, 700});
    Load();
    EXPECT_EQ(PixelAt(350, 640), kBlue);
}

TEST_F(PaintingTest, BackgroundReplacedUnderItsNameIsSeenAtTheNextPaint) {
    const std::string path = root_ + "/files/2008/200811/back.png";
    MakeDirectories(root_ + "/files/2008/200811");
    WritePicture(path, kBlue, {32, 32});
    ShowMonth(2008, 11);
    OpenWindow({960, 700});
    Load();
    ASSERT_EQ(PixelAt(350, 640), kBlue);
    WritePicture(path, kGreen, {40, 30});
    PaintView(*calendar_);
    EXPECT_EQ(PixelAt(350, 640), kGreen);
    files::RemoveFile(path);
    PaintView(*calendar_);
    EXPECT_EQ(PixelAt(350, 640), ColorFromBgr(0xE6FFFF)) << "one that has gone";
}

// ---- the day and the scatter

TEST_F(PaintingTest, DayShowsItsObjectsInTheirLines) {
    AddText(2008, 11, 13, "a.txt", "[2008/11/13 12:00]\nlunch");
    AddText(2008, 11, 13, "b.txt", "[2008/11/13 09:00]\nbreakfast");
    ShowDay(2008, 11, 13);
    OpenWindow({960, 700});
    Load();
    ObjectList::Hit hit;
    const ObjectList& objects = calendar_->CurrentDayViewer().objects;
    ASSERT_TRUE(objects.HitTest({60, 170 + 20}, &hit));
    EXPECT_TRUE(hit.path.ends_with("/a.txt"));
    EXPECT_EQ(hit.drawn.height, 155);
    ASSERT_TRUE(objects.HitTest({230, 10 + 20}, &hit));
    EXPECT_TRUE(hit.path.ends_with("/b.txt"));
    EXPECT_FALSE(objects.HitTest({60, 330 + 20}, &hit));
}

TEST_F(PaintingTest, EmptyScatterNeedsNoWalkToBeLoaded) {
    ShowMonth(2008, 11);
    ChangeView([&](ViewState& view) { view.scatter = true; });
    OpenWindow({960, 700});
    UpdateObjects(*calendar_);
    EXPECT_TRUE(WaitUntilIdle());
    EXPECT_TRUE(calendar_->CurrentAllViewer().loaded);
}

TEST_F(PaintingTest, ScatterKeepsEveryObjectInsideTheWindow) {
    for (int day = 1; day <= 30; ++day) AddPicture(2008, 11, day, "p.png", kRed, {120, 90});
    ShowMonth(2008, 11);
    ChangeView([&](ViewState& view) { view.scatter = true; });
    OpenWindow({960, 700});
    Load();
    EXPECT_EQ(calendar_->objectsDrawn, 30);
    for (const PlacedObjectPtr& object : calendar_->CurrentAllViewer().objects.Snapshot()) {
        EXPECT_GE(object->drawn.x, 0);
        EXPECT_LE(object->drawn.Right(), 960);
        EXPECT_LE(object->drawn.Bottom(), 650) << "the buttons' strip stays free";
    }
}

TEST_F(PaintingTest, YearsScatterLeavesTheSecondRootOut) {
    AddPicture(2008, 11, 3, "a.png", kRed);
    State().settings.UseOtherFolder = true;
    State().settings.OtherDirectory = root_ + "/other";
    AddFile(root_ + "/other/2008/200811/2008_1103", "note.txt", "x");
    ChangeView([&](ViewState& view) { view.scatter = true; });
    ShowYear(2008);
    OpenWindow({960, 700});
    Load();
    EXPECT_EQ(calendar_->CurrentAllViewer().objects.Count(), 1u);
    ShowMonth(2008, 11);
    Load();
    EXPECT_EQ(calendar_->CurrentAllViewer().objects.Count(), 2u);
}

TEST_F(PaintingTest, PausedWalkDrawsNothingAndLeavesTheGuiThreadFree) {
    AddPicture(2008, 11, 13, "a.png", kRed);
    ShowDay(2008, 11, 13);
    OpenWindow({960, 700});
    State().run.Paused = 1;
    UpdateObjects(*calendar_);
    const double start = UptimeMs();
    while (UptimeMs() - start < 400) TheApplication()->ProcessEvents(5);
    EXPECT_TRUE(calendar_->IsPaintThreadRunning());
    EXPECT_EQ(calendar_->objectsDrawn, 0);
    State().run.Paused = 0;
    EXPECT_TRUE(WaitUntilIdle());
    EXPECT_EQ(calendar_->objectsDrawn, 1);
}

TEST_F(PaintingTest, RepaintDuringTheWalkLeavesTheWindowAsItIs) {
    AddPicture(2008, 11, 13, "a.png", kRed);
    ShowDay(2008, 11, 13);
    OpenWindow({960, 700});
    State().run.Paused = 1;
    UpdateObjects(*calendar_);
    while (!calendar_->IsPaintThreadRunning()) TheApplication()->ProcessEvents(2);
    // The walk itself clears the stripe once where it begins, so the stripe may be gone at the first looks.
    const Color stripe = ColorFromBgr(0xFFB4A0);
    bool stays = false;
    const double start = UptimeMs();
    while (!stays && UptimeMs() - start < 10000) {
        ProgressStripe(1.0);
        PaintView(*calendar_);
        stays = PixelAt(400, 0) == stripe;
    }
    EXPECT_TRUE(stays);
    State().run.Paused = 0;
    EXPECT_TRUE(WaitUntilIdle());
    EXPECT_EQ(calendar_->objectsDrawn, 1) << "the walk has begun again after the paint";
}

TEST_F(PaintingTest, PaintThatMeetsARunHasItStartOverAndStopsNoLoad) {
    ShowDay(2008, 11, 13);
    OpenWindow({960, 700});
    ASSERT_TRUE(WaitUntilIdle());
    WorkGate& gate = State().run.ObjectGate;
    ASSERT_TRUE(gate.TryAcquire()) << "a load or a run";
    EventPaint(*calendar_);
    EXPECT_FALSE(calendar_->IsPaintLeftToRun()) << "a load paints at its end";
    std::promise<void> go;
    ASSERT_TRUE(calendar_->StartPaintThread([this, leave = go.get_future().share()](std::uint64_t run) {
        leave.wait();
        calendar_->TakePaintLeftToRun(run);
        calendar_->EndPaintRun(run);
    }));
    EventPaint(*calendar_);
    EXPECT_TRUE(calendar_->IsPaintLeftToRun());
    EXPECT_FALSE(gate.IsStopRequested());
    go.set_value();
    EXPECT_TRUE(WaitUntilIdle());
    gate.Release();
}

TEST_F(PaintingTest, StopEndsTheWalk) {
    for (int i = 0; i < 20; ++i) AddPicture(2008, 11, 13, "p" + std::to_string(i) + ".png", kRed);
    ShowDay(2008, 11, 13);
    OpenWindow({960, 700});
    State().settings.TimingOfChangeImage = 100;
    UpdateObjects(*calendar_);
    const double start = UptimeMs();
    while (calendar_->objectsDrawn == 0 && UptimeMs() - start < 10000) TheApplication()->ProcessEvents(2);
    ASSERT_GT(calendar_->objectsDrawn, 0) << "the walk clears the stop where it begins";
    StopCurrentLoad(*calendar_);
    ASSERT_TRUE(WaitUntilIdle());
    EXPECT_LT(calendar_->objectsDrawn, 20);
    EXPECT_FALSE(calendar_->CurrentDayViewer().loaded);
}

// ---- the stripe

TEST_F(PaintingTest, StripeShowsItsFractionAndIsWipedAtTheEnd) {
    ShowMonth(2008, 11);
    OpenWindow({960, 700});
    ProgressStripe(0.25);
    EXPECT_EQ(PixelAt(239, 0), ColorFromBgr(0xFFB4A0));
    EXPECT_EQ(PixelAt(240, 0), ColorFromBgr(0xE6FFFF));
    ProgressStripeDark(0.5);
    EXPECT_EQ(PixelAt(479, 0), ColorFromBgr(0xFF7864));
    EXPECT_EQ(PixelAt(480, 0), ColorFromBgr(0xFFB4A0));
    ProgressStripe(-3);
    EXPECT_EQ(PixelAt(0, 0), ColorFromBgr(0xE6FFFF));
    ProgressStripe(7);
    EXPECT_EQ(PixelAt(959, 0), ColorFromBgr(0xFFB4A0));
    ProgressStripe(kStripeFinished);
    EXPECT_EQ(PixelAt(0, 0), ColorFromBgr(0xE6FFFF));
    EXPECT_EQ(PixelAt(959, 0), ColorFromBgr(0xE6FFFF));
}

// ---- the heartbeat's redraw

TEST_F(PaintingTest, ThirdOfTheMonthChangesATick) {
    for (int day = 1; day <= 30; ++day) {
        AddPicture(2008, 11, day, "a.png", kRed);
        AddPicture(2008, 11, day, "b.png", kGreen);
    }
    ShowMonth(2008, 11);
    OpenWindow({960, 700});
    Load();
    std::vector<Color> before;
    for (int day = 1; day <= 30; ++day) before.push_back(CentreOf(day));
    State().settings.TimingOfChangeBgImage = 15;
    HeartbeatRedraw(*calendar_, 1);
    const MonthGrid grid = MakeMonthGrid(2008, 11, {0, 0, 960, 700}, false);
    for (int day = 1; day <= 30; ++day) {
        const bool turn = (grid.RowOf(day) + grid.ColumnOf(day)) % 3 == 1;
        EXPECT_EQ(CentreOf(day) != before[static_cast<std::size_t>(day - 1)], turn) << "day " << day;
    }
    HeartbeatRedraw(*calendar_, 2);
    HeartbeatRedraw(*calendar_, 3);
    for (int day = 1; day <= 30; ++day)
        EXPECT_NE(CentreOf(day), before[static_cast<std::size_t>(day - 1)])
            << "after three beats all have changed";
}

TEST_F(PaintingTest, BackgroundBeatChangesNothingOnTheScreen) {
    for (int day = 1; day <= 30; ++day) {
        AddPicture(2008, 11, day, "a.png", kRed);
        AddPicture(2008, 11, day, "b.png", kGreen);
    }
    ShowMonth(2008, 11);
    OpenWindow({960, 700});
    Load();
    std::vector<Color> before;
    for (int day = 1; day <= 30; ++day) before.push_back(CentreOf(day));
    State().settings.TimingOfChangeBgImage = 1;
    for (int tick = 1; tick <= 3; ++tick) HeartbeatRedraw(*calendar_, tick);
    for (int day = 1; day <= 30; ++day) EXPECT_EQ(CentreOf(day), before[static_cast<std::size_t>(day - 1)]);
}

TEST_F(PaintingTest, BeatBringsTheNextObjectOfTheScatterToTheTop) {
    for (int day = 1; day <= 5; ++day) AddPicture(2008, 11, day, "p.png", kRed);
    ShowMonth(2008, 11);
    ChangeView([&](ViewState& view) { view.scatter = true; });
    OpenWindow({960, 700});
    Load();
    ObjectList& objects = calendar_->CurrentAllViewer().objects;
    const PlacedObjectPtr first = objects.Front();
    HeartbeatRedraw(*calendar_, 1);
    EXPECT_EQ(objects.Snapshot().back(), first);
    EXPECT_NE(objects.Front(), first);
}

TEST_F(PaintingTest, BeatRedrawsOneObjectOfEachLine) {
    AddText(2008, 11, 13, "a.txt", "[2008/11/13 12:00]");
    AddText(2008, 11, 13, "b.txt", "[2008/11/13 12:30]");
    AddText(2008, 11, 13, "c.txt", "[2008/11/13 20:00]");
    ShowDay(2008, 11, 13);
    OpenWindow({960, 700});
    Load();
    ObjectList& objects = calendar_->CurrentDayViewer().objects;
    const auto before = objects.Snapshot();
    HeartbeatRedraw(*calendar_, 1);
    const auto after = objects.Snapshot();
    ASSERT_EQ(after.size(), 3u);
    EXPECT_NE(before.front(), after.front());
    EXPECT_EQ(objects.Count(), 3u);
}

TEST_F(PaintingTest, MonthPictureStepGoesToTheNextDayWithObjects) {
    AddPicture(2008, 2, 3, "a.png", kRed);
    AddPicture(2008, 2, 20, "b.png", kGreen);
    State().settings.CalendarMode = 0;
    ShowYear(2008);
    OpenWindow({960, 700});
    Load();
    const Rect month = YearMonthRect(960, 2);
    const auto colour = [&] { return PixelAt(month.x + month.width / 2, month.y + month.height / 2); };
    bool sawRed = false, sawGreen = false;
    for (int step = 0; step < 40; ++step) {
        EXPECT_EQ(StepMonthPicture(*calendar_, 2008, 2), 0);
        sawRed |= colour() == kRed;
        sawGreen |= colour() == kGreen;
    }
    EXPECT_TRUE(sawRed && sawGreen);
    EXPECT_EQ(StepMonthPicture(*calendar_, 2008, 3), -1) << "a month without objects";
}

TEST_F(PaintingTest, NewBackgroundWaitsForTheNextFullPaint) {
    AddPicture(2008, 11, 3, "tall.png", kRed, {10, 100});
    WritePicture(root_ + "/files/2008/200811/back.png", kBlue, {32, 32});
    ShowMonth(2008, 11);
    OpenWindow({960, 700});
    Load();
    calendar_->backgrounds.Clear();  // another background would be drawn now
    const Rect cell = Cell(3);
    const Color beside = PixelAt(cell.x + 5, cell.y + 90);
    DrawCellOnWindow(*calendar_, 2008, 11, 3);
    EXPECT_EQ(PixelAt(cell.x + 5, cell.y + 90), beside) << "beside the picture of a cell drawn alone";
    EXPECT_EQ(beside, kBlue);
}

// ---- reloading

TEST_F(PaintingTest, ReloadWhilePausedReturns) {
    AddPicture(2008, 11, 3, "a.png", kRed);
    ShowMonth(2008, 11);
    OpenWindow({960, 700});
    Load();
    AddPicture(2008, 11, 4, "b.png", kGreen);
    State().run.Paused = 1;
    ReloadView(*calendar_);
    ASSERT_TRUE(WaitUntilIdle());
    EXPECT_EQ(ContentOfCell(*calendar_, 2008, 11, 4).count, 1u);
    EXPECT_EQ(ContentOfCell(*calendar_, 2008, 11, 3).count, 1u) << "nothing is listed twice";
    State().run.Paused = 0;
}

TEST_F(PaintingTest, StopWithoutALoadDoesNotEmptyTheDayForGood) {
    AddPicture(2008, 11, 13, "a.png", kRed);
    ShowDay(2008, 11, 13);
    OpenWindow({960, 700});
    Load();
    StopCurrentLoad(*calendar_);
    PaintView(*calendar_);
    ASSERT_TRUE(WaitUntilIdle());
    EXPECT_EQ(calendar_->objectsDrawn, 1);
}

TEST_F(PaintingTest, ButtonsStayOnTopOfAWideMonthsLastRow) {
    for (int day = 1; day <= 30; ++day) AddPicture(2008, 11, day, "a.png", kRed);
    ShowMonth(2008, 11);
    OpenWindow({1300, 700});
    Load();
    const Color label = PixelAt(8, 700 - 8);
    for (int day = 24; day <= 30; ++day) DrawCellOnWindow(*calendar_, 2008, 11, day);
    EXPECT_EQ(PixelAt(8, 700 - 8), label);
    EXPECT_NE(label, kRed);
}

// ---- stopping

TEST_F(PaintingTest, LoadThatIsStoppedInItsMiddleLeavesNothingRunning) {
    for (int month = 1; month <= 12; ++month)
        for (int day = 1; day <= 28; day += 3) AddText(2008, month, day, "a.txt", "x");
    OpenWindow({960, 700});
    for (int round = 0; round < 100; ++round) {
        ShowYear(2008);
        UpdateObjects(*calendar_);
        TheApplication()->ProcessEvents(round % 7);
        StopCurrentLoad(*calendar_);
        ShowMonth(2008, round % 12 + 1);
        UpdateObjects(*calendar_);
        TheApplication()->ProcessEvents(round % 5);
        StopCurrentLoad(*calendar_);
        ShowDay(2008, 1, 1);
        calendar_->AdvanceDayRing();
        UpdateObjects(*calendar_);
    }
    EXPECT_TRUE(WaitUntilIdle());
    EXPECT_FALSE(State().run.ObjectGate.IsHeld());
}

}  // namespace
}  // namespace kalmora
