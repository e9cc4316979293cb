#include "app/import_run.h"

#include <string>
#include <utility>

#include "app/connect_index.h"
#include "app/import_words.h"
#include "base/worker.h"
#include "index/update.h"
#include "platform/clock.h"
#include "platform/window.h"
#include "state/app_state.h"
#include "text/text.h"
#include "views/load/arrivals.h"
#include "views/model/calendar_store.h"
#include "views/paint/missing_folder.h"

namespace kalmora {

namespace {

void Say(const std::string& text) { ShowMessage(MainWindow(), "Kalmora", text, MessageButtons::Ok); }

// From the importing thread; nothing when the program ends meanwhile.
void SayLater(const std::string& text) {
    if (Application* const application = TheApplication())
        application->Post([text] {
            if (MainWindow()) Say(text);
        });
}

// In place of the title, until the view moves on.
void ShowInTitle(const std::string& text) {
    if (Application* const application = TheApplication())
        application->Post([text] {
            if (Window* const window = MainWindow()) window->SetTitle(text::ToDisplay(text + " - Kalmora"));
        });
}

WordsLanguage LanguageOfTheUser() {
    return State().settings.UseJapanese ? WordsLanguage::Japanese : WordsLanguage::English;
}

// Shows in the view what has arrived, and keeps what is reported to the user at the end.
class Arrivals final : public ArrivalListener {
public:
    explicit Arrivals(CalendarStore& calendar) : calendar_(calendar) {}
    void OnFile(const ImportedFile& file) override {
        if (HasArrived(file.result))
            AddToView(calendar_, file.result == ImportResult::Linked ? file.source : file.target, file.day);
        remarks.Note(file);
    }
    ImportRemarks remarks;

private:
    CalendarStore& calendar_;
};

ImportSummary ImportAndTell(CalendarStore& calendar, ImportOptions& options) {
    Arrivals arrivals(calendar);
    options.arrivals = &arrivals;
    options.context = DesktopWork();
    const ImportSummary summary = RunImport(options);
    const SystemTime today = LocalTime();
    if (summary.done > 0) StartBackgroundUpdate(today.year * 100 + today.month);
    const WordsLanguage language = LanguageOfTheUser();
    if (IsPlainSuccess(summary))
        ShowInTitle(SumInWords(summary, language));
    else
        SayLater(ImportInWords(summary, arrivals.remarks, language));
    return summary;
}

}  // namespace

ImportTurn::ImportTurn(const StopToken& stop) {
    constexpr int kLookMs = 50;
    do {
        isMine_ = !stop.IsStopped() && !State().run.ImportRunning.exchange(1);
    } while (!isMine_ && !stop.WaitFor(kLookMs));
}

ImportTurn::~ImportTurn() {
    if (isMine_) State().run.ImportRunning = 0;
}

void SayImportRuns() { Say(kImportRuns); }

bool StartImportOf(CalendarStore& calendar, ImportOptions options) {
    AppState& state = State();
    if (state.run.ImportRunning) {
        SayImportRuns();
        return false;
    }
    if (LookForDataFolder() == DataFolder::Away) {
        Say((state.settings.UseJapanese ? "データフォルダが見つからないため取り込めません\n"
                                        : "The data folder is not there: nothing can be imported\n") +
            options.root);
        return false;
    }
    options.index = ImportOptions::Index::UpToDate;
    if (state.run.ImportRunning.exchange(1)) {
        SayImportRuns();
        return false;
    }
    const auto body = [&calendar, options = std::move(options)](const StopToken&) mutable {
        ImportAndTell(calendar, options);
        State().run.ImportRunning = 0;
    };
    const bool isStarted = StartWorker("Import", Worker::Priority::Highest, body).IsStarted();
    if (!isStarted) state.run.ImportRunning = 0;
    return isStarted;
}

ImportSummary ImportHere(CalendarStore& calendar, ImportOptions options) {
    options.index = ImportOptions::Index::UpToDate;
    return ImportAndTell(calendar, options);
}

}  // namespace kalmora
