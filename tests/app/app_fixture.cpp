#include "app/app_fixture.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QWindow>
#include <utility>

#include "app/heartbeat.h"
#include "app/main_window.h"
#include "base/log.h"
#include "platform/files.h"
#include "store/date_tree.h"
#include "views/bar/button_bar.h"
#include "views/model/calendar_store.h"

namespace kalmora {

namespace {
std::string NameOf(const std::string& path) { return path.substr(path.find_last_of('/') + 1); }
}  // namespace

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

    const auto note = [this](const char* name) { return [this, name] { calls_.emplace_back(name); }; };
    const auto noteNumber = [this](const char* name) {
        return [this, name](int n) { calls_.push_back(std::string(name) + " " + std::to_string(n)); };
    };
    const auto notePath = [this](const char* name) {
        return [this, name](const std::string& path) {
            calls_.push_back(std::string(name) + " " + NameOf(path));
        };
    };
    ViewHooks& hooks = Hooks();
    hooks.IsSlideShowOpen = [this] { return slideShowOpen_; };
    hooks.PlayMusic = notePath("PlayMusic");
    hooks.StopMusic = note("StopMusic");
    hooks.RunCommand = noteNumber("RunCommand");

    AppHooks& shell = Shell() = AppHooks{};
    shell.CloseWindows = note("CloseWindows");
    shell.OpenSlideShow = note("OpenSlideShow");
    shell.OpenSlideShowAt = notePath("OpenSlideShowAt");
    shell.CloseSlideShow = note("CloseSlideShow");
    shell.FitSlideShow = note("FitSlideShow");
    shell.SetSlideShowState = noteNumber("SetSlideShowState");
    shell.FlipSlideShowView = note("FlipSlideShowView");
    shell.NextSlide = note("NextSlide");
    shell.PreviousSlide = note("PreviousSlide");
    shell.DeleteSlide = note("DeleteSlide");
    shell.RateSlide = noteNumber("RateSlide");
    shell.IsOnSlidePicture = [this](Point) { return onSlidePicture_; };
    shell.PasteIntoSlideShow = note("PasteIntoSlideShow");
    shell.IsNeighborShown = [this] { return neighborShown_; };
    shell.ShowNeighbor = notePath("ShowNeighbor");
    shell.HideNeighbor = note("HideNeighbor");
    shell.NextNeighbor = note("NextNeighbor");
    shell.PreviousNeighbor = note("PreviousNeighbor");
    shell.RateNeighbor = noteNumber("RateNeighbor");
    shell.IsEstimateShown = [this] { return estimateShown_; };
    shell.HideEstimate = [this] {
        estimateShown_ = false;
        calls_.emplace_back("HideEstimate");
    };
    shell.RatingAt = [this](Point) { return rating_; };
    shell.RateFile = [this](const std::string& path, int type) {
        calls_.push_back("RateFile " + NameOf(path) + " " + std::to_string(type));
        return true;
    };
    shell.HideFilterWindow = note("HideFilterWindow");
    shell.KeepClipboard = note("KeepClipboard");
    shell.OpenEditorAndPaste = note("OpenEditorAndPaste");
    shell.CloseEditor = note("CloseEditor");
    shell.IsEditorOpen = [this] { return editorOpen_; };
    shell.SendToEditor = noteNumber("SendToEditor");
    shell.MakeText = [this](int year, int month, int day, const std::string& content) {
        calls_.push_back("MakeText " + std::to_string(year) + "/" + std::to_string(month) + "/" +
                         std::to_string(day) + " " + content);
        return madeText_;
    };
    shell.StartDragOut = [this](Window&, const std::string& path) {
        calls_.push_back("StartDragOut " + NameOf(path));
        return dragAnswer_;
    };
    shell.ImportDropped = [this](const Event& drop) {
        calls_.push_back("ImportDropped " + std::to_string(drop.paths.size()));
        return importAnswer_;
    };
    shell.ShowSearchDialog = [this] {
        calls_.emplace_back("ShowSearchDialog");
        return searchAnswer_;
    };
    shell.Import = note("Import");
    shell.UpdateMonthInBackground = noteNumber("UpdateMonth");
    shell.RunGetter = noteNumber("RunGetter");
    shell.Rotate = noteNumber("Rotate");
    shell.TakeScreenshot = [this](bool whole) {
        calls_.emplace_back(whole ? "ShootDesktop" : "ShootWindow");
    };
    shell.ScrapSelection = noteNumber("ScrapSelection");
}

AppTest::~AppTest() {
    Settle();
    StopHeartbeat();
    OpenLog("");
    Pointer({0, 0}, false);
    Shell() = AppHooks{};
    state_.run.MainWindowVisible = 0;
    state_.run.InitialScanRunning = 1;
    state_.run.FirstStartPending = 1;
    state_.press.DragPath.clear();
}

void AppTest::OpenMainWindow(Size size) {
    state_.settings.WindowRect = {0, 0, size.width, size.height};
    window_ = CreateMainWindow();
    ASSERT_TRUE(window_);
    SetMainWindow(window_.get());
    CreateButtons();
    window_->Show();
    SetButtonStates();
    TheApplication()->ProcessEvents(10);
    ASSERT_TRUE(Settle());
    calls_.clear();
}

void AppTest::Pointer(Point screen, bool leftButton) {
    QWindow elsewhere;
    const QPointF at(screen.x, screen.y);
    QMouseEvent move(QEvent::MouseMove, at, at, Qt::NoButton, leftButton ? Qt::LeftButton : Qt::NoButton,
                     Qt::NoModifier);
    QCoreApplication::sendEvent(&elsewhere, &move);
}

std::vector<std::string> AppTest::Calls() { return std::exchange(calls_, {}); }

void AppTest::StartLog() { ASSERT_TRUE(OpenLog(files::Join(root_, "log"))); }

std::string AppTest::Logged() const { return files::ReadWholeFile(files::Join(root_, "log")).value_or(""); }

}  // namespace kalmora
