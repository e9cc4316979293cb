#include "platform/window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QWheelEvent>
#include <QWidget>
#include <QWindow>
#include <atomic>
#include <thread>

#include "platform/keys.h"
#include "platform/qt/pixels.h"
#include "platform/qt/window_qt.h"
#include "support.h"

namespace kalmora {
namespace {

using namespace test;
using testing::ElementsAre;

// A window that writes down what happens to it.
class WindowTest : public testing::Test {
protected:
    explicit WindowTest(Rect frame = Rect{40, 30, 320, 240}) {
        WindowOptions options;
        options.title = "Test";
        options.frame = frame;
        options.acceptDrops = true;
        window_ = Window::Create(options, [this](Window&, const Event& event) {
            events_.push_back(event);
            return answer_ ? answer_(event) : false;
        });
    }

    void ShowAndForget() {
        window_->Show();
        ServeAll();
        ServeUntil([this] { return Count(EventType::Paint) > 0; });
        ServeAll();
        events_.clear();
    }
    int Count(EventType type) const {
        return static_cast<int>(
            std::count_if(events_.begin(), events_.end(), [type](const Event& e) { return e.type == type; }));
    }
    std::vector<EventType> Types() const {
        std::vector<EventType> types;
        for (const Event& event : events_) types.push_back(event.type);
        return types;
    }
    QWidget* Widget() const { return qt::WidgetOf(window_.get()); }
    void Mouse(QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons held, QPointF at = {10, 20},
               Qt::KeyboardModifiers modifiers = Qt::NoModifier) const {
        QMouseEvent event(type, at, Widget()->mapToGlobal(at), button, held, modifiers);
        QApplication::sendEvent(Widget(), &event);
    }
    void Press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, const QString& text = {},
               quint32 scanCode = 0) const {
        QKeyEvent event(QEvent::KeyPress, key, modifiers, scanCode, 0, 0, text);
        QApplication::sendEvent(Widget()->windowHandle(), &event);
    }
    // True when the window took what was offered.
    bool DropFiles(const QByteArray& uriList, QPointF at) const {
        QMimeData offered;
        offered.setData("text/uri-list", uriList);
        QDragEnterEvent enter(at.toPoint(), Qt::CopyAction, &offered, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(Widget(), &enter);
        QDropEvent drop(at, Qt::CopyAction, &offered, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(Widget(), &drop);
        return drop.isAccepted();
    }

    std::vector<Event> events_;
    std::function<bool(const Event&)> answer_;
    std::unique_ptr<Window> window_;
};

// ---- life

TEST_F(WindowTest, CreateIsTheFirstEventAndNothingIsShown) {
    EXPECT_THAT(Types(), ElementsAre(EventType::Create));
    EXPECT_FALSE(window_->IsVisible());
    EXPECT_EQ(window_->Title(), "Test");
}

TEST_F(WindowTest, CanBeDrawnOnBeforeItIsShown) {
    EXPECT_EQ(window_->ClientSize(), (Size{320, 240}));
    window_->Draw()->FillRect(Rect{0, 0, 320, 240}, kRed);
    EXPECT_EQ(window_->Snapshot()->PixelAt(319, 239), kRed);
}

TEST_F(WindowTest, EachShowingIsPaintedOnce) {
    window_->Invalidate();
    window_->Invalidate();
    ServeAll();
    EXPECT_EQ(Count(EventType::Paint), 0) << "a hidden window is not painted";
    window_->Show();
    EXPECT_TRUE(ServeUntil([this] { return Count(EventType::Paint) > 0; }));
    ServeAll();
    EXPECT_EQ(Count(EventType::Paint), 1);
    EXPECT_TRUE(window_->IsVisible());
    window_->Hide();
    EXPECT_FALSE(window_->IsVisible());
    window_->Show();
    ServeAll();
    EXPECT_EQ(Count(EventType::Paint), 2);
}

TEST_F(WindowTest, ManyInvalidationsArePaintedOnce) {
    ShowAndForget();
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([this] {
            for (int k = 0; k < 50; ++k) window_->Invalidate();
        });
    for (std::thread& thread : threads) thread.join();
    ServeAll();
    EXPECT_EQ(Count(EventType::Paint), 1);
    window_->Invalidate();
    ServeAll();
    EXPECT_EQ(Count(EventType::Paint), 2);
}

TEST_F(WindowTest, ResizeGivesANewBufferThatKeepsTheOldContent) {
    ShowAndForget();
    window_->Draw()->FillRect(Rect{0, 0, 320, 240}, kRed);
    window_->SetFrame(Rect{40, 30, 400, 300});
    ASSERT_TRUE(ServeUntil([this] { return Count(EventType::Paint) > 0; }));
    EXPECT_EQ(window_->ClientSize(), (Size{400, 300}));
    const auto shown = window_->Snapshot();
    EXPECT_EQ(shown->PixelAt(319, 239), kRed);
    EXPECT_EQ(shown->PixelAt(320, 240), kWhite);
    EXPECT_GE(Count(EventType::Resize), 1);
    ServeAll();
    EXPECT_EQ(Count(EventType::Paint), 1);
}

TEST_F(WindowTest, ManyResizesAreOnePaint) {
    ShowAndForget();
    for (int i = 1; i <= 20; ++i) Widget()->resize(320 + i, 240 + i);
    ServeAll();
    EXPECT_EQ(window_->ClientSize(), (Size{340, 260}));
    EXPECT_EQ(Count(EventType::Paint), 1);
}

TEST_F(WindowTest, ResizingWhileThisThreadDrawsWaitsForTheCanvas) {
    ShowAndForget();
    {
        const auto canvas = window_->Draw();
        Widget()->resize(500, 400);
        canvas->FillRect(Rect{0, 0, 320, 240}, kGreen);
        EXPECT_EQ(window_->ClientSize(), (Size{320, 240}));
    }
    EXPECT_TRUE(ServeUntil([this] { return window_->ClientSize() == Size{500, 400}; }));
    EXPECT_EQ(window_->Snapshot()->PixelAt(5, 5), kGreen);
}

TEST_F(WindowTest, CloseTellsOfItsEndOnceAndIsGone) {
    ShowAndForget();
    window_->Close();
    EXPECT_EQ(Count(EventType::Destroy), 1);
    EXPECT_EQ(Count(EventType::Close), 0);
    EXPECT_FALSE(window_->IsVisible());
    EXPECT_FALSE(window_->Draw());
    EXPECT_FALSE(window_->Snapshot());
    window_->Close();
    window_->Show();
    window_->Invalidate();
    window_->SendCommand(1);
    window_->StartTimer(1, 1);
    ServeAll();
    EXPECT_EQ(events_.back().type, EventType::Destroy);
    EXPECT_EQ(Count(EventType::Destroy), 1);
}

TEST_F(WindowTest, ClosingAgainFromInsideTheEndIsHarmless) {
    ShowAndForget();
    answer_ = [this](const Event& event) {
        if (event.type == EventType::Destroy) window_->Close();
        return true;
    };
    window_->Close();
    EXPECT_EQ(Count(EventType::Destroy), 1);
}

TEST_F(WindowTest, TheUsersCloseCanBeRefused) {
    ShowAndForget();
    answer_ = [](const Event& event) { return event.type == EventType::Close; };
    Widget()->close();
    EXPECT_THAT(Types(), ElementsAre(EventType::Close));
    EXPECT_TRUE(window_->IsVisible());
    EXPECT_TRUE(window_->Draw());
    answer_ = nullptr;
    events_.clear();
    Widget()->close();
    EXPECT_THAT(Types(), ElementsAre(EventType::Close, EventType::Destroy));
    EXPECT_FALSE(window_->IsVisible());
    EXPECT_FALSE(window_->Draw());
}

TEST_F(WindowTest, MayEndInsideItsOwnProcedure) {
    ShowAndForget();
    answer_ = [this](const Event& event) {
        if (event.type == EventType::Command) window_.reset();
        return true;
    };
    window_->SendCommand(7);
    window_->SendCommand(8);
    window_->Invalidate();
    EXPECT_TRUE(ServeUntil([this] { return !window_; }));
    ServeAll();
    EXPECT_EQ(Count(EventType::Command), 1);
}

TEST_F(WindowTest, ACanvasMayOutliveItsWindow) {
    ShowAndForget();
    auto canvas = window_->Draw();
    window_.reset();
    canvas->FillRect(Rect{0, 0, 10, 10}, kRed);
    canvas.reset();
    ServeAll();
}

// ---- drawing and showing

TEST_F(WindowTest, WhatIsDrawnIsShown) {
    ShowAndForget();
    window_->Draw()->FillRect(Rect{0, 0, 320, 240}, kGreen);
    window_->Draw()->FillRect(Rect{10, 10, 20, 20}, kRed);
    ServeAll();
    const QImage shown = Widget()->grab().toImage();
    EXPECT_EQ(qt::ColorAt(shown, 15, 15), kRed);
    EXPECT_EQ(qt::ColorAt(shown, 35, 15), kGreen);
}

TEST_F(WindowTest, AnExposedPartIsAnsweredFromTheBufferAlone) {
    ShowAndForget();
    window_->Draw()->FillRect(Rect{0, 0, 320, 240}, kBlue);
    ServeAll();
    events_.clear();
    Widget()->repaint(50, 50, 10, 10);
    EXPECT_EQ(qt::ColorAt(Widget()->grab().toImage(), 55, 55), kBlue);
    EXPECT_EQ(Count(EventType::Paint), 0);
}

TEST_F(WindowTest, AThreadMayTakeASecondCanvasWhileItHasOne) {
    const auto outer = window_->Draw();
    outer->FillRect(Rect{0, 0, 10, 10}, kRed);
    {
        const auto inner = window_->Draw();
        inner->FillRect(Rect{5, 0, 10, 10}, kGreen);
    }
    outer->FillRect(Rect{12, 0, 10, 10}, kBlue);
    const auto shown = window_->Snapshot();
    EXPECT_EQ(shown->PixelAt(2, 5), kRed);
    EXPECT_EQ(shown->PixelAt(8, 5), kGreen);
    EXPECT_EQ(shown->PixelAt(14, 5), kBlue);
}

TEST_F(WindowTest, FourThreadsDrawWhileTheWindowIsResizedAndLookedAt) {
    ShowAndForget();
    std::atomic<int> running = 4;
    std::vector<std::thread> threads;
    const Image picture = qt::MakeImage(Noise(64, 48));
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([this, t, &running, &picture] {
            for (int i = 0; i < 100; ++i) {
                if (const auto canvas = window_->Draw()) {
                    const int x = t * 80;
                    canvas->FillRect(Rect{x, 0, 80, 240}, Color{static_cast<std::uint8_t>(i), 100, 50});
                    canvas->DrawImage(Rect{x + 5, 5, 40, 30}, picture);
                    canvas->Text(Point{x + 5, 40}, "13 木", Font{"MSP ゴシック", 20}, kBlack);
                    canvas->TextBlock(Rect{x, 70, 80, 100}, "[Schedule] walk 川", Font{"Arial", 12}, kWhite);
                }
                window_->ClientSize();
                window_->Scale();
                window_->IsVisible();
                window_->SetTitle("title " + std::to_string(i));
                window_->Title();
                window_->ToScreen(window_->ToClient(Point{1, 2}));
                if (i % 10 == 0) window_->Invalidate();
                if (i % 25 == 0) window_->Snapshot();
            }
            --running;
        });
    int width = 320;
    const bool isDone = ServeUntil([this, &running, &width] {
        Widget()->resize(++width, 240);
        return running == 0;
    });
    for (std::thread& thread : threads) thread.join();
    EXPECT_TRUE(isDone);
    ServeAll();
    EXPECT_GT(Count(EventType::Paint), 0);
    EXPECT_TRUE(window_->Title().starts_with("title "));
}

TEST_F(WindowTest, DrawingAfterCloseGivesNoCanvasOnAnyThread) {
    ShowAndForget();
    std::atomic<bool> isEnding = false;
    std::thread drawing([this, &isEnding] {
        while (!isEnding)
            if (const auto canvas = window_->Draw()) canvas->FillRect(Rect{0, 0, 50, 50}, kRed);
    });
    ServeAll();
    window_->Close();
    EXPECT_FALSE(window_->Draw());
    isEnding = true;
    drawing.join();
}

// ---- place

TEST_F(WindowTest, StandsWhereItWasAskedTo) {
    ShowAndForget();
    EXPECT_EQ(window_->NormalFrame(), (Rect{40, 30, 320, 240}));
    window_->SetFrame(Rect{60, 50, 300, 200});
    ServeAll();
    EXPECT_EQ(window_->NormalFrame(), (Rect{60, 50, 300, 200}));
}

TEST_F(WindowTest, NormalFrameOfAMaximisedWindowIsThatFromBefore) {
    ShowAndForget();
    window_->NormalFrame();
    Widget()->setWindowState(Qt::WindowMaximized);
    ServeAll();
    EXPECT_EQ(window_->NormalFrame(), (Rect{40, 30, 320, 240}));
}

TEST_F(WindowTest, TranslatesBetweenScreenAndClient) {
    ShowAndForget();
    const Point screen = window_->ToScreen(Point{5, 6});
    EXPECT_EQ(window_->ToClient(screen), (Point{5, 6}));
    const QPoint expected = Widget()->mapToGlobal(QPoint(5, 6));
    EXPECT_EQ(screen, (Point{expected.x(), expected.y()}));
}

TEST_F(WindowTest, SenselessFramesAreBroughtIntoBounds) {
    window_->SetFrame(Rect{0, 0, 0, -5});
    EXPECT_FALSE(window_->ClientSize().IsEmpty());
    ShowAndForget();
    EXPECT_FALSE(window_->ClientSize().IsEmpty());
}

// ---- minimising

TEST_F(WindowTest, AMinimiseThatWasDealtWithIsTakenBack) {
    ShowAndForget();
    answer_ = [this](const Event& event) {
        if (event.type == EventType::Minimize) window_->Hide();
        return event.type == EventType::Minimize;
    };
    Widget()->setWindowState(Qt::WindowMinimized);
    ASSERT_TRUE(ServeUntil([this] { return Count(EventType::Minimize) == 1; }));
    ServeAll();
    EXPECT_FALSE(window_->IsVisible());
    EXPECT_FALSE(Widget()->isVisible());
    window_->Show();
    EXPECT_TRUE(window_->IsVisible());
    EXPECT_FALSE(Widget()->isMinimized());
}

TEST_F(WindowTest, AMinimiseThatWasDealtWithWithoutHidingIsTakenBack) {
    ShowAndForget();
    answer_ = [](const Event& event) { return event.type == EventType::Minimize; };
    Widget()->setWindowState(Qt::WindowMinimized);
    ASSERT_TRUE(ServeUntil([this] { return Count(EventType::Minimize) == 1; }));
    EXPECT_TRUE(window_->IsVisible());
    EXPECT_FALSE(Widget()->isMinimized());
}

TEST_F(WindowTest, AMinimiseThatNobodyDealsWithStands) {
    ShowAndForget();
    Widget()->setWindowState(Qt::WindowMinimized);
    ASSERT_TRUE(ServeUntil([this] { return Count(EventType::Minimize) == 1; }));
    EXPECT_TRUE(Widget()->isMinimized());
    window_->Show();
    EXPECT_FALSE(Widget()->isMinimized());
}

// ---- mouse

TEST_F(WindowTest, MouseEventsTellPlaceButtonsAndModifiers) {
    ShowAndForget();
    Mouse(QEvent::MouseButtonPress, Qt::LeftButton, Qt::LeftButton, {10.9, 20.2}, Qt::ControlModifier);
    Mouse(QEvent::MouseMove, Qt::NoButton, Qt::LeftButton, {12, 22}, Qt::ShiftModifier | Qt::AltModifier);
    Mouse(QEvent::MouseButtonRelease, Qt::LeftButton, Qt::NoButton);
    Mouse(QEvent::MouseMove, Qt::NoButton, Qt::NoButton, {-3.5, 5});
    ASSERT_THAT(Types(), ElementsAre(EventType::LeftDown, EventType::MouseMove, EventType::LeftUp,
                                     EventType::MouseMove));
    EXPECT_EQ(events_[0].point, (Point{10, 20}));
    EXPECT_TRUE(events_[0].ctrl);
    EXPECT_FALSE(events_[0].shift);
    EXPECT_TRUE(events_[0].leftButton);
    EXPECT_TRUE(events_[1].leftButton);
    EXPECT_TRUE(events_[1].shift && events_[1].alt && !events_[1].ctrl);
    EXPECT_FALSE(events_[2].leftButton);
    EXPECT_EQ(events_[3].point, (Point{-4, 5}));
    EXPECT_FALSE(events_[3].leftButton);
}

TEST_F(WindowTest, TheSecondPressOfADoubleClickIsADoubleClick) {
    ShowAndForget();
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton}) {
        Mouse(QEvent::MouseButtonPress, button, button);
        Mouse(QEvent::MouseButtonRelease, button, Qt::NoButton);
        Mouse(QEvent::MouseButtonDblClick, button, button);
        Mouse(QEvent::MouseButtonRelease, button, Qt::NoButton);
    }
    EXPECT_THAT(Types(), ElementsAre(EventType::LeftDown, EventType::LeftUp, EventType::LeftDoubleClick,
                                     EventType::LeftUp, EventType::RightDown, EventType::RightUp,
                                     EventType::RightDoubleClick, EventType::RightUp));
}

TEST_F(WindowTest, OtherButtonsAreNoEvents) {
    ShowAndForget();
    Mouse(QEvent::MouseButtonPress, Qt::MiddleButton, Qt::MiddleButton);
    Mouse(QEvent::MouseButtonRelease, Qt::MiddleButton, Qt::NoButton);
    EXPECT_THAT(Types(), ElementsAre());
}

TEST_F(WindowTest, WheelTellsWholeSteps) {
    ShowAndForget();
    for (const int angle : {120, -240, 60, 60, -60, 30}) {
        QWheelEvent event({5, 5}, {5, 5}, {}, QPoint(0, angle), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(Widget(), &event);
    }
    ASSERT_EQ(Count(EventType::Wheel), 3);
    EXPECT_EQ(events_[0].wheel, 1);
    EXPECT_EQ(events_[1].wheel, -2);
    EXPECT_EQ(events_[2].wheel, 1);
}

TEST_F(WindowTest, DroppedFilesArriveWithTheirPlace) {
    ShowAndForget();
    EXPECT_TRUE(DropFiles("file:///a%20b.jpg\r\nhttp://x/\r\nfile:///%82.txt\r\n", {30, 40}));
    ASSERT_TRUE(ServeUntil([this] { return Count(EventType::Drop) == 1; }));
    EXPECT_THAT(events_.back().paths, ElementsAre("/a b.jpg", "/\x82.txt"));
    EXPECT_EQ(events_.back().point, (Point{30, 40}));
}

TEST_F(WindowTest, ADropWithoutLocalFilesIsRefused) {
    ShowAndForget();
    EXPECT_FALSE(DropFiles("http://example.com/a.jpg", {30, 40}));
    ServeAll();
    EXPECT_EQ(Count(EventType::Drop), 0);
}

TEST_F(WindowTest, OtherThreadsLearnOfTheMouseAndOfControl) {
    if (QGuiApplication::platformName() != QLatin1String("offscreen"))
        GTEST_SKIP() << "a real display is asked where its own cursor is";
    ShowAndForget();
    QWindow* native = Widget()->windowHandle();
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(3, 4), QPointF(3, 4), QPointF(103, 104),
                      Qt::LeftButton, Qt::LeftButton, Qt::ControlModifier);
    QApplication::sendEvent(native, &press);
    std::thread([] {
        EXPECT_EQ(CursorPosition(), (Point{103, 104}));
        EXPECT_TRUE(IsLeftButtonDown());
        EXPECT_TRUE(IsControlDown());
    }).join();
    QMouseEvent release(QEvent::MouseButtonRelease, QPointF(3, 4), QPointF(3, 4), QPointF(103, 104),
                        Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(native, &release);
    EXPECT_FALSE(IsLeftButtonDown());
    EXPECT_FALSE(IsControlDown());
}

// ---- keys

TEST_F(WindowTest, KeysArriveAsKeyAndThenAsCharacter) {
    ShowAndForget();
    Press(Qt::Key_A, Qt::NoModifier, "a");
    ASSERT_THAT(Types(), ElementsAre(EventType::Key, EventType::Character));
    EXPECT_EQ(events_[0].key, keys::Letter('A'));
    EXPECT_EQ(events_[1].text, "a");
    events_.clear();
    answer_ = [](const Event& event) { return event.type == EventType::Key; };
    Press(Qt::Key_A, Qt::NoModifier, "a");
    EXPECT_THAT(Types(), ElementsAre(EventType::Key)) << "a key that was used types nothing";
}

TEST_F(WindowTest, EveryKeyHasItsCode) {
    ShowAndForget();
    const std::pair<int, int> pairs[] = {
        {Qt::Key_A, 'A'},       {Qt::Key_Z, 'Z'},      {Qt::Key_0, '0'},           {Qt::Key_9, '9'},
        {Qt::Key_F1, 0x70},     {Qt::Key_F12, 0x7B},   {Qt::Key_Space, 0x20},      {Qt::Key_Up, 0x26},
        {Qt::Key_Down, 0x28},   {Qt::Key_Left, 0x25},  {Qt::Key_Right, 0x27},      {Qt::Key_Pause, 0x13},
        {Qt::Key_Escape, 0x1B}, {Qt::Key_Home, 0x24},  {Qt::Key_End, 0x23},        {Qt::Key_Tab, keys::kTab},
        {Qt::Key_Return, 0x0D}, {Qt::Key_Enter, 0x0D}, {Qt::Key_F13, keys::kNone},
    };
    for (const auto& [key, code] : pairs) {
        events_.clear();
        Press(key, Qt::ControlModifier | Qt::AltModifier);
        ASSERT_EQ(Count(EventType::Key), 1) << key;
        EXPECT_EQ(events_[0].key, code) << key;
        EXPECT_TRUE(events_[0].ctrl && events_[0].alt && !events_[0].shift);
    }
}

TEST_F(WindowTest, ShiftedDigitsAndForeignLettersAreKnownByTheirPlace) {
    ShowAndForget();
    Press(Qt::Key_Exclam, Qt::ShiftModifier, "!", 10);
    EXPECT_EQ(events_[0].key, '1');
    Press(Qt::Key_ParenRight, Qt::ShiftModifier, ")", 19);
    EXPECT_EQ(events_[2].key, '0');
    Press(0x0410, Qt::ControlModifier, "", 38);  // a Cyrillic letter where A is engraved
    EXPECT_EQ(events_[4].key, 'A');
}

TEST_F(WindowTest, InputMethodTextArrivesAsCharacter) {
    ShowAndForget();
    QInputMethodEvent composing("きょ", {});
    QApplication::sendEvent(Widget(), &composing);
    QInputMethodEvent more("きょう", {});
    QApplication::sendEvent(Widget(), &more);
    QInputMethodEvent done;
    done.setCommitString("今日");
    QApplication::sendEvent(Widget(), &done);
    ASSERT_THAT(Types(), ElementsAre(EventType::Character, EventType::Character));
    EXPECT_EQ(events_[0].text, "") << "composing has begun";
    EXPECT_EQ(events_[1].text, "今日");
}

class AcceleratorTest : public WindowTest {
protected:
    ~AcceleratorTest() override { SetAccelerators(nullptr, nullptr); }
};

TEST_F(AcceleratorTest, CommandGoesToTheTargetWhicheverWindowHasTheFocus) {
    ShowAndForget();
    std::vector<int> commands;
    bool isUsed = true;
    const auto target =
        Window::Create(WindowOptions{"", Rect{0, 0, 50, 50}, false, ""}, [&](Window&, const Event& event) {
            if (event.type != EventType::Command) return false;
            commands.push_back(event.command);
            return isUsed;
        });
    SetAccelerators(target.get(), [](const Event& event) {
        return event.type == EventType::Key && event.ctrl ? 51000 + event.key : 0;
    });
    Press(Qt::Key_B, Qt::ControlModifier, "\x02");
    EXPECT_THAT(commands, ElementsAre(51000 + 'B'));
    EXPECT_THAT(Types(), ElementsAre()) << "the window itself does not see a key that was taken";
    Press(Qt::Key_B, Qt::NoModifier, "b");
    EXPECT_THAT(Types(), ElementsAre(EventType::Key, EventType::Character));
    events_.clear();
    isUsed = false;
    Press(Qt::Key_C, Qt::ControlModifier, "\x03");
    EXPECT_EQ(commands.size(), 2u);
    EXPECT_THAT(Types(), ElementsAre(EventType::Key, EventType::Character)) << "unused: the key goes on";
}

TEST_F(AcceleratorTest, TheEndOfTheTargetEndsThem) {
    ShowAndForget();
    auto target = Window::Create(WindowOptions{}, [](Window&, const Event&) { return true; });
    SetAccelerators(target.get(), [](const Event&) { return 1; });
    target.reset();
    Press(Qt::Key_B, Qt::NoModifier, "b");
    EXPECT_THAT(Types(), ElementsAre(EventType::Key, EventType::Character));
}

// ---- timers and commands

TEST_F(WindowTest, ATimerFiresAgainAndAgainUntilItIsStopped) {
    window_->StartTimer(1009, 1);
    window_->StartTimer(1001, 3'600'000);
    EXPECT_TRUE(ServeUntil([this] { return Count(EventType::Timer) >= 3; }));
    for (const Event& event : events_) {
        if (event.type == EventType::Timer) {
            EXPECT_EQ(event.timer, 1009);
        }
    }
    window_->StopTimer(1009);
    window_->StopTimer(4711);
    events_.clear();
    ServeAll();
    TheApplication()->ProcessEvents(20);
    EXPECT_EQ(Count(EventType::Timer), 0);
}

TEST_F(WindowTest, ATimerMayBeStoppedByItsOwnEvent) {
    answer_ = [this](const Event& event) {
        if (event.type == EventType::Timer) window_->StopTimer(event.timer);
        return true;
    };
    window_->StartTimer(1, 1);
    EXPECT_TRUE(ServeUntil([this] { return Count(EventType::Timer) == 1; }));
    TheApplication()->ProcessEvents(20);
    EXPECT_EQ(Count(EventType::Timer), 1);
}

TEST_F(WindowTest, StartingATimerAgainRestartsItWithTheNewPeriod) {
    window_->StartTimer(1, 3'600'000);
    window_->StartTimer(1, 1);
    EXPECT_TRUE(ServeUntil([this] { return Count(EventType::Timer) >= 1; }));
}

TEST_F(WindowTest, CommandsOfAnyThreadArriveInTheirOrder) {
    std::thread([this] {
        for (int i = 1; i <= 100; ++i) window_->SendCommand(i);
    }).join();
    ASSERT_TRUE(ServeUntil([this] { return Count(EventType::Command) == 100; }));
    int expected = 0;
    for (const Event& event : events_) {
        if (event.type == EventType::Command) {
            EXPECT_EQ(event.command, ++expected);
        }
    }
}

}  // namespace
}  // namespace kalmora
