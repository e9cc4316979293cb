// kalmora date: when a photo was taken.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>

#include "base/dates.h"
#include "cli/iso_date.h"
#include "cli/photo_verb.h"
#include "cli/verbs.h"
#include "media/photo_file.h"
#include "platform/clock.h"

namespace kalmora {

namespace {

struct DateOptions {
    std::string file;
    std::string date;
    bool json = false;
};

// "2008-11-13 10:15:00"; a T may come between, and the seconds may be missing.
std::optional<SystemTime> ParseDate(const std::string& text) {
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0, used = 0;
    char between = ' ';
    if (std::sscanf(text.c_str(), "%4d-%2d-%2d%c%2d:%2d%n", &year, &month, &day, &between, &hour, &minute,
                    &used) < 6)
        return std::nullopt;
    std::size_t end = static_cast<std::size_t>(used);
    if (int more = 0; std::sscanf(text.c_str() + end, ":%2d%n", &second, &more) == 1)
        end += static_cast<std::size_t>(more);
    if (end != text.size() || (between != ' ' && between != 'T')) return std::nullopt;
    if (year < 1 || month < 1 || month > 12 || day < 1 || day > DaysInMonth(year, month) || hour < 0 ||
        hour > 23 || minute < 0 || minute > 59 || second < 0 || second > 59)
        return std::nullopt;
    const auto field = [](int value) { return static_cast<std::uint16_t>(value); };
    return SystemTime{field(year),
                      field(month),
                      field(DayOfWeek(year, month, day)),
                      field(day),
                      field(hour),
                      field(minute),
                      field(second),
                      0};
}

int RunDate(const StartOptions& start, const DateOptions& options) {
    const auto date = ParseDate(options.date);
    if (!date) {
        std::fprintf(stderr, "kalmora date: %s is no date of the form \"2008-11-13 10:15:00\"\n",
                     options.date.c_str());
        return 2;
    }
    PrepareToWrite(start);
    PhotoFile photo(AbsoluteFilePath(options.file));
    const RewriteResult result = photo.SetShotDate(*date);
    FileReport report("date", options.json ? ReportForm::Json : ReportForm::Lines);
    if (IsDone(result))
        report.Done(options.file, NameOf(result), {{"date", IsoDate(*date)}});
    else
        report.Failed(options.file, result);
    return report.Finish();
}

}  // namespace

void AddDateVerb(CLI::App& app, VerbRun& run) {
    auto options = std::make_shared<DateOptions>();
    CLI::App* verb = app.add_subcommand("date", "Write the date of its taking into a photo");
    verb->add_flag("--json", options->json, "Print an array with one object");
    verb->add_option("FILE", options->file, "The photo")->required();
    verb->add_option("DATE", options->date, "\"2008-11-13 10:15:00\"")->required();
    verb->callback(
        [options, &run] { run = [options](const StartOptions& start) { return RunDate(start, *options); }; });
}

}  // namespace kalmora
