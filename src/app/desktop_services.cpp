#include "app/desktop_services.h"

#include <atomic>
#include <memory>

#include "app/drop_files.h"
#include "app/import_dialog.h"
#include "app/import_run.h"
#include "app/run_beside.h"
#include "app/search_dialog.h"
#include "index/index_manager.h"
#include "index/update.h"
#include "state/app_state.h"
#include "views/load/view_photos.h"
#include "views/model/calendar_store.h"

namespace kalmora {

void DesktopImporter::AskAndImport() {
    if (State().run.ImportRunning) return SayImportRuns();
    if (ShowImportDialog(MainWindow())) StartImportOf(calendar_, ImportOptionsOfSettings());
}

bool DesktopImporter::ImportDropped(const DropEvent& drop) {
    const bool copies = drop.ctrl || !drop.mayMove;
    const DropOutcome outcome = DropFiles(calendar_, {drop.paths, drop.point, copies}, DropPlace::MainWindow);
    if (drop.result) *drop.result = outcome.result;
    return outcome.viewChanged;
}

bool DesktopSearchQuestion::Ask() { return ShowSearchDialog(calendar_, MainWindow()); }

void DesktopIndexUpdates::Start(int yearTimes100PlusMonth) { StartBackgroundUpdate(yearTimes100PlusMonth); }

double DesktopIndexUpdates::SecondsSinceUpdate(int year, int month) {
    return MainIndex().SecondsSinceUpdate(year, month);
}

void DesktopIndexUpdates::Preload() { PreloadIndexes(); }

bool DesktopPhotoRater::Rate(const std::string& path, EstimateType type) {
    const auto isRated = std::make_shared<std::atomic<bool>>(false);
    RunBeside("Rate", [=, &calendar = calendar_] { *isRated = RateInView(calendar, path, type); });
    return isRated->load();
}

}  // namespace kalmora
