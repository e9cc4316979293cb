// What each event does to the main window.
#include "app/main_window.h"

#include <chrono>

#include "app/app_fixture.h"
#include "app/main_window_events.h"
#include "app/main_window_keys.h"
#include "input/key_config.h"
#include "media/photo.h"
#include "platform/drop_event.h"
#include "platform/files.h"
#include "views/bar/button_bar.h"
#include "views/load/object_loader.h"
#include "views/model/calendar_geometry.h"
#include "views/model/calendar_store.h"
#include "views/paint/heartbeat_redraw.h"
#include "views/paint/paint_view.h"

namespace kalmora {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kDay = 13;

class MainWindowTest : public AppTest {
protected:
    MainWindowTest() {
        photo_ = AddPicture(2008, 11, kDay, "a.png", {200, 30, 30});
        note_ = AddText(2008, 11, 14, "n.txt", "lunch");
        ShowMonth(2008, 11);
        OpenMainWindow();
        Load();
    }
    void Load() {
        UpdateObjects(*calendar_);
        EXPECT_TRUE(WaitUntilIdle());
        calls_.Clear();
    }
    static Event At(EventType type, Point point) {
        Event event{type};
        event.point = point;
        return event;
    }
    bool Send(const Event& event) { return MainWindowProc(parts_, *window_, event); }
    bool Press(Point point) { return Send(At(EventType::LeftDown, point)); }
    bool DoubleClick(Point point) { return Send(At(EventType::LeftDoubleClick, point)); }
    bool Timer(int id) {
        Event event{EventType::Timer};
        event.timer = id;
        return Send(event);
    }
    // A beat draws what lies in the rectangle.
    bool IsDrawnByABeat(const Rect& area) {
        window_->Draw()->FillRect(area, {1, 2, 3});
        HeartbeatRedraw(*calendar_, 1);
        return PixelAt(Middle(area).x, Middle(area).y) != Color{1, 2, 3};
    }
    enum class Drag { Own, Foreign };
    bool Drop(Point point, Drag drag = Drag::Own) {
        DropEvent event;
        event.point = point;
        event.paths = {photo_};
        event.isOwnDrag = drag == Drag::Own;
        return Send(event);
    }
    MonthGrid Grid() const {
        const Size client = window_->ClientSize();
        return MakeMonthGrid(2008, 11, {0, 0, client.width, client.height}, false);
    }
    Rect Cell(int day) const { return MonthCellRect(Grid(), day); }
    static Point Middle(const Rect& area) { return {area.x + area.width / 2, area.y + area.height / 2}; }
    Point Button(const std::string& name) const {
        for (const ButtonInfo& button : VisibleButtons())
            if (button.name == name) return Middle(button.area);
        ADD_FAILURE() << name;
        return {};
    }
    // A program that writes down what it was asked to open.
    std::string OpenedBy(const std::function<void()>& action) {
        const std::string opened = files::Join(root_, "opened"), editor = files::Join(root_, "editor");
        const std::string script =
            "#!/bin/sh\nprintf %s \"$1\" >'" + opened + ".new'\nmv '" + opened + ".new' '" + opened + "'\n";
        EXPECT_EQ(files::WriteWholeFile(editor, script), files::FileResult::Done);
        EXPECT_EQ(std::system(("chmod +x '" + editor + "'").c_str()), 0);
        state_.settings.TextEditor = editor;
        action();
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        while (!files::Exists(opened) && std::chrono::steady_clock::now() < end)
            TheApplication()->ProcessEvents(5);
        const std::string path = files::ReadWholeFile(opened).value_or("nothing");
        files::RemoveFile(opened);
        return path;
    }

