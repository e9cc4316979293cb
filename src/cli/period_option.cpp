#include "cli/period_option.h"

#include <CLI/CLI.hpp>
#include <charconv>
#include <string>
#include <string_view>

#include "index/index_tree.h"

namespace kalmora {

namespace {

constexpr int kLastYear = 9999;

// Numbers with one '-' between them and nothing else; how many there were, 0 for anything else.
int ReadNumbers(std::string_view text, int (&numbers)[3]) {
    const char* at = text.data();
    const char* const end = at + text.size();
    for (int count = 0; count < 3; ++count) {
        const auto read = std::from_chars(at, end, numbers[count]);
        if (read.ec != std::errc() || *at == '-') return 0;
        if (read.ptr == end) return count + 1;
        if (*read.ptr != '-' || read.ptr + 1 == end) return 0;
        at = read.ptr + 1;
    }
    return 0;
}

bool ReadPeriod(const std::string& text, int parts, CalendarDate& period) {
    int numbers[3] = {0, 1, 1};
    if (ReadNumbers(text, numbers) != parts) return false;
    const auto [year, month, day] = numbers;
    if (year < 1 || year > kLastYear || month < 1 || month > 12) return false;
    if (day < 1 || day > DaysInMonth(year, month)) return false;
    period = {year, parts > 1 ? month : 0, parts > 2 ? day : 0};
    return true;
}

}  // namespace

void AddPeriodOptions(CLI::App& verb, CalendarDate& period) {
    const struct {
        const char* name;
        const char* form;
        const char* what;
        int parts;
    } options[] = {
        {"--year", "Y", "One year", 1}, {"--month", "Y-M", "One month", 2}, {"--day", "Y-M-D", "One day", 3}};
    CLI::Option* added[3] = {};
    for (int i = 0; i < 3; ++i) {
        const auto& one = options[i];
        added[i] = verb.add_option_function<std::string>(
            one.name,
            [&period, name = std::string(one.name), form = std::string(one.form),
             parts = one.parts](const std::string& text) {
                if (!ReadPeriod(text, parts, period))
                    throw CLI::ValidationError(name, "'" + text + "' is no " + form + " of the calendar");
            },
            one.what);
        added[i]->type_name(one.form);
        for (int before = 0; before < i; ++before) added[i]->excludes(added[before]);
    }
}

std::vector<CalendarDate> MonthsOfPeriod(const std::string& root, const CalendarDate& period) {
    if (period.month == 0) return ListMonths(root, period.year);
    return {{period.year, period.month, 0}};
}

}  // namespace kalmora
