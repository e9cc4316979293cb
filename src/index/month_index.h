// MonthIndex: the days of one month, which of them stand in memory, and who works on them.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "base/work_gate.h"
#include "index/day_index.h"

namespace kalmora {

class IndexBatch;

// Any thread. Loads and updates of one month wait for each other as WorkGate tells (at most 2.2 seconds, then
// both go on); readers never wait: they get the days as they stand, whole before or whole after a change.
class MonthIndex {
public:
    static constexpr int kDays = 31;

    // A piece of work on the month, from its beginning: a stop that is asked for while it goes on ends it,
    // one from before does not. One thread; the month outlives it.
    class Work {
    public:
        explicit Work(const MonthIndex& month) : month_(month), stopsBefore_(month.stops_) {}
        bool IsStopped() const { return month_.stops_ != stopsBefore_; }

    private:
        const MonthIndex& month_;
        const unsigned stopsBefore_;
    };

    MonthIndex(int year, int month, std::string dataRoot = {});
    // A copy has the same days (their records are shared) and flags, and a gate of its own; a stop asked of
    // the original does not reach work on the copy. What is loaded or
    // changed in a copy is not loaded or changed in the original.
    MonthIndex(const MonthIndex& other);
    MonthIndex& operator=(const MonthIndex&) = delete;

    const int year;
    const int month;
    const std::string dataRoot;  // given to each day that is loaded; empty: CurrentDataRoot

    // ---- reading
    // The records of a day, 1 to 31. Never null; an empty day where nothing is loaded. Never changes.
    std::shared_ptr<const DayIndex> Day(int day) const;
    // True when the day stands in memory; day 0: when all days of the month do.
    bool IsLoaded(int day) const;

    // ---- working
    // Loads what is not in memory: one day, or with day 0 the whole month. False when refused by the gate or
    // stopped; the days finished until then stay. Tells its progress.
    bool Load(int day);
    // The same for a caller that works through many months: index files that have to be written go into the
    // batch, which is left to the caller to finish.
    bool Load(int day, IndexBatch& batch);
    // The same for work that was begun before the call.
    bool Load(int day, const Work& work);
    // Loads one day when it is not in memory, without the gate and without a word. False when stopped.
    bool EnsureDay(int day);
    // Compares the day (day 0 or less: every day) with its folder. False when refused by the gate (`busy` is
    // then left set: meant, and held by MonthUpdate.RefusedByTheGateStaysBusy) or stopped.
    bool Update(int day);
    bool Update(int day, IndexBatch& batch);
    bool Update(int day, const Work& work);
    // Writes each loaded day that is dirty; leaves when stopped.
    void WriteLoadedDays();
    // Puts an entry in the place of the one with the same path, if that day has one.
    void ReplaceEntry(int day, const EntryPointer& entry);

    // Asks all who work on this month to leave; whoever begins later is not meant. Returns at once.
    void RequestStop();

    std::atomic<bool> busy = false;          // a load or an update runs
    std::atomic<bool> searching = false;     // a search runs
    std::atomic<int> lastUpdateSeconds = 0;  // uptime at the end of the last update or writing; 0 never

private:
    // Makes a day that a worker fills known to stop requests.
    class DayAtWork {
    public:
        DayAtWork(MonthIndex& owner, DayIndex& records);
        ~DayAtWork();
        DayAtWork(const DayAtWork&) = delete;
        DayAtWork& operator=(const DayAtWork&) = delete;

    private:
        MonthIndex& owner_;
        DayIndex& records_;
    };
    enum class Writing { Now, Later };
    bool LoadIn(int day, IndexBatch& batch, Writing writing, const Work& work);
    bool LoadDay(int day, IndexBatch& batch);
    bool LoadOne(int day, IndexBatch& batch);
    bool LoadAll(IndexBatch& batch, const Work& work);
    bool UpdateIn(int day, IndexBatch& batch, Writing writing, const Work& work);
    void UpdateDay(int day, IndexBatch& batch);
    bool UpdateAll(IndexBatch& batch, const Work& work);
    void Publish(int day, const std::shared_ptr<DayIndex>& records);
    void SetLoaded(int day, bool loaded);
    void NoteUpdateTime();

    WorkGate gate_;
    std::atomic<unsigned> stops_ = 0;                          // that were asked for
    mutable std::mutex mutex_;                                 // held for copies of pointers only
    std::array<std::shared_ptr<const DayIndex>, kDays> days_;  // guarded by mutex_; null: empty
    std::array<bool, kDays> dayLoaded_{};                      // guarded by mutex_
    std::vector<DayIndex*> atWork_;  // guarded by mutex_: the days that workers are filling at this moment
};

}  // namespace kalmora
