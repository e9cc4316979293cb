#include "platform/window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "platform/qt/pixels.h"
#include "window_fixture.h"

namespace kalmora {
namespace {

using namespace test;
using testing::ElementsAre;

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

TEST_F(WindowTest, NoFrameMakesItSmallerThanItsLeastSize) {
    WindowOptions options;
    options.frame = Rect{10, 10, 50, 400};
    options.leastClient = Size{200, 100};
    const auto window = Window::Create(options, {});
    window->Show();
    ServeAll();
    EXPECT_EQ(window->ClientSize(), (Size{200, 400}));
    window->SetFrame(Rect{10, 10, 300, 20});
    ServeAll();
    EXPECT_EQ(window->ClientSize(), (Size{300, 100}));
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

TEST_F(WindowTest, WhereNothingCouldBringItBackItIsNotMinimised) {
    ShowAndForget();
    window_->Minimize();
    EXPECT_FALSE(Widget()->isMinimized());
    EXPECT_TRUE(window_->IsVisible());
}

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
