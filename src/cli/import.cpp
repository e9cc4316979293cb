// kalmora import: files and folders into the days that they belong to.
#include "store/import.h"

#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdio>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "app/app_state.h"
#include "app/import_dialog.h"
#include "cli/iso_date.h"
#include "cli/photo_verb.h"
#include "cli/progress_bar.h"
#include "cli/verbs.h"
#include "store/data_folder.h"
#include "store/index_progress.h"
#include "store/index_stop.h"
#include "store/index_tree.h"
#include "store/month_index.h"

namespace kalmora {

namespace {

using Json = nlohmann::ordered_json;

struct ImportVerb {
    std::vector<std::string> sources;
    bool move = false;
    bool shortcut = false;
    bool number = false;
    bool folderName = false;
    bool json = false;
    std::string note;
    int dayEnd = 0;
    const CLI::Option* noteOption = nullptr;
    const CLI::Option* dayEndOption = nullptr;
};

// One record a file, printed as it comes: a card may hold more files than memory should.
class ImportPrinter {
public:
    explicit ImportPrinter(bool asJson) : asJson_(asJson) {
        if (asJson_) std::fputs("[", stdout);
    }
    ~ImportPrinter() {
        if (asJson_) std::fputs(isFirst_ ? "]\n" : "\n]\n", stdout);
        std::fflush(stdout);
    }
    ImportPrinter(const ImportPrinter&) = delete;
    ImportPrinter& operator=(const ImportPrinter&) = delete;

    void Print(const ImportedFile& file) {
        if (asJson_)
            PrintJson(file);
        else
            PrintLine(file);
    }

private:
    void PrintJson(const ImportedFile& file) {
        char day[48] = "";
        if (file.day.day > 0)
            std::snprintf(day, sizeof day, "%04d-%02d-%02d", file.day.year, file.day.month, file.day.day);
        Json record{{"file", file.source}, {"result", NameOf(file.result)}};
        record["target"] = file.target.empty() ? Json() : Json(file.target);
        record["date"] = file.taken.year == 0 ? Json() : Json(IsoDate(file.taken));
        record["day"] = *day ? Json(day) : Json();
        if (file.sourceStays) record["sourceStays"] = true;
        if (file.note) record["note"] = NameOf(*file.note);
        std::printf("%s%s", isFirst_ ? "\n" : ",\n",
                    record.dump(-1, ' ', false, Json::error_handler_t::replace).c_str());
        isFirst_ = false;
    }
    static void PrintLine(const ImportedFile& file) {
        if (IsFailure(file.result)) {
            std::fprintf(stderr, "kalmora import: %s: %s\n", file.source.c_str(), NameOf(file.result));
            return;
        }
        std::printf("%s: %s%s%s%s\n", file.source.c_str(), NameOf(file.result),
                    file.target.empty() ? "" : " to ", file.target.c_str(),
                    file.sourceStays ? ", the original stays" : "");
        if (file.note && !IsDone(*file.note))
            std::fprintf(stderr, "kalmora import: %s: no note: %s\n", file.target.c_str(),
                         NameOf(*file.note));
    }

