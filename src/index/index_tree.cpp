#include "index/index_tree.h"

#include <algorithm>
#include <atomic>
#include <charconv>
#include <limits>
#include <mutex>

#include "base/worker.h"
#include "platform/files.h"
#include "store/data_folder.h"

namespace kalmora {

namespace {

// The number that the whole name is; -1 for any other name.
int NumberOf(std::string_view name) {
    int number = -1;
    const auto end = std::from_chars(name.data(), name.data() + name.size(), number);
    return end.ec == std::errc() && end.ptr == name.data() + name.size() && number >= 0 ? number : -1;
}

void ListMonthsOfYear(const std::string& root, int year, std::vector<CalendarDate>& months) {
    const std::string yearFolder = MakeYearFolderPath(root, year);
    for (const files::FolderEntry& entry : files::ListFolder(yearFolder)) {
        const int number = entry.isFolder ? NumberOf(entry.name) : -1;
        const int month = number % 100;
        if (number / 100 != year || month < 1 || month > 12) continue;
        // "2008011" is the number of a month and yet no month's folder.
        if (files::Join(yearFolder, entry.name) == MakeMonthFolderPath(root, year, month))
            months.push_back({year, month, 0});
    }
}

}  // namespace

std::vector<CalendarDate> ListMonths(const std::string& root, int year) {
    std::vector<CalendarDate> months;
    if (year != 0) {
        ListMonthsOfYear(root, year, months);
    } else {
        for (const files::FolderEntry& entry : files::ListFolder(root)) {
            const int number = entry.isFolder ? NumberOf(entry.name) : -1;
            if (number >= 0 && files::Join(root, entry.name) == MakeYearFolderPath(root, number))
                ListMonthsOfYear(root, number, months);
        }
    }
    std::sort(months.begin(), months.end());
    return months;
}

bool RunOverMonths(const std::vector<CalendarDate>& months, const StopToken& stop,
                   const std::function<bool(const CalendarDate& month, IndexBatch& batch)>& work,
                   const std::function<void(std::size_t done)>& onMonthDone) {
    std::atomic<std::size_t> next = 0;
    std::atomic<bool> good = true;
    std::mutex doneMutex;
    std::size_t done = 0;  // guarded by doneMutex
    const auto run = [&] {
        IndexBatch batch;
        while (!stop.IsStopped()) {
            const std::size_t at = next++;
            if (at >= months.size()) break;
            if (!work(months[at], batch)) {
                good = false;
                continue;
            }
            std::lock_guard lock(doneMutex);
            ++done;
            if (onMonthDone) onMonthDone(done);
        }
        if (!batch.Finish()) good = false;
    };
    // One more than there are processors: while one waits for the disk to take its index files, another
    // reads. The system may have no more threads: this one does what is left.
    const std::size_t threads =
        std::min<std::size_t>(static_cast<std::size_t>(std::max(1, ProcessorCount())) + 1, months.size());
    std::vector<Worker> helpers;
    while (helpers.size() + 1 < threads)
        helpers.push_back(
            StartWorker("IndexMonths", Worker::Priority::Normal, [&run](const StopToken&) { run(); }));
    run();
    for (const Worker& helper : helpers) helper.WaitForEnd();
    return good && !stop.IsStopped();
}

}  // namespace kalmora
