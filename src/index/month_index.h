// MonthIndex: the days of one month, which of them are in memory, and who works on them.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "base/stop_token.h"
#include "base/work_context.h"
#include "base/work_gate.h"
#include "index/day_index.h"

namespace kalmora {

class IndexBatch;

// Any thread. Loads and updates of one month wait for each other as WorkGate describes (at most 2.2 seconds,
// then both go on); readers never wait: they get the days as they are, whole before or whole after a change.
class MonthIndex {
public:
    static constexpr int kDays = 31;

    // The context's stop ends all work on the month, RequestStop what runs at the moment.
    MonthIndex(int year, int month, std::string dataRoot = {}, WorkContext context = {});
    // A copy has the same days (their records are shared), flags and context, and a gate of its own;
    // RequestStop of the original does not reach work on the copy. What is loaded or changed in a copy is not
    // loaded or changed in the original.
    MonthIndex(const MonthIndex& other);
    MonthIndex& operator=(const MonthIndex&) = delete;

    const int year;
    const int month;
    const std::string dataRoot;  // given to each day that is loaded; empty: CurrentDataRoot
    const WorkContext context;

    // ---- reading
    // The records of a day, 1 to 31. Never null; an empty day where nothing is loaded. Never changes.
    std::shared_ptr<const DayIndex> Day(int day) const;
    // True when the day is in memory; day 0: when all days of the month do.
    bool IsLoaded(int day) const;

    // ---- working
    // Of work on the month that begins now: stopped by RequestStop and by the context.
    StopToken BeginWork() const { return StopToken::AnyOf({rounds_.Token(), context.stop}); }
    // Loads what is not in memory: one day, or with day 0 the whole month. False when refused by the gate or
    // stopped; the days finished until then stay. Reports its progress.
    bool Load(int day);
    // The same for a caller that works through many months: index files that have to be written go into the
    // batch, which is left to the caller to finish.
    bool Load(int day, IndexBatch& batch);
    // The same for work that was begun before the call.
    bool Load(int day, const StopToken& work);
    // The same for a caller that leaves within one file when it is stopped: also while a day is read and
    // while it waits for the gate. When that wait runs out the load is refused.
    bool Load(int day, const StopToken& work, const StopToken& caller);
    // Loads one day when it is not in memory, without the gate and without a report. False when stopped.
    bool EnsureDay(int day, const StopToken& caller = {});
    // Compares the day (day 0 or less: every day) with its folder. False when refused by the gate (`busy` is
    // then left set: meant, and held by MonthUpdate.RefusedByTheGateStaysBusy) or stopped, and when a folder
    // could not be listed: its day stays as it was, and the other days are compared all the same.
    bool Update(int day);
    bool Update(int day, IndexBatch& batch);
    bool Update(int day, const StopToken& work);
    // Writes each loaded day that is dirty; leaves when stopped.
    void WriteLoadedDays();
    // Puts an entry in the place of the one with the same path, if that day has one.
    void ReplaceEntry(int day, const EntryPointer& entry);

    // Stops all work on this month that has begun, and none that begins later. A load ends before its next
    // day, an update at the next file. Returns at once.
    void RequestStop();

    std::atomic<bool> busy = false;          // a load or an update runs
    std::atomic<bool> searching = false;     // a search runs
    std::atomic<int> lastUpdateSeconds = 0;  // uptime at the end of the last update or writing; 0 never

private:
    // Names a day in the log of a stop while it is updated.
    class DayInUpdate {
    public:
        DayInUpdate(MonthIndex& owner, int day);
        ~DayInUpdate();
        DayInUpdate(const DayInUpdate&) = delete;
        DayInUpdate& operator=(const DayInUpdate&) = delete;

    private:
        MonthIndex& owner_;
        const int day_;
    };
    enum class Writing { Now, Later };
    // Whose stop ends a load where.
    struct Stops {
        StopToken work;    // between two days
        StopToken caller;  // everywhere
    };
    bool WaitForGate(const StopToken& caller) const;
    bool LoadIn(int day, IndexBatch& batch, Writing writing, const Stops& stops);
    bool LoadDay(int day, IndexBatch& batch, const StopToken& caller);
    bool LoadOne(int day, IndexBatch& batch, const StopToken& caller);
    bool LoadAll(IndexBatch& batch, const Stops& stops);
    bool UpdateIn(int day, IndexBatch& batch, Writing writing, const StopToken& work);
    bool UpdateDay(int day, IndexBatch& batch, const StopToken& work);
    bool UpdateAll(IndexBatch& batch, const StopToken& work);
    void Publish(int day, const std::shared_ptr<DayIndex>& records);
    void SetLoaded(int day, bool loaded);
    void StampUpdate();

    WorkGate gate_;
    StopRounds rounds_;
    mutable std::mutex mutex_;                                 // held for copies of pointers only
    std::array<std::shared_ptr<const DayIndex>, kDays> days_;  // guarded by mutex_; null: empty
    std::array<bool, kDays> dayLoaded_{};                      // guarded by mutex_
    std::vector<int> daysInUpdate_;                            // guarded by mutex_
};

}  // namespace kalmora
