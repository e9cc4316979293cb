#include "app/connect_import.h"

#include <string>
#include <utility>

#include "app/app_hooks.h"
#include "app/app_state.h"
#include "app/drop_files.h"
#include "app/import_dialog.h"
#include "platform/clock.h"
#include "platform/thread.h"
#include "platform/window.h"
#include "store/import.h"
#include "store/update.h"
#include "views/arrivals.h"
#include "views/calendar_store.h"

namespace kalmora {

namespace {

void Say(const char* japanese, const char* english) {
    ShowMessage(MainWindow(), "Kalmora", State().UseJapanese ? japanese : english, MessageButtons::Ok);
}

// From the importing thread; nothing when the program ends meanwhile.
void SayLater(const char* japanese, const char* english) {
    if (Application* const application = TheApplication())
        application->Post([japanese, english] { Say(japanese, english); });
}

void ShowArrived(const ImportedFile& file) {
    if (HasArrived(file.result))
        AddToView(file.result == ImportResult::Linked ? file.source : file.target, file.day);
}

void ImportThread(const ImportOptions& options) {
    const ImportSummary summary = RunImport(options);
    const SystemTime today = LocalTime();
    if (summary.done > 0) StartBackgroundUpdate(today.year * 100 + today.month);
    if (summary.end == ImportEnd::NoSpace)
        SayLater("ディスクの空き容量が足りないため取り込めません",
                 "There is not enough room on the disk for this import");
}

void StartImport() {
    AppState& state = State();
    if (state.ImportRunning)
        return Say("取り込み中のため新たな取り込みを行えません",
                   "An import is running; another one has to wait for its end");
    if (!ShowImportDialog(MainWindow())) return;
    ImportOptions options = ImportOptionsOfSettings();
    options.onFile = ShowArrived;
    Thread thread;
    state.ImportRunning = 1;
    const bool started = thread.StartSuspended("Import", [options = std::move(options)] {
        ImportThread(options);
        State().ImportRunning = 0;
    });
    if (!started) {
        state.ImportRunning = 0;
        return;
    }
    thread.SetPriority(Thread::Priority::Highest);
    thread.Resume();
}

}  // namespace

void ConnectImport() {
    Shell().Import = StartImport;
    Shell().ImportDropped = [](const Event& event) {
        return DropFiles({event.paths, event.point, event.ctrl}, DropPlace::MainWindow);
    };
}

}  // namespace kalmora
