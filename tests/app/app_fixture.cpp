#include "app/app_fixture.h"

#include "app/main_window.h"
#include "app/run_beside.h"
#include "base/log.h"
#include "platform/files.h"
#include "store/date_tree.h"
#include "support/pointer.h"
#include "views/bar/button_bar.h"
#include "views/model/calendar_store.h"

namespace kalmora {

AppTest::AppTest() {
    state_.run.MainWindowVisible = 1;
    state_.settings.UseJapanese = false;
    state_.settings.ShowFolderPath = false;
    state_.settings.TimingOfPopup = 24 * 60 * 60;
    state_.run.FirstStartPending = 0;
    state_.run.InitialScanRunning = 0;
    state_.run.HeartbeatBusy = 0;
    state_.settings.AutoNavigate = state_.settings.SlideShowAutoNavigate = 0;
    state_.settings.MonitorClipboard = 0;
    state_.run.SlideOpenedByCommand = 0;
    state_.press.PressActive = state_.press.ObjectHit = 0;
    state_.press.PressPoint = {};
    state_.press.DragPath.clear();
    state_.press.DragRect = {};
    TheDateTree().Scan(files::Join(root_, "no files"), false);
}

AppTest::~AppTest() {
    WaitUntilIdle();
    heartbeat_.Stop();
    SetMainWindow(nullptr);
    window_.reset();
    OpenLog("");
    Pointer({0, 0}, false);
    state_.run.MainWindowVisible = 0;
    state_.run.InitialScanRunning = 1;
    state_.run.FirstStartPending = 1;
    state_.press.DragPath.clear();
}

void AppTest::OpenMainWindow(Size size) {
    state_.settings.WindowRect = {0, 0, size.width, size.height};
    window_ = MakeMainWindow();
    ASSERT_TRUE(window_);
    SetMainWindow(window_.get());
    CreateButtons();
    window_->Show();
    SetButtonStates();
    TheApplication()->ProcessEvents(10);
    ASSERT_TRUE(WaitUntilIdle());
    calls_.Clear();
}

bool AppTest::WaitUntilIdle() {
    while (IsWorkBesideRunning()) TheApplication()->ProcessEvents(2);
    return ViewTest::WaitUntilIdle();
}

void AppTest::Pointer(Point screen, bool leftButton) {
    test::MovePointer(screen, leftButton ? test::LeftButton::Down : test::LeftButton::Up);
}

std::unique_ptr<Window> AppTest::MakeMainWindow() {
    return CreateMainWindow(
        [this](Window& window, const Event& event) { return MainWindowProc(parts_, window, event); });
}

void AppTest::StartLog() { ASSERT_TRUE(OpenLog(files::Join(root_, "log"))); }

std::string AppTest::Logged() const { return files::ReadWholeFile(files::Join(root_, "log")).value_or(""); }

}  // namespace kalmora
