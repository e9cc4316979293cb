// kalmora search: which files a query finds, from the index files of the tree.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <memory>
#include <nlohmann/json.hpp>

#include "app/environment.h"
#include "cli/before_reading.h"
#include "cli/iso_date.h"
#include "cli/period_option.h"
#include "cli/progress_bar.h"
#include "cli/shown_name.h"
#include "cli/stop_on_interrupt.h"
#include "cli/verbs.h"
#include "index/index_tree.h"
#include "platform/files.h"
#include "search/search_tree.h"
#include "store/data_folder.h"

namespace kalmora {

namespace {

using Json = nlohmann::ordered_json;

// As scripts know it from grep.
enum SearchStatus { kFound = 0, kNothingFound = 1, kFailed = 2 };

struct SearchOptions {
    CalendarDate period;
    bool all = false;
    bool json = false;
    std::vector<std::string> words;
};

Json DateOrNull(const SystemTime& date) { return IsRealDate(date) ? Json(IsoDate(date)) : Json(); }

Json RecordOf(const IndexEntry& entry) {
    return {{"path", entry.path},
            {"date", DateOrNull(entry.date)},
            {"width", entry.width},
            {"height", entry.height},
            {"iso", entry.camera.iso},
            {"shutter", entry.camera.shutter},
            {"brightness", entry.camera.brightness},
            {"flash", entry.camera.flash},
            {"aperture", entry.camera.aperture},
            {"mode", entry.camera.mode},
            {"face", entry.camera.face},
            {"comment", entry.comment},
            {"like", entry.estimations.like},
            {"good", entry.estimations.good},
            {"privacy", entry.estimations.privacy}};
}

// Prints what is found while the search runs.
class Results {
public:
    explicit Results(bool json) : json_(json) {
        if (json_) out_ += '[';
    }

    void Add(const FoundDays& found) {
        for (const FoundDay& day : found)
            for (std::size_t i = 0; i < day.positions.size(); ++i) Add(day.Entry(i));
        Flush();
    }
    void Finish() {
        if (json_) out_ += "]\n";
        Flush();
    }
    std::size_t Count() const { return count_; }

private:
    void Add(const IndexEntry& entry) {
        if (json_) {
            if (count_ > 0) out_ += ",\n ";
            out_ += RecordOf(entry).dump(-1, ' ', false, Json::error_handler_t::replace);
        } else {
            out_ += ShownOnOutput(entry.path);
            out_ += '\n';
        }
        ++count_;
        if (out_.size() > (1u << 16)) Flush();
    }
    void Flush() {
        std::fwrite(out_.data(), 1, out_.size(), stdout);
        out_.clear();
    }

    const bool json_;
    std::string out_;
    std::size_t count_ = 0;
};

bool SearchRoot(const std::string& root, const SearchOptions& options, const QueryMatcher& query,
                Results& results, ProgressBar& bar, const StopToken& stop) {
    const std::vector<CalendarDate> months = MonthsOfPeriod(root, options.period);
    std::size_t done = 0;
    return SearchTree(root, months, options.period.day, query, stop, [&](const FoundDays& found) {
        results.Add(found);
        ++done;
        bar.OnProgress(static_cast<double>(done) / static_cast<double>(months.size()),
                       std::to_string(done) + "/" + std::to_string(months.size()) + " months");
    });
}

// A query may be one argument or several, as the user likes.
std::string QueryOf(const SearchOptions& options) {
    std::string query;
    for (const std::string& word : options.words) query += (query.empty() ? "" : " ") + word;
    return query;
}

int RunSearch(const StartOptions& start, const SearchOptions& options) {
    const std::string line = QueryOf(options);
    if (line.empty()) {
        std::fputs("kalmora search: the query is empty\n", stderr);
        return kFailed;
    }
    PrepareFolders(start);
    ConnectRooms();
    LoadEnvironment(start);
    const StopToken stop = StopOnInterrupt();
    const std::string root = MainRoot();
    if (!files::IsFolder(root)) {
        std::fprintf(stderr, "kalmora search: %s: no such folder\n", root.c_str());
        return kFailed;
    }
    MakeWholeBeforeReading("search");
    const QueryMatcher query(ParseQuery(line));
    Results results(options.json);
    {
        ProgressBar bar;
        SearchRoot(root, options, query, results, bar, stop);
        // The second root belongs to the settings' data folder, not to one that was named for this run.
        const std::string other = start.data.empty() ? OtherRoot() : std::string();
        if (!other.empty() && !stop.IsStopped()) SearchRoot(other, options, query, results, bar, stop);
    }
    results.Finish();
    if (stop.IsStopped()) {
        std::fprintf(stderr, "kalmora search: interrupted; the result is not whole\n");
        return kFailed;
    }
    return results.Count() > 0 ? kFound : kNothingFound;
}

}  // namespace

void AddSearchVerb(CLI::App& app, VerbRun& run) {
    auto options = std::make_shared<SearchOptions>();
    CLI::App* verb = app.add_subcommand("search", "Print the paths of the files that a query finds");
    verb->footer(
        "Exit status: 0 something was found, 1 nothing was or it could not be printed, 2 the search failed\n"
        "or was used wrongly.");
    verb->add_option("QUERY", options->words, "Words and terms, as in the search dialog")->required();
    AddPeriodOptions(*verb, options->period);
    CLI::Option* all = verb->add_flag("--all", options->all, "The whole tree; so also without a period");
    for (const char* period : {"--year", "--month", "--day"}) all->excludes(verb->get_option(period));
    verb->add_flag("--json", options->json, "Print an array of records");
    verb->callback([options, &run] {
        run = [options](const StartOptions& start) { return RunSearch(start, *options); };
    });
}

}  // namespace kalmora
