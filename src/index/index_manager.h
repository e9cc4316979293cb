// IndexManager: the months of one data root that have been touched, most recently used first.
#pragma once

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
    explicit IndexManager(std::string root, WorkContext given = {})
        : dataRoot(std::move(root)), context(std::move(given)) {}
    IndexManager(const IndexManager&) = delete;
    IndexManager& operator=(const IndexManager&) = delete;

    const std::string dataRoot;
    const WorkContext context;  // of all work on its months

    // Month and day 0: the whole year; day 0: the month. Year 0 is a year like any other. A month that is not
    // in the list gets a blank record there and its index files on the disk: it is in memory only after the
    // second call, which reads those files. A listed month is loaded and moves to the front. A stop requested
    // meanwhile ends the call. Nothing happens while the root is away, nor in Update.
    void Load(int year, int month, int day);
    // The same for a caller whose own stop ends it within one file.
    void Load(int year, int month, int day, const StopToken& caller);
    // Compares a month (day 0 or less) or a day with its folders; a month that is not in the list is loaded,
    // compared and written beside the list, which gets a blank record.
    void Update(int year, int month, int day) { Update(year, month, day, BeginWork()); }
    // The same for work that was begun before the call: a stop that was requested since then ends it too.
    void Update(int year, int month, int day, const StopToken& work);
    StopToken BeginWork() const { return rounds_.Token(); }

    // True when all that is in memory; year 0: never.
    bool IsLoaded(int year, int month, int day) const;
    // The months in the order of the list. The records behind the pointers go on living.
    std::vector<MonthPointer> Months() const;
    // Null when it is not in the list. Does not change the order.
    MonthPointer FindMonth(int year, int month) const;
    // A copy of the month as it is; a month that is not in the list gets an unloaded record at the front.
    MonthPointer GetMonthCopy(int year, int month);
    // Seconds of uptime since the month's last update; 360000 for a month that is not in the list.
    double SecondsSinceUpdate(int year, int month) const;

    // Adds files to the index file of their day. The list's records do not get a new file; they do get
    // the new values of a file that they have. A month that is not in the list gets an unloaded record.
    void AddFiles(const CalendarDate& date, const std::vector<std::string>& paths);

    // Puts the months into memory without the detour of the first touch, on both processors, the last one in
    // front. False when stopped by the context.
    bool LoadMonths(const std::vector<CalendarDate>& months);

    // Stops every Load and Update that has begun, and none that begins later. Returns at once.
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
    // `caller` may be null.
    void LoadFor(int year, int month, int day, const StopToken* caller);
    bool LoadMonth(int year, int month, int day, const StopToken& work, const StopToken* caller);
    bool LoadOnFirstAccess(int year, int month, int day, const StopToken& work, const StopToken* caller);
    void UpdateOnFirstAccess(int year, int month, int day, const StopToken& work);
    void MoveToFront(const MonthPointer& month);
    MonthPointer AddBlank(int year, int month);
    void ForgetRequests(int year, int month, int day);
    bool TakeRequest(CalendarDate& date);

    mutable std::mutex mutex_;
    std::list<MonthPointer> months_;  // guarded by mutex_; most recently used first
    std::vector<MonthPointer>
        besideList_;                     // guarded by mutex_; months that are worked on on their first access
    std::vector<CalendarDate> pending_;  // guarded by mutex_; updates that were requested
    CalendarDate target_;                // guarded by mutex_
    std::vector<CalendarDate> running_;  // guarded by mutex_; the targets of the calls that run
    StopRounds rounds_;
};

// What is in memory of the index of DataDirectory, and of that of OtherDirectory: process-wide records, since
// the loader, the importer, updates in the background and the heartbeat all reach them. Made on first use
// with the roots of that moment, never destroyed.
IndexManager& MainIndex();
IndexManager& OtherIndex();
// Has both rebuilt at their next use, with this context. For the start of the program and for tests, while
// no other thread uses them.
void ResetIndexes(const WorkContext& context = {});
// OtherIndex while UseOtherFolder is set and the folder exists, else null.
IndexManager* OtherIndexInUse();

// Stops the work of both. The reason is for the log and may be null.
void StopIndexing(const char* reason);
// Adds a file of the data folder to the index file of its day; nothing happens for a path in neither root.
void AddFileToIndex(const std::string& path);
// The same for many files: each day's index file is read and written once.
void AddFilesToIndex(const std::vector<std::string>& paths);

}  // namespace kalmora
