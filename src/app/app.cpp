#include "app/app.h"

#include <cstdio>
#include <cstdlib>

#include "app/connect_index.h"
#include "app/dispatch.h"
#include "app/environment.h"
#include "app/key_files.h"
#include "app/main_window.h"
#include "app/run_beside.h"
#include "app/search_dialog.h"
#include "base/commands.h"
#include "base/log.h"
#include "index/update.h"
#include "input/accelerators.h"
#include "input/navigation_log.h"
#include "platform/clock.h"
#include "platform/end_signals.h"
#include "platform/memory.h"
#include "platform/window.h"
#include "rewrite/safe_rewrite.h"
#include "rewrite/temp_folder.h"
#include "state/app_state.h"
#include "state/view_settings.h"
#include "store/data_folder.h"
#include "store/extension_table.h"
#include "store/settings_file.h"
#include "views/bar/button_bar.h"
#include "views/control/calendar_views.h"
#include "views/load/object_loader.h"
#include "views/paint/background.h"
#include "views/paint/paint_view.h"

namespace kalmora {

namespace {

constexpr char kFirstRunQuestion[] =
    "ディスクに保存している写真やテキストなどを\nKalmoraのデータディレクトリに読み込みますか？\n"
    "データディレクトリ = ";

}  // namespace

App::App(const StartOptions& options)
    : options_(options),
      end_(std::make_shared<ProgramEnd>(ProgramEnd::Steps{[this] { SaveAll(); }, [] { std::_Exit(0); }})) {}

App::~App() { WatchEndSignals({}); }

int App::Run() {
    if (!StartPlatform()) {
        std::fputs("kalmora: no display can be reached; `kalmora shot` draws without one\n", stderr);
        return 1;
    }
    settingsExisted_ = LoadEnvironment(options_);
    IntroduceViews(*calendar_);
    ConnectIndex();
    ForgetSearch();
    PrefetchBackground(*calendar_);
    WatchEndSignals([end = end_] { end->Begin(); });
    if (!MakeMainWindow() || !MakeOtherWindows()) {
        // The heartbeat may already run: the process ends around it. Nothing is saved, the keys are not read
        // yet.
        StopDesktopWork();
        std::_Exit(0);
    }
    ShowFirstView();
    LoadKeys();
    // Inside the loop, so that an end of the session while it waits for its answer is an end like any other.
    if (!settingsExisted_) application_->Post([this] { AskToImport(); });
    Log("started in %.0f ms", UptimeMs());
    const int exitCode = application_->Run();
    // A worker inside a slow read would find what it uses taken down under it: the process ends around it.
    if (!Stop()) std::_Exit(exitCode);
    return exitCode;
}

// ---- the start

bool App::StartPlatform() {
    ReturnFreedMemory();
    PrepareFolders(options_);
    application_ = Application::Create("Kalmora", Application::Display::Desktop);
    if (!application_) return false;
    ConnectRooms();
    // A rewrite that was cut off is recovered while its copy still lies in the folder that is swept next.
    RecoverRewrites(State().settings.TempFolder);
    PrepareTempFolder(State().settings.TempFolder);
    return true;
}

bool App::MakeMainWindow() {
    window_ = CreateMainWindow([this](Window& window, const Event& event) {
        if (event.type == EventType::Destroy) {
            end_->Begin();
            StopDesktopWork();
        }
        return MainWindowProc(parts_, window, event);
    });
    if (!window_) return false;
    State().run.MainWindowVisible = 1;
    return true;
}

bool App::MakeOtherWindows() {
    if (!tray_.AddIcon(*window_)) return false;
    SetMainWindow(window_.get());
    window_->Show();
    CreateButtons();
    SetButtonStates();
    return true;
}

void App::ShowFirstView() {
    UpdateObjects(*calendar_);
    SetButtonStates();
    const std::string music = calendar_->backgrounds.CurrentMusic();
    if (State().settings.SoundMode && !music.empty()) parts_.music.Play(music);
}

void App::LoadKeys() {
    LoadKeyFiles(keys_);
    keys_.RegisterHotKeys();
    tray_.SetTip(keys_.MissingHotKeys());
    SetAccelerators(window_.get(), AcceleratorOf);
}

void App::AskToImport() {
    const MessageAnswer answer =
        ShowMessage(window_.get(), "Kalmora", kFirstRunQuestion + MainRoot(), MessageButtons::YesNo);
    if (answer == MessageAnswer::Yes) DispatchCommand(parts_, *window_, kCommandImport);
}

// ---- the stop

void App::SaveAll() const {
    const AppState& state = State();
    SaveExtensionTable(state.settings.ExtensionListPath);
    SaveKeyFiles(keys_);
    PutViewIntoSettings();
    SaveSettings(state.settings.SettingsPath);
}

bool App::AreWorkersRunning() const {
    const AppState& state = State();
    const bool scans = !state.run.FirstStartPending && state.run.InitialScanRunning;
    return scans || calendar_->AreWorkersRunning() || state.run.IndexPreloadRunning ||
           state.run.ImportRunning || CountBackgroundUpdates() > 0 || heartbeat_.IsLastBeatRunning() ||
           IsWorkBesideRunning();
}

// The one wait for the workers. True when all have left; otherwise the program ends around them, and nothing
// that they use may go before.
bool App::WaitForWorkers() {
    constexpr int kLookMs = 10, kForTheRest = 100;
    calendar_->StopLoadsSoFar();
    State().run.ObjectGate.Acquire("Last");
    while (AreWorkersRunning()) {
        if (end_->MsLeft() < kForTheRest) return false;
        SleepMs(kLookMs);
    }
    return true;
}

// False when the process has to end as it is.
bool App::Stop() {
    StopDesktopWork();
    tray_.RemoveIcon();
    const bool isSaved = end_->Save();
    keys_.UnregisterHotKeys();
    const bool haveLeft = WaitForWorkers();
    if (!isSaved || !haveLeft) return false;
    ClearDataFolders();
    DestroyButtons();
    RecoverRewrites(State().settings.TempFolder);
    SweepTempFolder(State().settings.TempFolder);
    return true;
}

// ---- what the views report and ask

void App::OnNavigation(const std::string& line) { NavigationLog("%s", line.c_str()); }

void App::RunCommand(int command) { DispatchCommand(parts_, *window_, command); }

void App::OnWholeView() {
    Log("[View] whole, %.1f ms after the last input", UptimeMs() - State().run.LastActivity);
}

}  // namespace kalmora
