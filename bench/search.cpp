// How fast a query is held against records in memory.
//
//     bench_search run DIR QUERY [ROUNDS]   reads the index files below DIR and holds the query against all
//     of their
//                                           records. Prints the median seconds, and how many records and
//                                           files found
//     bench_search table DIR                prints what a data base wants to know of each record, a line
//     each: path,
//                                           comment, ISO and hour, with tabs between them
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "baseline.h"
#include "index/index_tree.h"
#include "index/month_index.h"
#include "search/meta_search.h"

namespace {

using namespace kalmora;
using Days = std::vector<std::shared_ptr<const DayIndex>>;

Days ReadTree(const std::string& root) {
    Days days;
    for (const CalendarDate& date : ListMonths(root))
        for (int number = 1; number <= MonthIndex::kDays; ++number) {
            auto day = std::make_shared<DayIndex>();
            day->dataRoot = root;
            if (day->Load(date.year, date.month, number) && !day->entries.empty())
                days.push_back(std::move(day));
        }
    return days;
}

void Run(const std::string& root, std::string_view line, int rounds) {
    const Days days = ReadTree(root);
    const QueryMatcher query(ParseQuery(line));
    std::vector<double> seconds;
    std::size_t records = 0, found = 0;
    for (const auto& day : days) records += day->entries.size();
    for (int round = 0; round < rounds; ++round) {
        FoundDays result;
        const double start = bench::ThreadSeconds();
        for (const auto& day : days) query.MetaSearch(day, result);
        seconds.push_back(bench::ThreadSeconds() - start);
        found = 0;
        for (const FoundDay& day : result) found += day.positions.size();
    }
    std::printf("%.6f %zu %zu\n", bench::Median(seconds), records, found);
}

void PrintTable(const std::string& root) {
    for (const auto& day : ReadTree(root))
        for (const EntryPointer& entry : day->entries)
            std::printf("%s\t%s\t%d\t%d\n", entry->path.c_str(), entry->comment.c_str(), entry->camera.iso,
                        entry->date.hour);
}

}  // namespace

int main(int argc, char** argv) {
    const std::string job = argc > 2 ? argv[1] : "";
    const std::string root = argc > 2 ? std::filesystem::absolute(argv[2]).string() : "";
    if (job == "run" && argc >= 4) {
        Run(root, argv[3], argc > 4 ? std::max(1, std::atoi(argv[4])) : 7);
    } else if (job == "table" && argc == 3) {
        PrintTable(root);
    } else {
        std::fprintf(stderr, "usage: %s run DIR QUERY [ROUNDS] | table DIR\n", argv[0]);
        return 2;
    }
    return 0;
}
