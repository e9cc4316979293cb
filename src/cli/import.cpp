// kalmora import: files and folders into the days that they belong to.
#include "import/import.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "app/day_end.h"
#include "cli/iso_date.h"
#include "cli/photo_verb.h"
#include "cli/progress_bar.h"
#include "cli/shown_name.h"
#include "cli/stop_on_interrupt.h"
#include "cli/verbs.h"
#include "platform/files.h"
#include "state/app_state.h"
#include "store/data_folder.h"

namespace kalmora {

namespace {

using Json = nlohmann::ordered_json;

struct ImportVerb {
    std::vector<std::string> sources;
    bool move = false;
    bool shortcut = false;
    bool number = false;
    bool folderName = false;
    bool dryRun = false;
    bool json = false;
    std::string compare = "date";
    std::string note;
    int dayEnd = 0;
    const CLI::Option* noteOption = nullptr;
    const CLI::Option* dayEndOption = nullptr;
};

// What was done with a file, in the words of a line.
std::string WordsOf(const ImportedFile& file, ImportOptions::Run run) {
    const std::string target = file.target.empty() ? "" : " to " + ShownOnOutput(file.target);
    if (run == ImportOptions::Run::Rehearsal && HasArrived(file.result))
        return std::string("would be ") + NameOf(file.result) + target;
    if (file.result == ImportResult::Differs)
        return "differs from " + ShownOnOutput(file.existing) + ", left where it is";
    return NameOf(file.result) + target;
}

// One record a file, printed as it comes: a card may hold more files than memory should. The sum of them all
// is the last.
class ImportPrinter final : public ArrivalListener {
public:
    ImportPrinter(bool asJson, ImportOptions::Run run) : asJson_(asJson), run_(run) {
        if (asJson_) std::fputs("[", stdout);
    }
    ~ImportPrinter() override {
        if (asJson_) std::fputs(isFirst_ ? "]\n" : "\n]\n", stdout);
        std::fflush(stdout);
    }
    ImportPrinter(const ImportPrinter&) = delete;
    ImportPrinter& operator=(const ImportPrinter&) = delete;

    void OnFile(const ImportedFile& file) override {
        if (asJson_)
            PrintJson(file);
        else
            PrintLine(file);
    }
    void PrintSum(const ImportSummary& summary) {
        if (asJson_) {
            Json record{{"file", nullptr}, {"result", "summary"}};
            record["taken"] = summary.taken;
            record["passedOver"] = summary.passedOver;
            record["differing"] = summary.differing;
            record["failed"] = summary.failures;
            record["bytes"] = summary.bytes;
            return PrintRecord(record);
        }
        std::printf("%d %s (%llu bytes), %d passed over, %d differing, %d failed\n", summary.taken,
                    run_ == ImportOptions::Run::Rehearsal ? "to be taken" : "taken",
                    static_cast<unsigned long long>(summary.bytes), summary.passedOver, summary.differing,
                    summary.failures);
    }

private:
    void PrintRecord(Json& record) {
        if (run_ == ImportOptions::Run::Rehearsal) record["dryRun"] = true;
        std::printf("%s%s", isFirst_ ? "\n" : ",\n",
                    record.dump(-1, ' ', false, Json::error_handler_t::replace).c_str());
        isFirst_ = false;
    }
    void PrintJson(const ImportedFile& file) {
        char day[48] = "";
        if (file.day.day > 0)
            std::snprintf(day, sizeof day, "%04d-%02d-%02d", file.day.year, file.day.month, file.day.day);
        Json record{{"file", file.source}, {"result", NameOf(file.result)}};
        record["target"] = file.target.empty() ? Json() : Json(file.target);
        record["date"] = file.taken.year == 0 ? Json() : Json(IsoDate(file.taken));
        record["day"] = *day ? Json(day) : Json();
        if (!file.existing.empty()) record["standing"] = file.existing;
        if (file.result == ImportResult::Differs)
            record["message"] = "differs from " + file.existing + ", left where it is";
        if (file.isFolder) record["isFolder"] = true;
        if (file.sourceStays) record["sourceStays"] = true;
        if (file.commentResult) record["note"] = NameOf(*file.commentResult);
        PrintRecord(record);
    }
    void PrintLine(const ImportedFile& file) const {
        if (IsFailure(file.result)) {
            std::fprintf(stderr, "kalmora import: %s: %s\n", ShownOnErrors(file.source).c_str(),
                         NameOf(file.result));
            return;
        }
        std::printf("%s: %s%s\n", ShownOnOutput(file.source).c_str(), WordsOf(file, run_).c_str(),
                    file.sourceStays && HasArrived(file.result) ? ", the original stays" : "");
        if (file.commentResult && !IsDone(*file.commentResult))
            std::fprintf(stderr, "kalmora import: %s: no note: %s\n", ShownOnErrors(file.target).c_str(),
                         NameOf(*file.commentResult));
    }