    std::string photo_, note_;
};

// ---- left press

TEST_F(MainWindowTest, PressClosesWhatStandsAboveTheCalendar) {
    state_.run.SlideOpenedByCommand = 1;
    state_.press.DragPath = "old";
    state_.run.LastActivity = -1;
    Press({480, 5});
    EXPECT_THAT(Calls(), ElementsAre("HideSlide", "HideNeighbor", "HidePetals"));
    EXPECT_EQ(state_.run.SlideOpenedByCommand, 0);
    EXPECT_TRUE(state_.press.DragPath.empty());
    EXPECT_GE(state_.run.LastActivity, 0);
}

TEST_F(MainWindowTest, PressOnACellTakesItsObject) {
    EXPECT_TRUE(Press(Middle(Cell(kDay))));
    EXPECT_EQ(state_.press.DragPath, photo_);
    EXPECT_EQ(View().period.date.day, kDay);
    EXPECT_EQ(state_.press.PressActive, 1);
    EXPECT_EQ(state_.press.ObjectHit, 1);
    EXPECT_EQ(state_.press.PressPoint, Middle(Cell(kDay)));
    const Point corner = window_->ToScreen({Cell(kDay).x, Cell(kDay).y});
    EXPECT_EQ(state_.press.DragRect, (Rect{corner.x, corner.y, Cell(kDay).width, Cell(kDay).height}));
    EXPECT_EQ(View().period.level, Level::Month);
}

TEST_F(MainWindowTest, PressOnAnEmptyCellTakesNothingAndCountsAsAHit) {
    EXPECT_TRUE(Press(Middle(Cell(20))));
    EXPECT_TRUE(state_.press.DragPath.empty());
    EXPECT_EQ(state_.press.ObjectHit, 1);
}

TEST_F(MainWindowTest, PressBesideTheGridIsNotUsed) {
    EXPECT_FALSE(Press({480, 5}));
    EXPECT_EQ(state_.press.PressActive, 1) << "a long press may begin there all the same";
    EXPECT_EQ(state_.press.ObjectHit, 0);
}

TEST_F(MainWindowTest, DayNumberIsASquareFromTenToThirty) {
    const Rect cell = Cell(kDay);
    const std::pair<Point, bool> points[] = {{{10, 10}, true}, {{30, 30}, true}, {{10, 30}, true},
                                             {{9, 20}, false}, {{20, 9}, false}, {{31, 20}, false},
                                             {{20, 31}, false}};
    for (const auto& [offset, isNumber] : points) {
        ShowMonth(2008, 11);
        Load();
        Press({cell.x + offset.x, cell.y + offset.y});
        EXPECT_TRUE(WaitUntilIdle());
        EXPECT_EQ(View().period.level, isNumber ? Level::Day : Level::Month) << offset.x << "," << offset.y;
        EXPECT_EQ(View().period.date.day, kDay);
    }
}

TEST_F(MainWindowTest, CtrlAndAPressOpenTheDayUnderTheCursor) {
    Event press = At(EventType::LeftDown, Middle(Cell(20)));
    press.ctrl = true;
    Pointer(window_->ToScreen(press.point));
    EXPECT_TRUE(Send(press));
    EXPECT_TRUE(WaitUntilIdle());
    EXPECT_EQ(View().period.level, Level::Day);
    EXPECT_EQ(View().period.date.day, 20);
    EXPECT_EQ(state_.press.PressActive, 0) << "the rest of a press does not happen";
}

TEST_F(MainWindowTest, CtrlMeansNothingWithoutADayGrid) {
    ShowYear(2008);
    state_.settings.CalendarMode = 0;
    Load();
    Event press = At(EventType::LeftDown, {480, 695});
    press.ctrl = true;
    Send(press);
    EXPECT_EQ(View().period.level, Level::Year);
    EXPECT_EQ(state_.press.PressActive, 1);
}

TEST_F(MainWindowTest, PressOnAMonthsPictureOpensTheMonth) {
    ShowYear(2008);
    Load();
    EXPECT_TRUE(Press(Middle(MonthPictureRect(window_->ClientSize().width, 7))));
    EXPECT_TRUE(WaitUntilIdle());
    EXPECT_EQ(View().period.level, Level::Month);
    EXPECT_EQ(View().period.date.month, 7);
}

TEST_F(MainWindowTest, PressInAYearTakesTheDaysObject) {
    ShowYear(2008);
    state_.settings.CalendarMode = 1;
    Load();
    const int width = window_->ClientSize().width;
    const MonthGrid grid = MakeMonthGrid(2008, 11, YearMonthRect(width, 11), true);
    EXPECT_TRUE(Press(Middle(MonthCellRect(grid, kDay))));
    EXPECT_EQ(state_.press.DragPath, photo_);
    EXPECT_TRUE(Press(Middle(MonthCellRect(grid, 20))));
    EXPECT_TRUE(state_.press.DragPath.empty());
    EXPECT_EQ(state_.press.ObjectHit, 1) << "it stays from the press before";
}

TEST_F(MainWindowTest, PressInAYearOfPicturesTakesTheMonthsOneOnceItIsReady) {
    ShowYear(2008);
    state_.settings.CalendarMode = 0;
    Load();
    const Rect month = YearMonthRect(window_->ClientSize().width, 11);
    const Point low{month.x + month.width / 2, month.y + month.height * 3 / 4};
    EXPECT_TRUE(Press(low));
    EXPECT_THAT(state_.press.DragPath, testing::AnyOf(photo_, note_));
    calendar_->MonthOf(2008, 11).ready = false;
    EXPECT_TRUE(Press(low));
    EXPECT_TRUE(state_.press.DragPath.empty());
}

TEST_F(MainWindowTest, PressInADayTakesTheTopmostObject) {
    ShowDay(2008, 11, kDay);
    Load();
    PaintView(*calendar_);
    ASSERT_TRUE(WaitUntilIdle());
    const auto objects = calendar_->CurrentDayViewer().objects.Snapshot();
    ASSERT_EQ(objects.size(), 1u);
    ASSERT_FALSE(objects[0]->drawn.IsEmpty());
    EXPECT_TRUE(Press(Middle(objects[0]->drawn)));
    EXPECT_EQ(state_.press.DragPath, photo_);
    EXPECT_FALSE(Press({950, 600}));
    EXPECT_TRUE(state_.press.DragPath.empty());
}

TEST_F(MainWindowTest, PressInTheScatterTakesTheTopmostObject) {
    ChangeView([&](ViewState& view) { view.scatter = true; });
    Load();
    PaintView(*calendar_);
    ASSERT_TRUE(WaitUntilIdle());
    const auto objects = calendar_->CurrentAllViewer().objects.Snapshot();
    ASSERT_EQ(objects.size(), 2u);
    EXPECT_TRUE(Press(Middle(objects.back()->drawn)));
    EXPECT_EQ(state_.press.DragPath, objects.back()->photo->path);
}

// ---- holding, letting go, dragging

TEST_F(MainWindowTest, PressThatLastsOpensTheDayUnderTheCursor) {
    Pointer(window_->ToScreen(Middle(Cell(18))), true);
    Press(Middle(Cell(18)));
    EXPECT_TRUE(Timer(kTimerLongPress));
    EXPECT_TRUE(WaitUntilIdle());
    EXPECT_EQ(View().period.level, Level::Day);
    EXPECT_EQ(View().period.date.day, 18);
}

TEST_F(MainWindowTest, PressThatWasLetGoOpensNoDayLater) {
    Pointer(window_->ToScreen(Middle(Cell(18))));
    Press(Middle(Cell(18)));
    state_.run.LastActivity = -1;
    EXPECT_TRUE(Send(At(EventType::LeftUp, Middle(Cell(18)))));
    EXPECT_EQ(state_.press.PressActive, 0);
    EXPECT_GE(state_.run.LastActivity, 0);
    Timer(kTimerLongPress);
    EXPECT_EQ(View().period.level, Level::Month);
}

TEST_F(MainWindowTest, PressThatLeadsToNoDayLeavesTheDayChanging) {
    ShowDay(2008, 11, kDay);
    Load();
    PaintView(*calendar_);
    ASSERT_TRUE(WaitUntilIdle());
    Press({950, 600});
    Timer(kTimerLongPress);
    EXPECT_TRUE(IsDrawnByABeat(calendar_->CurrentDayViewer().objects.Front()->drawn));
}

TEST_F(MainWindowTest, PressThatLeadsToNoDayLeavesTheScatterChanging) {
    ChangeView([](ViewState& view) { view.scatter = true; });
    Load();
    PaintView(*calendar_);
    ASSERT_TRUE(WaitUntilIdle());
    Pointer(window_->ToScreen({480, 5}));
    Press({480, 5});
    Timer(kTimerLongPress);
    Event press = At(EventType::LeftDown, {480, 5});
    press.ctrl = true;
    Send(press);
    EXPECT_TRUE(IsDrawnByABeat(calendar_->CurrentAllViewer().objects.Front()->drawn));
}

TEST_F(MainWindowTest, MoveOfTwoPixelsIsStillAClick) {
    Press(Middle(Cell(kDay)));
    calls_.Clear();
    Event move = At(EventType::MouseMove, {state_.press.PressPoint.x + 2, state_.press.PressPoint.y});
    move.leftButton = true;
    EXPECT_TRUE(Send(move));
    EXPECT_THAT(Calls(), IsEmpty());
    EXPECT_EQ(state_.press.PressActive, 1);
}

TEST_F(MainWindowTest, LongerWayIsADragOfTheObject) {
    Press(Middle(Cell(kDay)));
    calls_.Clear();
    Event move = At(EventType::MouseMove, {state_.press.PressPoint.x + 2, state_.press.PressPoint.y + 1});
    EXPECT_TRUE(Send(move));
    EXPECT_THAT(Calls(), IsEmpty()) << "the button is up";
    move.leftButton = true;
    others_.dragAnswer = false;
    EXPECT_FALSE(Send(move)) << "what comes of the drag comes of the move";
    EXPECT_THAT(Calls(), ElementsAre("StartDragOut a.png"));
    EXPECT_EQ(state_.press.PressActive, 0);
}

TEST_F(MainWindowTest, DragOfNothingStartsNone) {
    Press(Middle(Cell(20)));
    calls_.Clear();
    Event move = At(EventType::MouseMove, {5, 5});
    move.leftButton = true;
    EXPECT_TRUE(Send(move));
    EXPECT_THAT(Calls(), IsEmpty());
}

TEST_F(MainWindowTest, ButtonIsPressedInsteadOfWhatLiesBelow) {
    state_.press.DragPath = "old";
    EXPECT_TRUE(Press(Button("Pause")));
    EXPECT_THAT(Calls(), ElementsAre("HideSlide", "HideNeighbor", "HidePetals", "RunCommand 1027"));
    EXPECT_TRUE(state_.press.DragPath.empty());
    Send(At(EventType::LeftUp, Button("Pause")));
}

TEST_F(MainWindowTest, QuickSecondPressOnAButtonIsAPress) {
    EXPECT_TRUE(DoubleClick(Button("Next")));
    EXPECT_THAT(Calls(), Contains("RunCommand 1011"));
}

TEST_F(MainWindowTest, TipOfAButtonNamesItsKey) {
    keys_.LoadKeyConfig(files::Join(root_, "no file"), KeyContext::Main);
    EXPECT_EQ(ButtonTip(keys_, Button("Next")).text, "Next [RIGHT]");
    EXPECT_EQ(ButtonTip(keys_, Button("Next 2")).text, "Next 2 [Ctrl+RIGHT]");
    EXPECT_EQ(ButtonTip(keys_, Button("Pause")).text, "Pause") << "it has none";
    EXPECT_EQ(ButtonTip(keys_, Button("Yearly")).text, "Yearly [UP]") << "the level's key does the same";
    EXPECT_EQ(ButtonTip(keys_, {480, 300}).text, "");
}

// ---- double click

TEST_F(MainWindowTest, DoubleClickOnACellOpensItsObject) {
    state_.press.ObjectHit = 1;
    state_.press.DragPath = "old";
    EXPECT_TRUE(DoubleClick(Middle(Cell(kDay))));
    EXPECT_THAT(Calls(), ElementsAre("ShowSlide a.png"));
    EXPECT_EQ(state_.press.ObjectHit, 0);
    EXPECT_TRUE(state_.press.DragPath.empty());
    EXPECT_EQ(OpenedBy([&] { DoubleClick(Middle(Cell(14))); }), note_);
    EXPECT_THAT(Calls(), IsEmpty());
    DoubleClick(Middle(Cell(20)));
    DoubleClick({480, 5});
    EXPECT_THAT(Calls(), IsEmpty());
}

TEST_F(MainWindowTest, DoubleClickOnADayNumberMakesANote) {
    others_.madeText = note_;
    EXPECT_EQ(OpenedBy([&] { DoubleClick({Cell(20).x + 20, Cell(20).y + 20}); }), note_);
    EXPECT_THAT(Calls(), ElementsAre("MakeText 2008/11/20 "));
}

TEST_F(MainWindowTest, DoubleClickInAYear) {
    ShowYear(2008);
    state_.settings.CalendarMode = 1;
    Load();
    const int width = window_->ClientSize().width;
    DoubleClick(Middle(MonthCellRect(MakeMonthGrid(2008, 11, YearMonthRect(width, 11), true), kDay)));
    EXPECT_THAT(Calls(), ElementsAre("ShowSlide a.png"));
    const MonthGrid grid = MakeMonthGrid(2008, 11, YearMonthRect(width, 11), true);
    DoubleClick({MonthCellRect(grid, 3).x + 3, MonthCellRect(grid, 1).y + 3});  // before the first
    EXPECT_THAT(Calls(), IsEmpty());
}

TEST_F(MainWindowTest, DoubleClickOnAnHourMakesItsSchedule) {
    ShowDay(2008, 11, kDay);
    state_.settings.DayNumberOfLine = 4;
    state_.settings.DayDuration = 4;
    state_.settings.DayStartTime = 12;
    Load();
    const DayLines lines = MakeDayLines(window_->ClientSize().height, 4, 4, 12);
    DoubleClick(Middle(lines.HourPictureRect(2)));
    char hour[8];
    std::snprintf(hour, sizeof hour, "%02d", lines.HourOfLine(2));
    EXPECT_THAT(Calls(),
                ElementsAre("MakeText 2008/11/13 [Schedule]\n[2008/11/13 " + std::string(hour) + ":00]\n"));
}

TEST_F(MainWindowTest, DoubleClickBesideTheObjectsOfADayMakesAnEmptyNote) {
    ShowDay(2008, 11, kDay);
    Load();
    DoubleClick({950, 600});
    EXPECT_THAT(Calls(), ElementsAre("MakeText 2008/11/13 "));
    ChangeView([&](ViewState& view) { view.scatter = true; });
    Load();
    DoubleClick({2, 2});
    EXPECT_THAT(Calls(), ElementsAre("MakeText 2008/11/13 ")) << "in the scatter of a day too";
    ShowMonth(2008, 11);
    Load();
    DoubleClick({2, 2});
    EXPECT_THAT(Calls(), IsEmpty()) << "but in no other";
}

TEST_F(MainWindowTest, RightDoubleClickShowsTheObjectLarge) {
    state_.run.LastActivity = -1;
    EXPECT_TRUE(Send(At(EventType::RightUp, {5, 5})));
    EXPECT_GE(state_.run.LastActivity, 0);
    EXPECT_FALSE(Send(At(EventType::RightDown, {5, 5})));
    EXPECT_TRUE(Send(At(EventType::RightDoubleClick, Middle(Cell(kDay)))));
    EXPECT_THAT(Calls(), ElementsAre("ShowNeighbor a.png"));
    Send(At(EventType::RightDoubleClick, Middle(Cell(20))));
    EXPECT_THAT(Calls(), IsEmpty());
}

TEST_F(MainWindowTest, WheelSizesThePicturesOfTheScatter) {
    ChangeView([&](ViewState& view) { view.scatter = true; });
    state_.settings.ThumbnailMaxSize = 240;
    for (const int steps : {+1, +1, -1, +1}) {
        Event wheel = At(EventType::Wheel, {480, 300});
        wheel.wheel = steps;
        EXPECT_TRUE(Send(wheel));
    }
    TheApplication()->ProcessEvents(5);
    EXPECT_EQ(state_.settings.ThumbnailMaxSize, 260);
}

// ---- drops

TEST_F(MainWindowTest, DropWithNothingUnderItIsAnImport) {
    others_.importAnswer = true;
    EXPECT_FALSE(Drop({480, 300}));
    EXPECT_THAT(Calls(), ElementsAre("ImportDropped 1"));
}

TEST_F(MainWindowTest, DragThatCameBackRatesItsObject) {
    Press(Middle(Cell(kDay)));
    calls_.Clear();
    others_.rating = EstimateType::Good;
    EXPECT_TRUE(Drop(Middle(Cell(kDay))));
    EXPECT_THAT(Calls(), ElementsAre("HidePetals", "RateFile a.png 3"));
    others_.rating.reset();
    EXPECT_TRUE(Drop(Middle(Cell(kDay))));
    EXPECT_THAT(Calls(), ElementsAre("HidePetals")) << "dropped on no petal";
    EXPECT_FALSE(Drop(Middle(Cell(20))));
    EXPECT_THAT(Calls(), ElementsAre("ImportDropped 1")) << "dropped elsewhere";
}

TEST_F(MainWindowTest, DragOfAnotherProgramIsNoRatingWhereverItIsLetGo) {
    Press(Middle(Cell(kDay)));
    calls_.Clear();
    others_.rating = EstimateType::Good;
    EXPECT_FALSE(Drop(Middle(Cell(kDay)), Drag::Foreign));
    EXPECT_THAT(Calls(), ElementsAre("ImportDropped 1"));
    slideShow_.shown = slideShow_.onPicture = true;
    EXPECT_FALSE(Drop({480, 300}, Drag::Foreign));
    EXPECT_THAT(Calls(), ElementsAre("ImportDropped 1"));
    slideShow_.shown = false;
    neighbor_.shown = true;
    state_.press.DragRect = {100, 100, 200, 200};
    EXPECT_FALSE(Drop({200, 200}, Drag::Foreign));
    EXPECT_THAT(Calls(), ElementsAre("ImportDropped 1"));
}

TEST_F(MainWindowTest, DropOnTheSlidesPictureRatesTheSlide) {
    slideShow_.shown = slideShow_.onPicture = true;
    others_.rating = EstimateType::Private;
    EXPECT_TRUE(Drop({480, 300}));
    EXPECT_THAT(Calls(), ElementsAre("HidePetals", "RateSlide 5"));
    others_.rating.reset();
    EXPECT_TRUE(Drop({480, 300}));
    EXPECT_THAT(Calls(), ElementsAre("HidePetals"));
    slideShow_.onPicture = false;
    EXPECT_FALSE(Drop({480, 300}));
    EXPECT_THAT(Calls(), ElementsAre("ImportDropped 1")) << "beside the picture it is a drop on the calendar";
}

TEST_F(MainWindowTest, DropOnTheLargeViewRatesItsObject) {
    neighbor_.shown = true;
    state_.press.DragRect = {100, 100, 200, 200};  // of the main window's own coordinates
    others_.rating = EstimateType::Public;
    EXPECT_TRUE(Drop({200, 200}));
    EXPECT_THAT(Calls(), ElementsAre("HidePetals", "RateNeighbor 2"));
    others_.rating.reset();
    EXPECT_TRUE(Drop({200, 200}));
    EXPECT_THAT(Calls(), ElementsAre("HidePetals"));
    EXPECT_FALSE(Drop({50, 50}));
    EXPECT_THAT(Calls(), ElementsAre("ImportDropped 1"));
}

// ---- timers, clipboard, life

TEST_F(MainWindowTest, ClipboardGuardRunsOutOnceAndSwitchesTheMonitorOff) {
    state_.settings.MonitorClipboard = 1;
    EXPECT_TRUE(Timer(kTimerClipboardGuard));
    EXPECT_EQ(state_.settings.MonitorClipboard, 0);
}

TEST_F(MainWindowTest, ClipboardIsKeptWhileTheMonitorIsOn) {
    ASSERT_TRUE(others_.clipboardChanges) << "watched since the window was made";
    others_.clipboardChanges();
    EXPECT_THAT(Calls(), IsEmpty());
    state_.settings.MonitorClipboard = 1;
    others_.clipboardChanges();
    EXPECT_THAT(Calls(), ElementsAre("KeepClipboard"));
}

TEST_F(MainWindowTest, OpenSlideShowFitsItselfToTheWindow) {
    Send(Event{EventType::Resize});
    EXPECT_THAT(Calls(), IsEmpty());
    slideShow_.shown = true;
    Send(Event{EventType::Resize});
    EXPECT_THAT(Calls(), ElementsAre("FitSlide"));
    Send(Event{EventType::Minimize});
    EXPECT_THAT(Calls(), ElementsAre("FitSlide", "HideFilterWindow"));
}

TEST_F(MainWindowTest, MinimisedWindowGetsNoBeatsUntilItIsBack) {
    EXPECT_FALSE(Send(Event{EventType::Minimize})) << "without a tray it stays in the desktop's bar";
    EXPECT_THAT(Calls(), ElementsAre("HideFilterWindow"));
    EXPECT_EQ(state_.run.MainWindowVisible, 0);
    EXPECT_TRUE(Send(Event{EventType::Restore}));
    EXPECT_EQ(state_.run.MainWindowVisible, 1);
}

TEST_F(MainWindowTest, EndKeepsTheRectangle) {
    window_->SetFrame({40, 30, 900, 400});
    TheApplication()->ProcessEvents(10);
    window_->Close();
    EXPECT_EQ(state_.settings.WindowRect.left, 40);
    EXPECT_EQ(state_.settings.WindowRect.top, 30);
    EXPECT_EQ(state_.settings.WindowRect.right, 940);
    EXPECT_EQ(state_.settings.WindowRect.bottom, 430);
    EXPECT_THAT(Calls(), Contains("HideFilterWindow"));
    EXPECT_EQ(MainWindow(), nullptr) << "workers draw nothing from now on";
}

TEST_F(MainWindowTest, RectangleWithItsEdgesExchangedStillMakesAWindow) {
    window_.reset();
    SetMainWindow(nullptr);
    state_.settings.WindowRect = {500, 400, 100, 50};
    const auto window = MakeMainWindow();
    ASSERT_TRUE(window);
    EXPECT_GE(window->ClientSize().width, 1);
}

TEST_F(MainWindowTest, IsNeverSmallerThanItsBar) {
    window_->SetFrame({40, 30, 100, 50});
    TheApplication()->ProcessEvents(10);
    EXPECT_EQ(window_->ClientSize(), LeastClientSize());
    for (const ButtonInfo& button : VisibleButtons()) EXPECT_GE(button.area.x, 0) << button.name;
}

}  // namespace
}  // namespace kalmora
