#include "app/import_run.h"

#include <string>
#include <utility>

#include "app/app_hooks.h"
#include "app/app_state.h"
#include "platform/clock.h"
#include "platform/thread.h"
#include "platform/window.h"
#include "store/update.h"
#include "views/arrivals.h"
#include "views/calendar_store.h"

namespace kalmora {

namespace {

void Say(const std::string& text) { ShowMessage(MainWindow(), "Kalmora", text, MessageButtons::Ok); }

// From the importing thread; nothing when the program ends meanwhile.
void SayLater(const std::string& text) {
    if (Application* const application = TheApplication()) application->Post([text] { Say(text); });
}

std::string InTheUsersLanguage(const char* japanese, const char* english) {
    return State().UseJapanese ? japanese : english;
}

// What the user is told at the end; empty when there is nothing.
std::string WordsOf(const ImportSummary& summary) {
    switch (summary.end) {
        case ImportEnd::NoSpace:
            return InTheUsersLanguage("ディスクの空き容量が足りないため取り込めません",
                                      "There is not enough room on the disk for this import");
        case ImportEnd::NoSource:
            return InTheUsersLanguage("取り込み元が見つかりません", "There is nothing to import from") +
                   ("\n" + summary.refused);
        case ImportEnd::MeetsTarget:
            return InTheUsersLanguage("データディレクトリを含むフォルダやその中のフォルダは取り込めません",
                                      "A folder that holds the data folder or lies in it is not imported") +
                   ("\n" + summary.refused);
        case ImportEnd::Unreadable:
            return InTheUsersLanguage("フォルダを読み込めません", "A folder cannot be read") +
                   ("\n" + summary.refused);
        case ImportEnd::Interrupted:
        case ImportEnd::Finished:
            break;
    }
    return {};
}

void ShowArrived(const ImportedFile& file) {
    if (HasArrived(file.result))
        AddToView(file.result == ImportResult::Linked ? file.source : file.target, file.day);
}

void ImportThread(const ImportOptions& options) {
    const ImportSummary summary = RunImport(options);
    const SystemTime today = LocalTime();
    if (summary.done > 0) StartBackgroundUpdate(today.year * 100 + today.month);
    if (const std::string words = WordsOf(summary); !words.empty()) SayLater(words);
}

}  // namespace

void SayImportRuns() {
    Say(InTheUsersLanguage("取り込み中のため新たな取り込みを行えません",
                           "An import is running; another one has to wait for its end"));
}

bool StartImportOf(ImportOptions options) {
    AppState& state = State();
    if (state.ImportRunning) {
        SayImportRuns();
        return false;
    }
    options.onFile = ShowArrived;
    Thread thread;
    state.ImportRunning = 1;
    const bool started = thread.StartSuspended("Import", [options = std::move(options)] {
        ImportThread(options);
        State().ImportRunning = 0;
    });
    if (!started) {
        state.ImportRunning = 0;
        return false;
    }
    thread.SetPriority(Thread::Priority::Highest);
    thread.Resume();
    return true;
}

}  // namespace kalmora
