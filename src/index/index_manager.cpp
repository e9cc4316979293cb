#include "index/index_manager.h"

#include <algorithm>
#include <utility>

#include "base/log.h"
#include "platform/clock.h"
#include "platform/files.h"

namespace kalmora {

namespace {

constexpr int kMonths = 12;
constexpr double kNeverUpdated = 360000;  // seconds

bool LoadDays(MonthIndex& month, int day, const StopToken& work, const StopToken* caller) {
    const StopToken both = StopToken::AnyOf({work, month.BeginWork()});
    return caller ? month.Load(day, both, *caller) : month.Load(day, both);
}

bool IsMonth(const MonthIndex& one, int year, int month) { return one.year == year && one.month == month; }

}  // namespace

// ---- the list

MonthPointer IndexManager::FindMonth(int year, int month) const {
    std::lock_guard lock(mutex_);
    const auto place = std::find_if(months_.begin(), months_.end(),
                                    [&](const MonthPointer& one) { return IsMonth(*one, year, month); });
    return place == months_.end() ? nullptr : *place;
}

std::vector<MonthPointer> IndexManager::Months() const {
    std::lock_guard lock(mutex_);
    return {months_.begin(), months_.end()};
}

void IndexManager::MoveToFront(const MonthPointer& month) {
    std::lock_guard lock(mutex_);
    const auto place = std::find(months_.begin(), months_.end(), month);
    if (place != months_.end()) months_.splice(months_.begin(), months_, place);
}

MonthPointer IndexManager::AddBlank(int year, int month) {
    std::lock_guard lock(mutex_);
    // Another thread may have added it first.
    for (const MonthPointer& one : months_)
        if (IsMonth(*one, year, month)) return one;
    return months_.emplace_front(std::make_shared<MonthIndex>(year, month, dataRoot, context));
}

MonthPointer IndexManager::GetMonthCopy(int year, int month) {
    MonthPointer found = FindMonth(year, month);
    if (!found) found = AddBlank(year, month);
    return std::make_shared<MonthIndex>(*found);
}

bool IndexManager::IsLoaded(int year, int month, int day) const {
    if (year == 0) return false;
    const auto isLoaded = [&](int number, int dayNumber) {
        const MonthPointer found = FindMonth(year, number);
        return found && found->IsLoaded(dayNumber);
    };
    if (month != 0) return isLoaded(month, day);
    for (int number = 1; number <= kMonths; ++number)
        if (!isLoaded(number, 0)) return false;
    return true;
}

double IndexManager::SecondsSinceUpdate(int year, int month) const {
    const MonthPointer found = FindMonth(year, month);
    if (!found) return kNeverUpdated;
    return static_cast<int>(UptimeMs() / 1000) - found->lastUpdateSeconds.load();
}

// ---- loading

// A month that is worked on beside the list: known to stop requests while it is.
class IndexManager::BesideList {
public:
    BesideList(IndexManager& owner, int year, int month)
        : owner_(owner), month_(std::make_shared<MonthIndex>(year, month, owner.dataRoot, owner.context)) {
        owner_.AddBlank(year, month);
        std::lock_guard lock(owner_.mutex_);
        owner_.besideList_.push_back(month_);
    }
    ~BesideList() {
        std::lock_guard lock(owner_.mutex_);
        std::erase(owner_.besideList_, month_);
    }
    BesideList(const BesideList&) = delete;
    BesideList& operator=(const BesideList&) = delete;
    MonthIndex* operator->() const { return month_.get(); }
    MonthIndex& operator*() const { return *month_; }

private:
    IndexManager& owner_;
    const MonthPointer month_;
};

// A call of Load or Update while it runs: known to stop requests by its target.
class IndexManager::Running {
public:
    Running(IndexManager& owner, int year, int month) : owner_(owner), target_{year, month, 0} {
        std::lock_guard lock(owner_.mutex_);
        owner_.target_ = target_;
        owner_.running_.push_back(target_);
    }
    ~Running() {
        std::lock_guard lock(owner_.mutex_);
        owner_.running_.erase(std::find(owner_.running_.begin(), owner_.running_.end(), target_));
    }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

private:
    IndexManager& owner_;
    const CalendarDate target_;
};

// False when stopped or refused.
bool IndexManager::LoadOnFirstAccess(int year, int month, int day, const StopToken& work,
                                     const StopToken* caller) {
    // What is read here is dropped, and the listed record stays blank: the first access to a month makes its
    // index files and no more. Meant, and held by IndexManagerLoad.FirstTouchLeavesABlankMonth.
    const BesideList beside(*this, year, month);
    return LoadDays(*beside, day, work, caller) && !work.IsStopped();
}

bool IndexManager::LoadMonth(int year, int month, int day, const StopToken& work, const StopToken* caller) {
    if (work.IsStopped()) return false;
    const MonthPointer found = FindMonth(year, month);
    if (!found) return LoadOnFirstAccess(year, month, day, work, caller);
    if (!LoadDays(*found, day, work, caller)) return false;
    if (day > 0 && work.IsStopped()) return false;
    MoveToFront(found);
    return true;
}

void IndexManager::Load(int year, int month, int day) { LoadFor(year, month, day, nullptr); }

void IndexManager::Load(int year, int month, int day, const StopToken& caller) {
    LoadFor(year, month, day, &caller);
}

void IndexManager::LoadFor(int year, int month, int day, const StopToken* caller) {
    if (!files::IsFolder(dataRoot)) return;
    const StopToken work = BeginWork();
    const Running running(*this, year, month);
    Log("[IndexManager] Load (%d/%d)", year, month);
    if (month == 0 && day == 0) {
        for (int number = 1; number <= kMonths; ++number)
            if (!LoadMonth(year, number, 0, work, caller)) break;
    } else {
        LoadMonth(year, month, day, work, caller);
    }
}

// ---- updating

void IndexManager::RequestUpdate(const CalendarDate& date) {
    std::lock_guard lock(mutex_);
    pending_.push_back(date);
}

bool IndexManager::TakeRequest(CalendarDate& date) {
    std::lock_guard lock(mutex_);
    if (pending_.empty()) return false;
    date = pending_.front();
    pending_.erase(pending_.begin());
    return true;
}

// What an update of that much makes unnecessary.
void IndexManager::ForgetRequests(int year, int month, int day) {
    std::lock_guard lock(mutex_);
    std::erase_if(pending_, [&](const CalendarDate& one) {
        if (one.year != year) return false;
        return one.month == 0 || (one.month == month && (one.day == 0 || one.day == day));
    });
}

void IndexManager::UpdateOnFirstAccess(int year, int month, int day, const StopToken& work) {
    const BesideList beside(*this, year, month);
    if (day <= 0) ForgetRequests(year, month, day);
    const StopToken both = StopToken::AnyOf({work, beside->BeginWork()});
    const bool finished = beside->Load(day, both) && !work.IsStopped() && beside->Update(day, both);
    if (finished && !work.IsStopped()) beside->WriteLoadedDays();
}

void IndexManager::Update(int year, int month, int day, const StopToken& work) {
    if (!files::IsFolder(dataRoot)) return;
    const Running running(*this, year, month);
    Log("[IndexManager] Update (%d/%d)", year, month);
    CalendarDate date{year, month, day};
    if (year == 0 && month == 0 && day > 0 && !TakeRequest(date)) return;
    if (work.IsStopped()) return;
    const MonthPointer found = FindMonth(date.year, date.month);
    if (!found) {
        UpdateOnFirstAccess(date.year, date.month, date.day, work);
        return;
    }
    if (date.day <= 0) ForgetRequests(date.year, date.month, date.day);
    const StopToken both = StopToken::AnyOf({work, found->BeginWork()});
    if (!both.IsStopped()) found->Update(date.day, both);
}

// ---- stopping

CalendarDate IndexManager::CurrentTarget() const {
    std::lock_guard lock(mutex_);
    return target_;
}

bool IndexManager::IsBusy() const {
    std::lock_guard lock(mutex_);
    return !running_.empty();
}

void IndexManager::RequestStop() {
    std::vector<MonthPointer> working;
    {
        std::lock_guard lock(mutex_);
        rounds_.StopAllSoFar();
        const auto isTarget = [this](const MonthPointer& one) {
            return std::any_of(running_.begin(), running_.end(), [&](const CalendarDate& target) {
                return one->year == target.year && (target.month == 0 || one->month == target.month);
            });
        };
        std::copy_if(months_.begin(), months_.end(), std::back_inserter(working), isTarget);
        std::copy_if(besideList_.begin(), besideList_.end(), std::back_inserter(working), isTarget);
    }
    for (const MonthPointer& month : working) month->RequestStop();
}

}  // namespace kalmora
