#include "store/date_tree.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <memory>
#include <set>

#include "base/random.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "state/app_state.h"
#include "store/data_folder.h"
#include "store/extension_table.h"

namespace kalmora {

namespace {

constexpr int kPicksBetweenRefreshes = 6;
constexpr int kMaxDraws = 10;
constexpr int kNeverSoOften = 9999;
constexpr int kRestAfterMonthMs = 100;
// No life-log is nested like that; a made-up tree ends here.
constexpr std::size_t kMaxDepth = 64;

// A folder name's leading number; 0 when it has none, so that "abc" is the year 0.
int LeadingNumber(const std::string& name) {
    const long value = std::strtol(name.c_str(), nullptr, 10);
    return static_cast<int>(
        std::clamp<long>(value, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

class FlagWhile {
public:
    explicit FlagWhile(SharedFlag& flag) : flag_(flag), before_(flag.exchange(1)) {}
    ~FlagWhile() { flag_ = before_; }
    FlagWhile(const FlagWhile&) = delete;
    FlagWhile& operator=(const FlagWhile&) = delete;

private:
    SharedFlag& flag_;
    std::uint8_t before_;
};

bool IsShown(const std::string& name) {
    const ObjectKind kind = ClassifyFile(name);
    return kind == ObjectKind::Image || kind == ObjectKind::Text || kind == ObjectKind::Shortcut;
}

}  // namespace

bool DateTree::ScanAll(const std::string& root, const StopToken& stop) {
    const FlagWhile running(State().run.DateScanRunning);
    return Scan(root, true, stop) && Scan(root, false, stop);
}

bool DateTree::Scan(const std::string& root, bool countOnly, const StopToken& stop) {
    const FlagWhile running(State().run.DateScanRunning);
    if (countOnly) {
        dayFolders_ = 0;
    } else {
        daysDone_ = 0;
        std::lock_guard lock(mutex_);
        for (auto& list : lists_) list.clear();
    }
    std::set<int> years;  // "2008" and "2008 old" are the same year: it is walked once
    for (const files::FolderEntry& entry : files::ListFolder(root)) {
        const int year = LeadingNumber(entry.name);
        if (!entry.isFolder || !years.insert(year).second) continue;
        Counts yearSum;
        for (int month = 1; month <= 12; ++month)
            if (!ScanMonth(root, year, month, countOnly, stop, yearSum)) return false;
        if (yearSum.shown > 0) Add({yearSum.files, yearSum.shown, 0, kYearLevel, {year, 0, 0}});
    }
    return true;
}

bool DateTree::ScanMonth(const std::string& root, int year, int month, bool countOnly, const StopToken& stop,
                         Counts& sum) {
    if (stop.IsStopped()) return false;
    if (!files::IsFolder(MakeMonthFolderPath(root, year, month))) return true;
    Counts monthSum;
    for (int day = 1; day <= DaysInMonth(year, month); ++day) {
        if (stop.IsStopped()) return false;
        const std::string folder = MakeDayFolderPath(root, year, month, day);
        if (!files::IsFolder(folder)) continue;
        if (countOnly) {
            ++dayFolders_;
            continue;
        }
        ++daysDone_;
        // Days may have come since they were counted, or never have been counted.
        listener_.OnScanProgress(std::min(1.0, static_cast<double>(daysDone_) / std::max(1, dayFolders_)));
        const Counts counts = CountFolder(folder, stop);
        if (stop.IsStopped()) return false;
        if (counts.shown == 0) continue;
        Add({counts.files, counts.shown, 0, kDayLevel, {year, month, day}});
        monthSum.files += counts.files;
        monthSum.shown += counts.shown;
    }
    if (monthSum.shown == 0) return true;
    Add({monthSum.files, monthSum.shown, 0, kMonthLevel, {year, month, 0}});
    sum.files += monthSum.files;
    sum.shown += monthSum.shown;
    SleepMs(kRestAfterMonthMs);
    return true;
}

DateTree::Counts DateTree::CountFolder(const std::string& folder, const StopToken& stop) {
    struct Waiting {
        std::string path;
        std::size_t depth;
    };
    Counts counts;
    std::vector<Waiting> waiting{{folder, 0}};
    while (!waiting.empty() && !stop.IsStopped()) {
        const Waiting next = std::move(waiting.back());
        waiting.pop_back();
        for (const files::FolderEntry& entry : files::ListFolder(next.path)) {
            if (entry.isFolder) {
                if (!entry.isLink && next.depth < kMaxDepth)
                    waiting.push_back({files::Join(next.path, entry.name), next.depth + 1});
                continue;
            }
            ++counts.files;
            if (IsShown(entry.name)) ++counts.shown;
        }
    }
    return counts;
}

void DateTree::Add(const DateNode& node) {
    std::lock_guard lock(mutex_);
    List(node.level).push_back(node);
}

void DateTree::RefreshToday() {
    if (State().run.DateScanRunning) return;  // the scan will find today itself, and would list it twice
    const auto has = [](const std::vector<DateNode>& list, const CalendarDate& date) {
        return std::find_if(list.begin(), list.end(),
                            [&](const DateNode& node) { return node.date == date; });
    };
    const SystemTime now = LocalTime();
    const CalendarDate today{now.year, now.month, now.day};
    {
        std::lock_guard lock(mutex_);
        if (has(List(kDayLevel), today) != List(kDayLevel).end()) return;
    }
    const std::string folder = MakeDayFolderPath(MainRoot(), today.year, today.month, today.day);
    if (!files::IsFolder(folder)) return;
    const Counts counts = CountFolder(folder, {});

    std::lock_guard lock(mutex_);
    if (has(List(kDayLevel), today) != List(kDayLevel).end()) return;
    // A day without anything to show is listed here, unlike in the scan, and the year is left as it was: both
    // meant, and held by DateTreePick.TodayIsListed...
    List(kDayLevel).push_back({counts.files, counts.shown, 0, kDayLevel, today});
    const CalendarDate thisMonth{today.year, today.month, 0};
    auto month = std::find_if(List(kMonthLevel).begin(), List(kMonthLevel).end(),
                              [&](const DateNode& node) { return node.date == thisMonth; });
    if (month == List(kMonthLevel).end()) {
        List(kMonthLevel).push_back({counts.files, counts.shown, 0, kMonthLevel, thisMonth});
    } else {
        month->fileCount += counts.files;
        month->shownCount += counts.shown;
    }
}

std::optional<CalendarDate> DateTree::Pick(int level) {
    if (level < kYearLevel || level > kDayLevel) return std::nullopt;
    // By the clock in force, so that a fixed clock gives a fixed sequence.
    SeedRandom(static_cast<unsigned>(ToFileTime(LocalTime()).ticks / 10000));
    bool refresh = false;
    {
        std::lock_guard lock(mutex_);
        refresh = picksSinceRefresh_ >= kPicksBetweenRefreshes;
        picksSinceRefresh_ = refresh ? 0 : picksSinceRefresh_ + 1;
    }
    if (refresh) RefreshToday();

    CalendarDate picked;
    {
        std::lock_guard lock(mutex_);
        std::vector<DateNode>& list = List(level);
        if (list.empty()) return std::nullopt;
        DateNode* found = nullptr;
        int lowest = kNeverSoOften;
        for (int draw = 0; draw < kMaxDraws && lowest > 0; ++draw) {
            DateNode& node = list[static_cast<std::size_t>(Random()) % list.size()];
            if (node.timesChosen >= lowest) continue;
            lowest = node.timesChosen;
            found = &node;
        }
        if (!found) return std::nullopt;
        ++found->timesChosen;
        picked = found->date;
    }
    if (level == kDayLevel) listener_.OnDayPicked();
    return picked;
}

std::optional<int> DateTree::CountOf(int year, int month, int day) const {
    const int level = month == 0 && day == 0 ? kYearLevel : day == 0 ? kMonthLevel : kDayLevel;
    std::lock_guard lock(mutex_);
    for (const DateNode& node : List(level)) {
        // Past the year the search ends, although today's node may follow: meant.
        if (node.date.year > year) return std::nullopt;
        if (node.date == CalendarDate{year, month, day}) return node.shownCount;
    }
    return std::nullopt;
}

std::vector<DateNode> DateTree::Nodes(int level) const {
    if (level < kYearLevel || level > kDayLevel) return {};
    std::lock_guard lock(mutex_);
    return List(level);
}

DateTreeListener& NoDateTreeListener() {
    static auto* const none = new DateTreeListener;  // workers may outlive main
    return *none;
}

namespace {

// The present one is the last; those before are kept, since a thread may still be leaving one.
std::vector<std::unique_ptr<DateTree>>& Trees() {
    static auto* const trees = [] {
        auto* const made = new std::vector<std::unique_ptr<DateTree>>;
        made->push_back(std::make_unique<DateTree>());
        return made;
    }();
    return *trees;
}

}  // namespace

DateTree& TheDateTree() { return *Trees().back(); }

void ResetDateTree(DateTreeListener& listener) { Trees().push_back(std::make_unique<DateTree>(listener)); }

}  // namespace kalmora
