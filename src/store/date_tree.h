// DateTree: which years, months and days hold something to show, and how much; what random dates are drawn
// from.
#pragma once

#include <atomic>
#include <cstddef>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "base/dates.h"

namespace kalmora {

enum DateLevel : int { kYearLevel = 1, kMonthLevel = 2, kDayLevel = 3 };

struct DateNode {
    int fileCount = 0;    // files below the folder, at any depth
    int shownCount = 0;   // of these, images, texts and shortcuts
    int timesChosen = 0;  // how often Pick gave it
    int level = kYearLevel;
    CalendarDate date;  // month and day 0 above their levels
};

// Filled by a scan on a thread of its own; asked by any thread at any time, also while the scan runs: a day
// is in the lists as soon as it has been counted. No lock is held while the disk is read or a hook is called.
class DateTree {
public:
    // Walks the whole root twice, first to know how far there is to go. State().run.DateScanRunning is set
    // all the while. False when stopped. One scan at a time.
    bool ScanAll(const std::string& root);
    // One walk. With countOnly only the day folders are counted; otherwise the lists are made anew. Rests 100
    // ms after each month that holds something. Links to folders inside a day are not followed.
    bool Scan(const std::string& root, bool countOnly);
    // Ends scanning for good: a running scan leaves after the folder that it reads at the moment.
    void RequestStop() { stop_ = true; }

    // A random date of a level; the less often chosen before, the likelier. Every seventh call first looks
    // whether today's folder has come into being. Empty when the level's list is.
    std::optional<CalendarDate> Pick(int level);

    // The shownCount of a listed date; month 0 asks for the year, day 0 for the month. Empty when not listed.
    std::optional<int> CountOf(int year, int month, int day) const;

    std::vector<DateNode> Nodes(int level) const;  // a copy, in list order

    // Hooks; set before the first scan or pick. Called on the thread that scans or picks.
    std::function<void(double ratio)> onProgress;  // 0 to 1, once a day folder
    std::function<void()> onDayPicked;             // a day was drawn: the view should be painted again

private:
    struct Counts {
        int files = 0;
        int shown = 0;
    };
    Counts CountFolder(const std::string& folder) const;
    bool ScanMonth(const std::string& root, int year, int month, bool countOnly, Counts& sum);
    void RefreshToday();
    void Add(const DateNode& node);
    std::vector<DateNode>& List(int level) { return lists_[static_cast<std::size_t>(level - 1)]; }
    const std::vector<DateNode>& List(int level) const { return lists_[static_cast<std::size_t>(level - 1)]; }

    mutable std::mutex mutex_;
    std::vector<DateNode> lists_[3];  // guarded by mutex_
    int picksSinceRefresh_ = 0;       // guarded by mutex_
    int dayFolders_ = 0;              // of the last counting walk; scanning thread only
    int daysDone_ = 0;                // scanning thread only
    std::atomic<bool> stop_ = false;
};

// The one of DataDirectory. Made on first use, never destroyed.
DateTree& TheDateTree();

}  // namespace kalmora
