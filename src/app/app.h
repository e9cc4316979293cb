// App owns all that lives as long as the program with its window, in the order in which it is made, and is
// the one place where its parts are introduced to each other.
#pragma once

#include <memory>

#include "app/app_parts.h"
#include "app/desktop_keyboard.h"
#include "app/desktop_services.h"
#include "app/heartbeat.h"
#include "app/program_end.h"
#include "app/rooms_to_come.h"
#include "app/start_options.h"
#include "app/tray_menu.h"
#include "input/key_config.h"
#include "views/model/calendar_store.h"
#include "views/model/view_partners.h"

namespace kalmora {

// Main thread, one for the process.
class App : NavigationListener, CommandRunner, ViewObserver {
public:
    explicit App(const StartOptions& options);
    ~App() override;
    App(const App&) = delete;
    App& operator=(const App&) = delete;

    // Runs until the window is closed; gives the exit code of the process.
    int Run();

private:
    // ---- the start, step by step
    bool StartPlatform();  // false without a display
    bool MakeMainWindow();
    bool MakeOtherWindows();
    void ShowFirstView();
    void LoadKeys();
    void AskToImport();

    // ---- the stop
    void SaveAll() const;
    bool AreWorkersRunning() const;
    bool WaitForWorkers();
    bool Stop();

    // ---- what the views report and ask
    void OnNavigation(const std::string& line) override;
    void RunCommand(int command) override;
    void OnFirstPaint() override {}
    void OnWholeView() override;

    const StartOptions options_;
    std::shared_ptr<ProgramEnd> end_;  // also the watch for signals has it
    std::unique_ptr<Application> application_;
    bool settingsExisted_ = false;

    RoomsToCome rooms_;
    const std::unique_ptr<CalendarStore> calendar_ = std::make_unique<CalendarStore>(
        ViewPartners{rooms_.slideShow, rooms_.music, *this, *this, rooms_.filter, *this});
    DesktopImporter importer_{*calendar_};
    DesktopSearchQuestion searchQuestion_{*calendar_};
    DesktopIndexUpdates indexUpdates_;
    DesktopPhotoRater photoRater_{*calendar_};
    DesktopKeyboard keyboard_;
    DesktopWindows windows_{rooms_.editor, rooms_.slideShow, rooms_.neighbor};
    KeyConfig keys_{windows_, keyboard_};
    Tray tray_;
    Heartbeat heartbeat_{*calendar_, rooms_.slideShow, rooms_.neighbor, rooms_.petals, indexUpdates_};
    const AppParts parts_{*calendar_,
                          rooms_.slideShow,
                          rooms_.neighbor,
                          rooms_.music,
                          rooms_.filter,
                          rooms_.petals,
                          rooms_.editor,
                          rooms_.scraps,
                          rooms_.dragSource,
                          rooms_.screenshots,
                          rooms_.getters,
                          importer_,
                          searchQuestion_,
                          indexUpdates_,
                          photoRater_,
                          keys_,
                          tray_,
                          heartbeat_};
    std::unique_ptr<Window> window_;
};

}  // namespace kalmora
