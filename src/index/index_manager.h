// IndexManager: the months of one data root that have been touched, most recently used first.
#pragma once

#include <atomic>
#include <cstdint>
#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "base/dates.h"
#include "index/month_index.h"

namespace kalmora {

using MonthPointer = std::shared_ptr<MonthIndex>;

// Any thread. The list only grows. No lock is held while a file is read.
class IndexManager {
public:
    explicit IndexManager(std::string root) : dataRoot(std::move(root)) {}
    IndexManager(const IndexManager&) = delete;
    IndexManager& operator=(const IndexManager&) = delete;

    const std::string dataRoot;

    // Month and day 0: the whole year; day 0: the month. Year 0 is a year like any other. A month that is not
    // in the list gets a blank record there and its index files on the disk: it is in memory only after the
    // second call, which reads those files. A listed month is loaded and moves to the front. A stop requested
    // meanwhile ends the call. Nothing happens while the root is away, nor in Update.
    void Load(int year, int month, int day);
    // Compares a month (day 0 or less) or a day with its folders; a month that is not in the list is loaded,
    // compared and written beside the list, which gets a blank record.
    void Update(int year, int month, int day) { Update(year, month, day, StopsSoFar()); }
    // The same for work that was begun before the call: a stop that was asked for since then ends it too.
    using StopMark = unsigned;
    void Update(int year, int month, int day, StopMark since);
    StopMark StopsSoFar() const { return stops_; }

    // True when all that is in memory; year 0: never.
    bool IsLoaded(int year, int month, int day) const;
    // The months in the order of the list. The records behind the pointers go on living.
    std::vector<MonthPointer> Months() const;
    // Null when it is not in the list. Does not change the order.
    MonthPointer FindMonth(int year, int month) const;
    // A copy of the month as it stands; a month that is not in the list gets an unloaded record at the front.
    MonthPointer GetMonthCopy(int year, int month);
    // Seconds of uptime since the month's last update; 360000 for a month that is not in the list.
    double SecondsSinceUpdate(int year, int month) const;

    // Adds files to the index file of their day. The list's records do not learn of a new file; they do learn
    // what is new of a file that they have. A month that is not in the list gets an unloaded record.
    void AddFiles(const CalendarDate& date, const std::vector<std::string>& paths);

    // Puts the months into memory without the detour of the first touch, on both processors, the last one in
    // front. False when interrupted (index_stop.h).
    bool LoadMonths(const std::vector<CalendarDate>& months);

    // Asks every Load and Update that runs to leave; the next one is not meant. Returns at once.
    void RequestStop();
    // True while a Load or Update runs.
    bool IsBusy() const;
    // What the last Load or Update was for; day is 0.
    CalendarDate CurrentTarget() const;

    // A request for an update of a day by Update(0, 0, 1). No part of the program makes one at the moment.
    void RequestUpdate(const CalendarDate& date);

private:
    class BesideList;
    class Running;
    bool LoadMonth(int year, int month, int day, StopMark since);
    bool LoadFirstTime(int year, int month, int day, StopMark since);
    void UpdateFirstTime(int year, int month, int day, StopMark since);
    void MoveToFront(const MonthPointer& month);
    MonthPointer AddBlank(int year, int month);
    void ForgetRequests(int year, int month, int day);
    bool TakeRequest(CalendarDate& date);
    bool IsStopped(StopMark since) const { return stops_ != since; }

    mutable std::mutex mutex_;
    std::list<MonthPointer> months_;  // guarded by mutex_; most recently used first
    std::vector<MonthPointer>
        besideList_;                     // guarded by mutex_; months that are worked on at their first touch
    std::vector<CalendarDate> pending_;  // guarded by mutex_; updates that were asked for
    CalendarDate target_;                // guarded by mutex_
    std::vector<CalendarDate> running_;  // guarded by mutex_; the targets of the calls that run
    std::atomic<StopMark> stops_ = 0;    // that were asked for
};

// The one of DataDirectory and the one of OtherDirectory. Made on first use with the roots of that moment,
// never destroyed.
IndexManager& MainIndex();
IndexManager& OtherIndex();
// Has both made anew at their next use. For the start of the program and for tests, while no other thread
// uses them.
void ResetIndexes();
// OtherIndex while UseOtherFolder is set and the folder stands, else null.
IndexManager* OtherIndexInUse();

// Stops the work of both. The reason is for the log and may be null.
void StopIndexing(const char* reason);
// Adds a file of the data folder to the index file of its day; nothing happens for a path in neither root.
void AddFileToIndex(const std::string& path);
// The same for many files: each day's index file is read and written once.
void AddFilesToIndex(const std::vector<std::string>& paths);

}  // namespace kalmora
