#include "app/start.h"

#include <cstdio>
#include <cstdlib>
#include <memory>

#include "app/app_hooks.h"
#include "app/connect_import.h"
#include "app/connect_index.h"
#include "app/connect_input.h"
#include "app/connect_photos.h"
#include "app/connect_search.h"
#include "app/dispatch.h"
#include "app/environment.h"
#include "app/heartbeat.h"
#include "app/main_window.h"
#include "app/program_end.h"
#include "app/run_beside.h"
#include "app/tray_menu.h"
#include "base/commands.h"
#include "base/log.h"
#include "index/index_stop.h"
#include "index/update.h"
#include "platform/clock.h"
#include "platform/end_signals.h"
#include "platform/window.h"
#include "rewrite/safe_rewrite.h"
#include "rewrite/temp_folder.h"
#include "state/app_state.h"
#include "store/data_folder.h"
#include "store/date_tree.h"
#include "store/extension_table.h"
#include "store/settings_file.h"
#include "views/bar/button_bar.h"
#include "views/hooks.h"
#include "views/load/object_loader.h"
#include "views/model/calendar_store.h"
#include "views/paint/background.h"
#include "views/paint/paint_on_window.h"
#include "views/paint/paint_view.h"

namespace kalmora {

namespace {

constexpr char kFirstRunQuestion[] =
    "ディスクに保存している写真やテキストなどを\nKalmoraのデータディレクトリに読み込みますか？\n"
    "データディレクトリ = ";

// The platform, then what lies on the disk. Null when there is no display.
std::unique_ptr<Application> StartPlatform(const StartOptions& options) {
    PrepareFolders(options);
    std::unique_ptr<Application> application = Application::Create("Kalmora", Application::Display::Desktop);
    if (!application) return nullptr;
    ConnectRooms();
    // A rewrite that was cut off is settled while its copy still lies in the folder that is swept next.
    SettleRewrites(State().settings.TempFolder);
    PrepareTempFolder(State().settings.TempFolder);
    return application;
}

void ConnectViews(Window& window) {
    Hooks().RunCommand = [&window](int id) { DispatchCommand(window, id); };
    Hooks().OnWholeView = [] {
        Log("[View] whole, %.1f ms after the last input", UptimeMs() - State().run.LastActivity);
    };
}

void AskToImport(Window& window) {
    const MessageAnswer answer =
        ShowMessage(&window, "Kalmora", kFirstRunQuestion + MainRoot(), MessageButtons::YesNo);
    if (answer == MessageAnswer::Yes) DispatchCommand(window, kCommandImport);
}

void FreeObjects() {
    CalendarStore& calendar = Calendar();
    for (YearView& year : calendar.years) year.Clear();
    calendar.backgrounds.Clear();
    for (DayViewer& day : calendar.dayViewers) day.Clear();
    for (AllViewer& all : calendar.allViewers) all.Clear();
}

void SaveAll() {
    const AppState& state = State();
    SaveExtensionTable(state.settings.ExtensionListPath);
    Shell().SaveKeys();
    SaveSettings(state.settings.SettingsPath);
}

bool AreWorkersRunning() {
    const AppState& state = State();
    const bool scans = !state.run.FirstStartPending && state.run.InitialScanRunning;
    return scans || Calendar().IsObjectLoaderRunning() || Calendar().IsPaintThreadRunning() ||
           state.run.IndexPreloadRunning || state.run.ImportRunning || CountBackgroundUpdates() > 0 ||
           !AreCellRedrawsDone() || IsLastBeatRunning() || IsWorkBesideRunning();
}

// Each leaves at its next file; the one that it has in hand is finished with all that is known of it.
void AskWorkersToLeave() {
    InterruptIndexing();
    TheDateTree().RequestStop();
}

// The one wait for the workers. True when all have left; otherwise the program ends around them, and nothing
// that they use may go before.
bool WaitForWorkers(const ProgramEnd& end) {
    constexpr int kLookMs = 10, kForTheRest = 100;
    State().run.ObjectGate.Acquire("Last");
    ++Calendar().loadNumber;
    while (AreWorkersRunning()) {
        if (end.MsLeft() < kForTheRest) return false;
        SleepMs(kLookMs);
    }
    return true;
}

// False when the process has to end as it stands.
bool Stop(ProgramEnd& end) {
    AppState& state = State();
    AskWorkersToLeave();
    RemoveTrayIcon();
    const bool isSaved = end.Save();
    Shell().ReleaseHotKeys();
    const bool haveLeft = WaitForWorkers(end);
    Shell().CloseMusicPlayer();
    if (!isSaved || !haveLeft) return false;
    ClearDataFolders();
    FreeObjects();
    DestroyButtons();
    Shell().ReleaseHotKeys();
    SettleRewrites(state.settings.TempFolder);
    SweepTempFolder(state.settings.TempFolder);
    return true;
}

// What the shell and the rooms above it put on the screen, in the order in which it is made.
bool MakeWindows(Window& window) {
    Shell().MakeFrameCapture(window);
    if (!AddTrayIcon(window)) return false;
    Shell().MakeEstimateWindow(window);
    Shell().MakeScrapAgent(window);
    SetMainWindow(&window);
    window.Show();
    Shell().MakeMusicPlayer(window);
    Shell().MakeSlideShow(window);
    Shell().MakeNeighborWindow(window);
    Shell().MakeFilterWindow(window);
    CreateButtons();
    SetButtonStates();
    return true;
}

void PlayFirstMusic() {
    const std::string music = Calendar().backgrounds.CurrentMusic();
    if (State().settings.SoundMode && !music.empty()) Hooks().PlayMusic(music);
}

// Gives the exit code.
int Refuse(const Obstacle& obstacle) {
    std::fprintf(stderr, "kalmora: %s\n", obstacle.words.c_str());
    if (obstacle.kind == Obstacle::Kind::Option) return 1;
    // Who starts it from a menu does not see standard error.
    const auto application = Application::Create("Kalmora", Application::Display::Desktop);
    if (application) ShowMessage(nullptr, "Kalmora", obstacle.words, MessageButtons::Ok);
    return 1;
}

}  // namespace

int RunDesktop(const StartOptions& options) {
    const Obstacle obstacle = FindObstacle(options);
    if (obstacle.kind != Obstacle::Kind::None) return Refuse(obstacle);
    const auto end = std::make_shared<ProgramEnd>(ProgramEnd::Steps{SaveAll, [] { std::_Exit(0); }});
    const std::unique_ptr<Application> application = StartPlatform(options);
    if (!application) {
        std::fputs("kalmora: no display can be reached; `kalmora shot` draws without one\n", stderr);
        return 1;
    }
    const bool settingsExisted = LoadEnvironment(options);
    ConnectIndex();
    ConnectSearch();
    ConnectImport();
    PrefetchBackground();
    WatchEndSignals([end] { end->Begin(); });
    const std::unique_ptr<Window> window = CreateMainWindow([&end](Window& closed, const Event& event) {
        if (event.type == EventType::Destroy) {
            end->Begin();
            AskWorkersToLeave();
        }
        return MainWindowProc(closed, event);
    });
    if (!window) return 0;
    AppState& state = State();
    state.run.MainWindowVisible = 1;
    ConnectViews(*window);
    ConnectInput();
    ConnectPhotos();
    if (!MakeWindows(*window)) return 0;
    UpdateObjects();
    SetButtonStates();
    PlayFirstMusic();
    Shell().LoadKeys();
    // Inside the loop, so that an end of the session while it waits for its answer is an end like any other.
    if (!settingsExisted) application->Post([&window] { AskToImport(*window); });
    Log("started in %.0f ms", UptimeMs());
    const int exitCode = application->Run();
    // A worker inside a slow read would find what it uses taken down under it: the process ends around it.
    if (!Stop(*end)) std::_Exit(exitCode);
    WatchEndSignals({});
    return exitCode;
}

}  // namespace kalmora
