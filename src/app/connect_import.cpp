#include "app/connect_import.h"

#include "app/app_hooks.h"
#include "app/drop_files.h"
#include "app/import_dialog.h"
#include "app/import_run.h"
#include "state/app_state.h"
#include "views/model/calendar_store.h"

namespace kalmora {

namespace {

void StartImport() {
    if (State().run.ImportRunning) return SayImportRuns();
    if (ShowImportDialog(MainWindow())) StartImportOf(ImportOptionsOfSettings());
}

}  // namespace

void ConnectImport() {
    Shell().Import = StartImport;
    Shell().ImportDropped = [](const Event& event) {
        const DropEvent& drop = AsDrop(event);
        const bool copies = drop.ctrl || !drop.mayMove;
        const DropOutcome outcome = DropFiles({drop.paths, drop.point, copies}, DropPlace::MainWindow);
        if (drop.result) *drop.result = outcome.result;
        return outcome.viewChanged;
    };
}

}  // namespace kalmora
