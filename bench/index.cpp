// How fast the index is made, read and compared.
//
//     bench_index make-records DIR COUNT      index files for so many made-up records, 30 a day, from 1900 on
//     bench_index make-day DIR FROM COUNT     a day of so many links to the photo FROM, and its month's other
//                                             days empty
//     bench_index load DIR [ROUNDS]           reads all index files below DIR into memory
//     bench_index update DIR [ROUNDS]         compares the months below DIR, which have not changed, with
//                                             their files, and looks at each file in a bare loop beside it
//     bench_index build DIR [ROUNDS]          makes all index files below DIR from the files
//
// Prints one line: the median seconds, and what else the job reports.
#include <malloc.h>
#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "base/dates.h"
#include "baseline.h"
#include "index/index_manager.h"
#include "index/index_text.h"
#include "index/index_tree.h"
#include "platform/files.h"
#include "state/app_state.h"
#include "store/data_folder.h"
#include "store/extension_table.h"

namespace {

using namespace kalmora;

constexpr int kRecordsOfADay = 30;
constexpr int kFirstYear = 1900;
constexpr const char* kWords[] = {"harbour", "花火",  "ｶﾒﾗ",      "birthday", "a walk in the evening",
                                  "京都",    "train", "zeppelin", "夏祭り",   "with everyone at the sea"};

[[noreturn]] void Fail(const char* what) {
    std::fprintf(stderr, "bench_index: %s\n", what);
    std::exit(1);
}

// ---- making

IndexEntry MadeUp(const std::string& folder, int number, const CalendarDate& date) {
    IndexEntry entry;
    char name[40];
    std::snprintf(name, sizeof name, "/IMG_%07d.JPG", number);
    entry.path = folder + name;
    entry.width = 240;
    entry.height = 180;
    entry.lastWriteTime.ticks = 128'710'000'000'000'000u + static_cast<std::uint64_t>(number) * 10'000'019u;
    entry.date.year = static_cast<std::uint16_t>(date.year);
    entry.date.month = static_cast<std::uint16_t>(date.month);
    entry.date.day = static_cast<std::uint16_t>(date.day);
    entry.date.hour = static_cast<std::uint16_t>(8 + number % kRecordsOfADay / 2);
    entry.date.minute = static_cast<std::uint16_t>(number * 7 % 60);
    entry.estimations.like = number % 9 == 0 ? 64 : 0;
    entry.camera.iso = 100 << number % 5;
    entry.camera.shutter = 825 + number % 300;
    entry.camera.flash = number % 2 * 16;
    entry.camera.aperture = 280 + number % 100;
    if (number % 3 == 0)
        entry.comment =
            std::string(kWords[number % 10]) + " " + kWords[number / 10 % 10] + " " + std::to_string(number);
    return entry;
}

void MakeRecords(const std::string& root, int count) {
    CalendarDate date{kFirstYear, 1, 1};
    for (int number = 0; number < count;) {
        const std::string folder = MakeDayFolderPath(root, date.year, date.month, date.day);
        if (!MakeDirectories(folder)) Fail("a folder cannot be made");
        std::string text = IndexHeader();
        for (int i = 0; i < kRecordsOfADay && number < count; ++i, ++number)
            AppendIndexRecord(text, MadeUp(folder, number, date), folder);
        // Not flushed: there are tens of thousands.
        if (files::AppendToFile(files::Join(folder, kIndexFileName), text) != files::FileResult::Done)
            Fail("an index file cannot be written");
        if (++date.day > DaysInMonth(date.year, date.month)) {
            date.day = 1;
            if (++date.month > 12) date.month = 1, ++date.year;
        }
    }
}

void MakeDay(const std::string& root, const std::string& from, int count) {
    const std::string folder = MakeDayFolderPath(root, 2021, 3, 1);
    if (!MakeDirectories(folder)) Fail("a folder cannot be made");
    for (int i = 0; i < count; ++i) {
        char name[40];
        std::snprintf(name, sizeof name, "IMG_%07d.JPG", i);
        std::filesystem::create_hard_link(from, files::Join(folder, name));
    }
}

// ---- measuring

std::vector<CalendarDate> MonthsBelow(const std::string& root) {
    const std::vector<CalendarDate> months = ListMonths(root);
    if (months.empty()) Fail("there is no month");
    return months;
}

void Load(const std::string& root, int rounds) {
    const std::vector<CalendarDate> months = MonthsBelow(root);
    std::vector<double> seconds;
    std::size_t records = 0, texts = 0, taken = 0;
    for (int round = 0; round < rounds; ++round) {
        const std::size_t before = mallinfo2().uordblks + mallinfo2().hblkhd;
        IndexManager manager(root);
        const double start = bench::WallSeconds();
        if (!manager.LoadMonths(months)) Fail("stopped");
        seconds.push_back(bench::WallSeconds() - start);
        taken = mallinfo2().uordblks + mallinfo2().hblkhd - before;
        records = texts = 0;
        for (const MonthPointer& month : manager.Months())
            for (int day = 1; day <= MonthIndex::kDays; ++day)
                for (const EntryPointer& entry : month->Day(day)->entries) {
                    ++records;
                    texts += entry->path.size() + entry->comment.size();
                }
    }
    std::printf("%.6f %zu records, %.0f bytes a record beyond its texts\n", bench::Median(seconds), records,
                static_cast<double>(taken - texts) / static_cast<double>(records));
}

void Update(const std::string& root, int rounds) {
    const std::vector<CalendarDate> months = MonthsBelow(root);
    IndexManager manager(root);
    manager.LoadMonths(months);
    std::vector<std::string> paths;
    for (const MonthPointer& month : manager.Months())
        for (int day = 1; day <= MonthIndex::kDays; ++day)
            for (const EntryPointer& entry : month->Day(day)->entries) paths.push_back(entry->path);
    std::vector<double> updates, looks;
    for (int round = 0; round < rounds; ++round) {
        double start = bench::WallSeconds();
        for (const CalendarDate& month : months) manager.Update(month.year, month.month, 0);
        updates.push_back(bench::WallSeconds() - start);
        start = bench::WallSeconds();
        std::size_t sum = 0;
        for (const std::string& path : paths) {
            struct stat status {};
            if (stat(path.c_str(), &status) == 0) sum += static_cast<std::size_t>(status.st_mtim.tv_sec);
        }
        looks.push_back(bench::WallSeconds() - start);
        if (sum == 0) Fail("nothing was looked at");
    }
    std::printf("%.6f %zu files, %.6f for looking at each: %.2f\n", bench::Median(updates), paths.size(),
                bench::Median(looks), bench::Median(updates) / bench::Median(looks));
}

void Build(const std::string& root, int rounds) {
    const std::vector<CalendarDate> months = MonthsBelow(root);
    std::vector<double> seconds;
    std::size_t records = 0;
    for (int round = 0; round < rounds; ++round) {
        for (const CalendarDate& month : months)
            for (int day = 1; day <= DaysInMonth(month.year, month.month); ++day)
                files::RemoveFile(
                    files::Join(MakeDayFolderPath(root, month.year, month.month, day), kIndexFileName));
        IndexManager manager(root);
        const double start = bench::WallSeconds();
        if (!manager.LoadMonths(months)) Fail("stopped");
        seconds.push_back(bench::WallSeconds() - start);
        records = 0;
        for (const MonthPointer& month : manager.Months())
            for (int day = 1; day <= MonthIndex::kDays; ++day) records += month->Day(day)->entries.size();
    }
    std::printf("%.6f %zu records\n", bench::Median(seconds), records);
}

}  // namespace

int main(int argc, char** argv) {
    const std::string job = argc > 2 ? argv[1] : "";
    const std::string root = argc > 2 ? std::filesystem::absolute(argv[2]).string() : "";
    const int number = argc > 3 ? std::max(1, std::atoi(argv[argc - 1])) : 7;
    State().settings.ThumbnailMaxSize = 240;
    if (argc > 2) LoadExtensionTable(root + ".extension.dat");
    if (job == "make-records" && argc == 4)
        MakeRecords(root, number);
    else if (job == "make-day" && argc == 5)
        MakeDay(root, std::filesystem::absolute(argv[3]).string(), number);
    else if (job == "load")
        Load(root, number);
    else if (job == "update")
        Update(root, number);
    else if (job == "build")
        Build(root, number);
    else {
        std::fprintf(stderr, "usage: %s make-records|make-day|load|update|build DIR ...\n", argv[0]);
        return 2;
    }
    return 0;
}
