// DateTree: which years, months and days hold something to show, and how much; what random dates are drawn
// from.
#pragma once

#include <cstddef>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "base/dates.h"
#include "base/stop_token.h"

namespace kalmora {

enum DateLevel : int { kYearLevel = 1, kMonthLevel = 2, kDayLevel = 3 };

struct DateNode {
    int fileCount = 0;    // files below the folder, at any depth
    int shownCount = 0;   // of these, images, texts and shortcuts
    int timesChosen = 0;  // how often Pick gave it
    int level = kYearLevel;
    CalendarDate date;  // month and day 0 above their levels
};

// Called on the thread that scans or picks. Outlives the tree.
class DateTreeListener {
public:
    virtual ~DateTreeListener() = default;
    virtual void OnScanProgress(double /*ratio*/) {}  // 0 to 1, once a day folder
    virtual void OnDayPicked() {}                     // the view should be painted again
};

// Does nothing.
DateTreeListener& NoDateTreeListener();

// Filled by a scan on a thread of its own; asked by any thread at any time, also while the scan runs: a day
// is in the lists as soon as it has been counted. No lock is held while the disk is read or the listener is
// called.
class DateTree {
public:
    explicit DateTree(DateTreeListener& listener = NoDateTreeListener()) : listener_(listener) {}

    // Walks the whole root twice, first to know how far there is to go. State().run.DateScanRunning is set
    // all the while. False when stopped: it leaves after the folder that it reads. One scan at a time.
    bool ScanAll(const std::string& root, const StopToken& stop = {});
    // One walk. With countOnly only the day folders are counted; otherwise the lists are rebuilt. Rests 100
    // ms after each month that holds something. Links to folders inside a day are not followed.
    bool Scan(const std::string& root, bool countOnly, const StopToken& stop = {});

    // A random date of a level; the less often chosen before, the likelier. Every seventh call first looks
    // whether today's folder exists by now. Empty when the level's list is.
    std::optional<CalendarDate> Pick(int level);

    // The shownCount of a listed date; month 0 asks for the year, day 0 for the month. Empty when not listed.
    std::optional<int> CountOf(int year, int month, int day) const;

    std::vector<DateNode> Nodes(int level) const;  // a copy, in list order

private:
    struct Counts {
        int files = 0;
        int shown = 0;
    };
    static Counts CountFolder(const std::string& folder, const StopToken& stop);
    bool ScanMonth(const std::string& root, int year, int month, bool countOnly, const StopToken& stop,
                   Counts& sum);
    void RefreshToday();
    void Add(const DateNode& node);
    std::vector<DateNode>& List(int level) { return lists_[static_cast<std::size_t>(level - 1)]; }
    const std::vector<DateNode>& List(int level) const { return lists_[static_cast<std::size_t>(level - 1)]; }

    DateTreeListener& listener_;
    mutable std::mutex mutex_;
    std::vector<DateNode> lists_[3];  // guarded by mutex_
    int picksSinceRefresh_ = 0;       // guarded by mutex_
    int dayFolders_ = 0;              // of the last counting walk; scanning thread only
    int daysDone_ = 0;                // scanning thread only
};

// The one of DataDirectory: a process-wide record, since the scan at the start, the heartbeat and the views
// all reach it. Made on first use, never destroyed.
DateTree& TheDateTree();
// Replaces it with an empty one. For the start of the program and for tests, while no other thread
// uses it.
void ResetDateTree(DateTreeListener& listener = NoDateTreeListener());

}  // namespace kalmora
