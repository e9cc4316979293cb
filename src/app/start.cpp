#include "app/start.h"

#include <cstdio>
#include <memory>

#include "app/app_hooks.h"
#include "app/app_state.h"
#include "app/connect_input.h"
#include "app/dispatch.h"
#include "app/environment.h"
#include "app/main_window.h"
#include "base/log.h"
#include "platform/clock.h"
#include "platform/window.h"
#include "store/data_folder.h"
#include "store/extension_table.h"
#include "store/settings.h"
#include "views/button_bar.h"
#include "views/calendar_store.h"
#include "views/commands.h"
#include "views/hooks.h"
#include "views/object_loader.h"
#include "views/paint_view.h"

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
    PrepareTempFolder(State().TempFolder);
    return application;
}

void ConnectViews(Window& window) {
    Hooks().RunCommand = [&window](int id) { DispatchCommand(window, id); };
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

void Stop() {
    AppState& state = State();
    SaveExtensionTable(state.ExtensionListPath);
    Shell().SaveKeys();
    ClearExtensionTable();
    SaveSettings(state.SettingsPath);
    Shell().ReleaseHotKeys();
    state.DataDirectories.clear();
    // The one wait for the workers: at most 2.2 seconds, then the program ends around them.
    state.ObjectGate.Acquire("Last");
    ++Calendar().loadNumber;
    Hooks().StopMusic();
    FreeObjects();
    DestroyButtons();
    Shell().ReleaseHotKeys();
    SweepTempFolder(state.TempFolder);
}

}  // namespace

int RunDesktop(const StartOptions& options) {
    const std::unique_ptr<Application> application = StartPlatform(options);
    if (!application) {
        std::fputs("kalmora: no display can be reached; `kalmora shot` draws without one\n", stderr);
        return 1;
    }
    const bool settingsExisted = LoadEnvironment(options);
    PrefetchBackground();
    const std::unique_ptr<Window> window = CreateMainWindow();
    if (!window) return 0;
    AppState& state = State();
    state.MainWindowVisible = 1;
    ConnectViews(*window);
    ConnectInput();
    SetMainWindow(window.get());
    CreateButtons();
    window->Show();
    SetButtonStates();
    UpdateObjects();
    SetButtonStates();
    if (const std::string music = Calendar().backgrounds.CurrentMusic(); state.SoundMode && !music.empty())
        Hooks().PlayMusic(music);
    Shell().LoadKeys();
    if (!settingsExisted) AskToImport(*window);
    Log("started in %.0f ms", UptimeMs());
    const int exitCode = application->Run();
    Stop();
    return exitCode;
}

}  // namespace kalmora
