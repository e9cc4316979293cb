#include "index/month_index.h"

#include <algorithm>
#include <utility>

#include "base/dates.h"
#include "base/log.h"
#include "index/index_batch.h"
#include "platform/clock.h"

namespace kalmora {

namespace {

bool IsSlot(int day) { return day >= 1 && day <= MonthIndex::kDays; }
std::size_t SlotOf(int day) { return static_cast<std::size_t>(day - 1); }

// The wait of a caller that can be stopped meanwhile: as long as the gate's own.
constexpr int kGateWaitMs = 2200, kGateLookMs = 10;

}  // namespace

MonthIndex::DayInUpdate::DayInUpdate(MonthIndex& owner, int day) : owner_(owner), day_(day) {
    std::lock_guard lock(owner_.mutex_);
    owner_.daysInUpdate_.push_back(day_);
}

MonthIndex::DayInUpdate::~DayInUpdate() {
    std::lock_guard lock(owner_.mutex_);
    auto& days = owner_.daysInUpdate_;
    days.erase(std::find(days.begin(), days.end(), day_));
}

MonthIndex::MonthIndex(int monthYear, int monthNumber, std::string root, WorkContext given)
    : year(monthYear), month(monthNumber), dataRoot(std::move(root)), context(std::move(given)) {}

MonthIndex::MonthIndex(const MonthIndex& other)
    : year(other.year),
      month(other.month),
      dataRoot(other.dataRoot),
      context(other.context),
      busy(other.busy.load()),
      searching(other.searching.load()),
      lastUpdateSeconds(other.lastUpdateSeconds.load()) {
    std::lock_guard lock(other.mutex_);
    days_ = other.days_;
    dayLoaded_ = other.dayLoaded_;
}

std::shared_ptr<const DayIndex> MonthIndex::Day(int day) const {
    static const std::shared_ptr<const DayIndex> empty = std::make_shared<DayIndex>();
    if (!IsSlot(day)) return empty;
    std::lock_guard lock(mutex_);
    const auto& records = days_[SlotOf(day)];
    return records ? records : empty;
}

bool MonthIndex::IsLoaded(int day) const {
    std::lock_guard lock(mutex_);
    if (day > 0) return IsSlot(day) && dayLoaded_[SlotOf(day)];
    const auto days = dayLoaded_.begin();
    return std::all_of(days, days + DaysInMonth(year, month), [](bool loaded) { return loaded; });
}

void MonthIndex::SetLoaded(int day, bool loaded) {
    std::lock_guard lock(mutex_);
    dayLoaded_[SlotOf(day)] = loaded;
}

void MonthIndex::Publish(int day, const std::shared_ptr<DayIndex>& records) {
    // Most days of a long life hold nothing, and nothing is what they shall cost.
    const bool isEmpty = records->folder.empty();
    std::lock_guard lock(mutex_);
    days_[SlotOf(day)] = isEmpty ? nullptr : records;
    dayLoaded_[SlotOf(day)] = true;
}

bool MonthIndex::LoadDay(int day, IndexBatch& batch, const StopToken& caller) {
    if (!IsSlot(day)) return false;
    if (IsLoaded(day)) return true;
    const auto records = std::make_shared<DayIndex>();
    records->dataRoot = dataRoot;
    // RequestStop does not reach the load of a day: meant, and held by
    // MonthIndexLoad.StopRequestDoesNotReachTheDayThatIsRead.
    if (!records->LoadUnwritten(year, month, day, StopToken::AnyOf({context.stop, caller}))) return false;
    Publish(day, records);
    batch.Add(records);
    return true;
}

bool MonthIndex::LoadOne(int day, IndexBatch& batch, const StopToken& caller) {
    if (IsSlot(day) && !IsLoaded(day))
        ReportProgress(*context.progress, 0, "Loading (%04d/%02d/%02d)", year, month, day);
    const bool loaded = LoadDay(day, batch, caller);
    ReportProgress(*context.progress, 1, loaded ? "Loaded. (%04d/%02d/%02d)" : "Canceled. (%04d/%02d/%02d)",
                   year, month, day);
    return loaded;
}

bool MonthIndex::LoadAll(IndexBatch& batch, const Stops& stops) {
    const int days = DaysInMonth(year, month);
    for (int day = 1; day <= days; ++day) {
        ReportProgress(*context.progress, static_cast<double>(day - 1) / days, "Loading (%04d/%02d)", year,
                       month);
        if (stops.work.IsStopped() || stops.caller.IsStopped()) {
            ReportProgress(*context.progress, 1, "Canceled. (%04d/%02d/%02d)", year, month, 0);
            return false;
        }
        if (!LoadDay(day, batch, stops.caller)) {
            ReportProgress(*context.progress, 1, "Canceled. (%04d/%02d)", year, month);
            return false;
        }
    }
    ReportProgress(*context.progress, 1, "Loaded. (%04d/%02d)", year, month);
    return true;
}

bool MonthIndex::WaitForGate(const StopToken& caller) const {
    for (int waited = 0; gate_.IsHeld(); waited += kGateLookMs)
        if (waited >= kGateWaitMs || caller.WaitFor(kGateLookMs)) return false;
    return !caller.IsStopped();
}

bool MonthIndex::LoadIn(int day, IndexBatch& batch, Writing writing, const Stops& stops) {
    if (!gate_.Acquire("[Month]Load")) return false;
    busy = true;
    const bool loaded = day > 0 ? LoadOne(day, batch, stops.caller) : LoadAll(batch, stops);
    if (writing == Writing::Now) batch.Finish();
    gate_.Release();
    busy = false;
    return loaded;
}

bool MonthIndex::Load(int day) { return Load(day, BeginWork()); }

bool MonthIndex::Load(int day, const StopToken& work) {
    IndexBatch batch;
    return LoadIn(day, batch, Writing::Now, {work, {}});
}

bool MonthIndex::Load(int day, const StopToken& work, const StopToken& caller) {
    if (!WaitForGate(caller)) return false;
    IndexBatch batch;
    return LoadIn(day, batch, Writing::Now, {work, caller});
}

bool MonthIndex::Load(int day, IndexBatch& batch) {
    return LoadIn(day, batch, Writing::Later, {BeginWork(), {}});
}

bool MonthIndex::EnsureDay(int day, const StopToken& caller) {
    IndexBatch batch;
    const bool loaded = LoadDay(day, batch, caller);
    batch.Finish();
    return loaded;
}

void MonthIndex::ReplaceEntry(int day, const EntryPointer& entry) {
    if (!entry || !IsSlot(day)) return;
    const auto old = Day(day);
    if (!old->Find(entry->path)) return;
    const auto records = std::make_shared<DayIndex>(*old);
    for (EntryPointer& one : records->entries)
        if (one->path == entry->path) one = entry;
    std::lock_guard lock(mutex_);
    // Whoever has published the day in the meantime has seen the file itself.
    if (days_[SlotOf(day)] == old) days_[SlotOf(day)] = records;
}

void MonthIndex::RequestStop() {
    gate_.RequestStop();
    rounds_.StopAllSoFar();
    Log("[Month] Stop indexing (%d/%d)", year, month);
    std::lock_guard lock(mutex_);
    for (const int day : daysInUpdate_) Log("[Day] Stop indexing (%d/%d/%d)", year, month, day);
}

}  // namespace kalmora