    const bool asJson_;
    bool isFirst_ = true;
};

void OnInterrupt(int) { InterruptIndexing(); }

// Nobody comes by later to do it, as the window's idle refresh does. False when an index was not written.
bool UpdateIndex(const ImportSummary& summary, const std::string& root) {
    std::vector<CalendarDate> months;
    for (const auto& [year, month] : summary.months) months.push_back({year, month, 0});
    return RunOverMonths(months, [&root](const CalendarDate& date, IndexBatch& batch) {
        MonthIndex month(date.year, date.month, root);
        return month.Load(0, batch) && month.Update(0, batch);
    });
}

// The exit status.
int Tell(const ImportSummary& summary) {
    const char* const refused = summary.refused.c_str();
    switch (summary.end) {
        case ImportEnd::NoSource:
            std::fprintf(stderr, "kalmora import: %s: no such file or folder; nothing was done\n", refused);
            return 1;
        case ImportEnd::MeetsTarget:
            std::fprintf(stderr,
                         "kalmora import: %s: holds the data folder or lies in it; nothing was done\n",
                         refused);
            return 1;
        case ImportEnd::NoSpace:
            std::fprintf(stderr,
                         "kalmora import: %llu bytes are needed and %llu are free; nothing was done\n",
                         static_cast<unsigned long long>(summary.neededBytes),
                         static_cast<unsigned long long>(summary.freeBytes));
            return 1;
        case ImportEnd::Interrupted:
            std::fprintf(stderr, "kalmora import: interrupted after %d of %d files; run it again to go on\n",
                         summary.done, summary.total);
            return 1;
        case ImportEnd::Unreadable:  // it has a line of its own
        case ImportEnd::Finished:
            break;
    }
    return summary.failures == 0 ? 0 : 1;
}

int RunImportVerb(const StartOptions& start, const ImportVerb& verb) {
    PrepareToWrite(start);
    ImportOptions options;
    for (const std::string& source : verb.sources) {
        // The name of a variable that is not set would be the current folder.
        if (source.empty()) {
            std::fputs("kalmora import: a source has an empty name; nothing was done\n", stderr);
            return 2;
        }
        options.sources.push_back(AbsoluteFilePath(source));
    }
    options.root = MainRoot();
    options.source = verb.shortcut ? ImportOptions::Source::GetsShortcut
                     : verb.move   ? ImportOptions::Source::Goes
                                   : ImportOptions::Source::Stays;
    options.naming = verb.number ? Naming::Number : Naming::Keep;
    options.addFolderName = verb.folderName;
    options.addComment = verb.noteOption->count() > 0;
    options.comment = verb.note;
    options.dayEnd = verb.dayEndOption->count() > 0 ? ParseDayEnd(std::to_string(verb.dayEnd), 0)
                                                    : State().DayEndTimeForScrap;
    // The file at hand is finished, and what has come in is safe; then the import ends.
    std::signal(SIGINT, OnInterrupt);
    std::signal(SIGTERM, OnInterrupt);
    ImportSummary summary;
    bool isIndexed = true;
    {
        ProgressBar bar;
        ImportPrinter printer(verb.json);
        OnProgress = [&bar](double ratio, const std::string& text) { bar.Show(ratio, text); };
        options.onFile = [&printer](const ImportedFile& file) { printer.Print(file); };
        summary = RunImport(options);
        OnProgress = nullptr;
        if (!IsIndexingInterrupted()) isIndexed = UpdateIndex(summary, options.root);
    }
    const int status = Tell(summary);
    if (isIndexed) return status;
    std::fprintf(stderr, "kalmora import: some index files could not be written\n");
    return 1;
}

}  // namespace

void AddImportVerb(CLI::App& app, VerbRun& run) {
    constexpr int kLastHour = 47;
    auto options = std::make_shared<ImportVerb>();
    CLI::App* verb = app.add_subcommand("import", "Take files and folders into the days that they belong to");
    CLI::Option* move = verb->add_flag("--move", options->move, "Remove each original once its copy is safe");
    verb->add_flag("--shortcut", options->shortcut, "Make shortcuts to the originals instead of copies")
        ->excludes(move);
    verb->add_flag("--number", options->number, "Name the files 0001.jpg, 0002.jpg and so on");
    options->noteOption =
        verb->add_option("--note", options->note, "Words for the comment of each photo")->type_name("TEXT");
    verb->add_flag("--folder-name", options->folderName,
                   "Add the name of its folder to the comment of each photo");
    options->dayEndOption = verb->add_option("--day-end", options->dayEnd,
                                             "Hour at which a day ends: 26 for two in the night that follows")
                                ->check(CLI::Range(0, kLastHour));
    verb->add_flag("--json", options->json, "Print an array with an object for each file");
    verb->add_option("SRC", options->sources, "Folders, such as a camera card's DCIM, and single files")
        ->required();
    verb->callback([options, &run] {
        run = [options](const StartOptions& start) { return RunImportVerb(start, *options); };
    });
}

}  // namespace kalmora