    const bool asJson_;
    const ImportOptions::Run run_;
    bool isFirst_ = true;
};

// The exit status.
int Report(const ImportSummary& summary) {
    const std::string shown = ShownOnErrors(summary.refused);
    const char* const refused = shown.c_str();
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
    if (summary.wordsPending > 0)
        std::fprintf(stderr, "kalmora import: %d photos of earlier imports still lack their notes\n",
                     summary.wordsPending);
    if (!summary.isIndexed)
        std::fputs("kalmora import: some folders could not be read or index files could not be written\n",
                   stderr);
    return summary.failures == 0 && summary.isIndexed ? 0 : 1;
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
    options.sameBy = verb.compare == "content" ? SameBy::Content : SameBy::DateOrSize;
    options.run = verb.dryRun ? ImportOptions::Run::Rehearsal : ImportOptions::Run::ForReal;
    options.index = ImportOptions::Index::UpToDate;
    options.addFolderName = verb.folderName;
    options.addComment = verb.noteOption->count() > 0;
    options.comment = verb.note;
    options.dayEnd = verb.dayEndOption->count() > 0 ? ParseDayEnd(std::to_string(verb.dayEnd), 0)
                                                    : State().settings.DayEndTimeForScrap;
    if (!files::IsFolder(options.root)) {
        std::fprintf(stderr, "kalmora import: %s: no such folder; nothing was done\n", options.root.c_str());
        return 1;
    }
    // The current file is finished, and what was imported is safe; then the import ends.
    const StopToken stop = StopOnInterrupt();
    ImportSummary summary;
    {
        ProgressBar bar;
        ImportPrinter printer(verb.json, options.run);
        options.context = {stop, &bar};
        options.arrivals = &printer;
        summary = RunImport(options);
        const bool isRefused = summary.end == ImportEnd::NoSource || summary.end == ImportEnd::MeetsTarget ||
                               summary.end == ImportEnd::NoSpace;
        if (!isRefused) printer.PrintSum(summary);
    }
    return Report(summary);
}

}  // namespace

void AddImportVerb(CLI::App& app, VerbRun& run) {
    constexpr int kLastHour = 47;
    auto options = std::make_shared<ImportVerb>();
    CLI::App* verb = app.add_subcommand("import", "Take files and folders into the days that they belong to");
    CLI::Option* move = verb->add_flag("--move", options->move, "Remove each original once its copy is safe");
    CLI::Option* shortcut =
        verb->add_flag("--shortcut", options->shortcut,
                       "Make shortcuts to the originals instead of copies; they take no words")
            ->excludes(move);
    verb->add_flag("--number", options->number, "Name the files 0001.jpg, 0002.jpg and so on");
    options->noteOption = verb->add_option("--note", options->note, "Words for the comment of each photo")
                              ->type_name("TEXT")
                              ->excludes(shortcut);
    verb->add_flag("--folder-name", options->folderName,
                   "Add the name of its folder to the comment of each photo")
        ->excludes(shortcut);
    options->dayEndOption = verb->add_option("--day-end", options->dayEnd,
                                             "Hour at which a day ends: 26 for two in the night that follows")
                                ->check(CLI::Range(0, kLastHour));
    verb->add_option(
            "--compare", options->compare,
            "What makes a file of a name the same: the second or else the size (date), or every byte")
        ->type_name("date|content")
        ->check(CLI::IsMember({"date", "content"}));
    verb->add_flag("--dry-run", options->dryRun, "Say what would happen, and touch nothing");
    verb->add_flag("--json", options->json, "Print an array with an object for each file");
    verb->add_option("SRC", options->sources, "Folders, such as a camera card's DCIM, and single files")
        ->required();
    verb->callback([options, &run] {
        run = [options](const StartOptions& start) { return RunImportVerb(start, *options); };
    });
}

}  // namespace kalmora
