// kalmora index, kalmora update: the index files of a tree, without a window.
#include <CLI/CLI.hpp>
#include <atomic>
#include <cstdio>
#include <memory>
#include <nlohmann/json.hpp>

#include "app/environment.h"
#include "cli/before_reading.h"
#include "cli/period_option.h"
#include "cli/progress_bar.h"
#include "cli/stop_on_interrupt.h"
#include "cli/verbs.h"
#include "index/index_tree.h"
#include "index/month_index.h"
#include "platform/files.h"
#include "store/data_folder.h"

namespace kalmora {

namespace {

enum class IndexWork { MakeMissing, Update };

struct IndexOptions {
    CalendarDate period;
    bool json = false;
};

// What was gone through; threads add to it.
struct Tally {
    std::atomic<std::size_t> months = 0, days = 0, files = 0;

    void Add(const MonthIndex& month) {
        ++months;
        for (int day = 1; day <= MonthIndex::kDays; ++day) {
            const auto records = month.Day(day);
            if (records->folder.empty()) continue;
            ++days;
            files += records->entries.size();
        }
    }
};

bool RunOnRoot(const std::string& root, IndexWork work, const CalendarDate& period, Tally& tally,
               ProgressBar& bar, const StopToken& stop) {
    const std::vector<CalendarDate> months = MonthsOfPeriod(root, period);
    // Of several months their number is shown instead.
    const WorkContext context{stop,
                              months.size() == 1 ? static_cast<ProgressListener*>(&bar) : &NoProgress()};
    const auto onMonth = [&](const CalendarDate& date, IndexBatch& batch) {
        MonthIndex month(date.year, date.month, root, context);
        if (!month.Load(period.day, batch)) return false;
        if (work == IndexWork::Update && !month.Update(period.day, batch)) return false;
        tally.Add(month);
        return true;
    };
    const auto whole = static_cast<double>(months.size());
    return RunOverMonths(months, stop, onMonth, [&](std::size_t done) {
        bar.OnProgress(static_cast<double>(done) / whole,
                       std::to_string(done) + "/" + std::to_string(months.size()) + " months");
    });
}

void Print(const Tally& tally, bool json) {
    if (json) {
        const nlohmann::ordered_json record{
            {"months", tally.months.load()}, {"days", tally.days.load()}, {"files", tally.files.load()}};
        std::printf("%s\n", record.dump().c_str());
    } else {
        std::printf("%zu months, %zu days, %zu files\n", tally.months.load(), tally.days.load(),
                    tally.files.load());
    }
}

int RunIndexWork(const StartOptions& start, IndexWork work, const IndexOptions& options) {
    PrepareFolders(start);
    ConnectRooms();
    LoadEnvironment(start);
    // The current file is finished and what was made so far is written; then the program ends.
    const StopToken stop = StopOnInterrupt();
    const std::string root = MainRoot();
    const char* const verb = work == IndexWork::Update ? "update" : "index";
    if (!files::IsFolder(root)) {
        std::fprintf(stderr, "kalmora %s: %s: no such folder\n", verb, root.c_str());
        return 1;
    }
    MakeWholeBeforeReading(verb);
    Tally tally;
    bool good = true;
    {
        ProgressBar bar;
        good = RunOnRoot(root, work, options.period, tally, bar, stop);
        // The second root belongs to the settings' data folder, not to one that was named for this run.
        const std::string other = start.data.empty() ? OtherRoot() : std::string();
        if (good && !other.empty()) good = RunOnRoot(other, work, options.period, tally, bar, stop);
    }
    Print(tally, options.json);
    if (stop.IsStopped())
        std::fprintf(stderr, "kalmora %s: interrupted; what was finished is written\n", verb);
    else if (!good)
        std::fprintf(
            stderr, "kalmora %s: some folders could not be read or index files could not be written\n", verb);
    return good ? 0 : 1;
}

void AddVerb(CLI::App& app, VerbRun& run, const char* name, const char* what, IndexWork work) {
    auto options = std::make_shared<IndexOptions>();
    CLI::App* verb = app.add_subcommand(name, what);
    AddPeriodOptions(*verb, options->period);
    verb->add_flag("--json", options->json, "Print the counts as an object");
    verb->footer(
        "Works through the whole tree unless a period is given. Ctrl+C ends it at the next file; what was\n"
        "finished stays. The exit status is 1 when it was ended so or an index could not be written.");
    verb->callback([options, work, &run] {
        run = [options, work](const StartOptions& start) { return RunIndexWork(start, work, *options); };
    });
}

}  // namespace

void AddIndexVerb(CLI::App& app, VerbRun& run) {
    AddVerb(app, run, "index", "Make the index files that are missing; leave the others as they are",
            IndexWork::MakeMissing);
}

void AddUpdateVerb(CLI::App& app, VerbRun& run) {
    AddVerb(app, run, "update",
            "Compare the index with the files: read what is new or has changed, drop what has gone",
            IndexWork::Update);
}

}  // namespace kalmora
