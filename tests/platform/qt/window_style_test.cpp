// Windows beside the main one: how they look, whom they belong to, how they are shown.
#include <gtest/gtest.h>

#include <thread>

#include "platform/foreground_window.h"
#include "platform/qt/window_qt.h"
#include "platform/screens.h"
#include "window_fixture.h"

namespace kalmora {
namespace {

using namespace test;

class OwnedWindowTest : public WindowTest {
protected:
    std::unique_ptr<Window> Create(WindowOptions options) {
        options.owner = window_.get();
        if (options.frame.IsEmpty()) options.frame = Rect{100, 90, 60, 50};
        return Window::Create(options, [](Window&, const Event&) { return false; });
    }
    std::unique_ptr<Window> CreateTool(WindowFocus focus = WindowFocus::Takes) {
        WindowOptions options;
        options.style = WindowStyle::FramelessTool;
        options.focus = focus;
        return Create(options);
    }
};

TEST_F(OwnedWindowTest, AFramelessToolIsAllDrawingArea) {
    const auto tool = CreateTool();
    tool->Show();
    ServeAll();
    EXPECT_EQ(tool->ClientSize(), (Size{60, 50}));
    EXPECT_EQ(tool->NormalFrame(), (Rect{100, 90, 60, 50}));
    const QWidget* const widget = qt::WidgetOf(tool.get());
    EXPECT_TRUE(widget->windowFlags().testFlag(Qt::FramelessWindowHint));
    EXPECT_EQ(widget->windowType(), Qt::Tool);
}

TEST_F(OwnedWindowTest, AResizableToolHasItsFrame) {
    WindowOptions options;
    options.style = WindowStyle::ResizableTool;
    const auto tool = Create(options);
    const QWidget* const widget = qt::WidgetOf(tool.get());
    EXPECT_EQ(widget->windowType(), Qt::Tool);
    EXPECT_FALSE(widget->windowFlags().testFlag(Qt::FramelessWindowHint));
}

TEST_F(OwnedWindowTest, TheDesktopKnowsWhoseItIs) {
    const auto tool = CreateTool();
    EXPECT_EQ(qt::WidgetOf(tool.get())->windowHandle()->transientParent(), Widget()->windowHandle());
}

TEST_F(OwnedWindowTest, TheOwnerMayGoFirst) {
    WindowOptions options;
    options.ownerMoves = OwnerMoves::Followed;
    const auto tool = Create(options);
    tool->Show();
    ShowAndForget();
    window_.reset();
    ServeAll();
    tool->Hide();
    tool->SetFrame(Rect{1, 2, 30, 40});
    tool->Close();
}

TEST_F(OwnedWindowTest, MovesWithItsOwnerWhenItShall) {
    WindowOptions options;
    options.style = WindowStyle::FramelessTool;
    const auto still = Create(options);
    options.ownerMoves = OwnerMoves::Followed;
    const auto follower = Create(options);
    ShowAndForget();
    still->Show();
    follower->Show();
    ServeAll();
    const Point before = window_->ToScreen({0, 0});
    const Rect placed = follower->NormalFrame();
    window_->SetFrame(Rect{70, 25, 320, 240});
    ServeAll();
    const Point after = window_->ToScreen({0, 0});
    ASSERT_NE(after, before);
    EXPECT_EQ(follower->NormalFrame(),
              (Rect{placed.x + after.x - before.x, placed.y + after.y - before.y, 60, 50}));
    EXPECT_EQ(still->NormalFrame(), (Rect{100, 90, 60, 50}));
}

TEST_F(OwnedWindowTest, RefusesTheFocusWhenItShall) {
    EXPECT_TRUE(qt::WidgetOf(CreateTool(WindowFocus::Refuses).get())
                    ->windowFlags()
                    .testFlag(Qt::WindowDoesNotAcceptFocus));
    EXPECT_FALSE(qt::WidgetOf(CreateTool().get())->windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus));
}

TEST_F(OwnedWindowTest, CanBeShownWithoutFocus) {
    const auto tool = CreateTool();
    tool->ShowWithoutFocus();
    EXPECT_TRUE(tool->IsVisible());
    tool->Hide();
    tool->Show();
    EXPECT_TRUE(tool->IsVisible());
    tool->Close();
    tool->ShowWithoutFocus();
    EXPECT_FALSE(tool->IsVisible());
}

TEST_F(WindowTest, OpacityIsSetFromAnyThread) {
    ShowAndForget();
    EXPECT_EQ(Widget()->windowOpacity(), 1);
    for (const auto& [wanted, seen] : {std::pair(0.5, 0.5), {2.0, 1.0}, {-1.0, 0.0}}) {
        std::thread([this, opacity = wanted] { window_->SetOpacity(opacity); }).join();
        ServeAll();
        EXPECT_NEAR(Widget()->windowOpacity(), seen, 0.01);
    }
    window_->SetOpacity(0.5);
    window_.reset();  // what is still to be done then is not done
    ServeAll();
}

TEST_F(WindowTest, TheLayerChangesWhileItIsShown) {
    ShowAndForget();
    window_->SetLayer(WindowLayer::Topmost);
    EXPECT_TRUE(Widget()->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_TRUE(Widget()->windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint));
    window_->SetLayer(WindowLayer::Ordinary);
    EXPECT_FALSE(Widget()->windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_TRUE(window_->IsVisible());
    EXPECT_EQ(Count(EventType::Destroy), 0);
}

// ---- the desktop

TEST(Screens, TheDesktopIsAroundAllOfThem) {
    const Rect desktop = DesktopArea();
    ASSERT_FALSE(desktop.IsEmpty());
    for (const Rect& area : ScreenAreas()) {
        EXPECT_GE(area.x, desktop.x);
        EXPECT_LE(area.Right(), desktop.Right());
    }
}

TEST(Screens, NothingIsGrabbedWhereNoScreenIs) {
    EXPECT_TRUE(GrabScreen(Rect{}).IsEmpty());
    EXPECT_TRUE(GrabScreen(Rect{100'000, 100'000, 10, 10}).IsEmpty());
}

TEST(ForegroundWindow, IsUnknownWithoutADesktop) { EXPECT_FALSE(FindForegroundWindow()); }

}  // namespace
}  // namespace kalmora
