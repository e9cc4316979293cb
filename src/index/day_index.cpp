#include "index/day_index.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "base/dates.h"
#include "base/log.h"
#include "index/index_nonsense.h"
#include "index/index_text.h"
#include "platform/abandoned_files.h"
#include "platform/files.h"
#include "store/data_folder.h"
#include "store/file_helpers.h"

namespace kalmora {

namespace {

constexpr int kDeepestFolder = 64;  // below the day's; no one nests deeper, and a walk has to end

bool IsLeftOut(std::string_view extension) {
    return extension == "log" || extension == "db" || extension == "cidx";
}

bool PathLess(const EntryPointer& a, const EntryPointer& b) { return a->path < b->path; }

bool EarlierDate(const IndexTimeKey& a, const IndexTimeKey& b) {
    return CompareSystemTimes(a.Date(), b.Date()) < 0;
}

bool HasSameRecord(const IndexEntry& a, const IndexEntry& b, const std::string& folder) {
    std::string textOfA, textOfB;
    AppendIndexRecord(textOfA, a, folder);
    AppendIndexRecord(textOfB, b, folder);
    return textOfA == textOfB;
}

// The position of the path, or where it would be.
std::vector<EntryPointer>::const_iterator PlaceOf(const std::vector<EntryPointer>& entries,
                                                  std::string_view path) {
    return std::lower_bound(entries.begin(), entries.end(), path,
                            [](const EntryPointer& entry, std::string_view wanted) {
                                return std::string_view(entry->path) < wanted;
                            });
}

// Sorts by path; of several records of one path the last one stays.
void SortByPath(std::vector<EntryPointer>& entries) {
    if (!std::is_sorted(entries.begin(), entries.end(), PathLess))
        std::stable_sort(entries.begin(), entries.end(), PathLess);
    const auto isReplaced = [&entries](const EntryPointer& entry) {
        const auto next = &entry - entries.data() + 1;
        return static_cast<std::size_t>(next) < entries.size() &&
               entries[static_cast<std::size_t>(next)]->path == entry->path;
    };
    std::size_t kept = 0;
    for (const EntryPointer& entry : entries) {
        if (isReplaced(entry)) continue;
        const auto at = static_cast<std::size_t>(&entry - entries.data());
        if (at != kept) entries[kept] = std::move(entries[at]);
        ++kept;
    }
    entries.resize(kept);
}

}  // namespace

void DayIndex::SortTimeOrder() {
    // Stable, so that files of one date keep the order in which they came.
    if (!std::is_sorted(timeOrder.begin(), timeOrder.end(), EarlierDate))
        std::stable_sort(timeOrder.begin(), timeOrder.end(), EarlierDate);
}

DayIndex::DayIndex(const DayIndex& other)
    : entries(other.entries),
      timeOrder(other.timeOrder),
      folder(other.folder),
      dataRoot(other.dataRoot),
      indexPath(other.indexPath),
      year(other.year),
      month(other.month),
      day(other.day),
      dirty(other.dirty.load()) {}

DayIndex& DayIndex::operator=(const DayIndex& other) {
    entries = other.entries;
    timeOrder = other.timeOrder;
    folder = other.folder;
    dataRoot = other.dataRoot;
    indexPath = other.indexPath;
    year = other.year;
    month = other.month;
    day = other.day;
    dirty = other.dirty.load();
    return *this;
}

void DayIndex::Clear() {
    entries.clear();
    timeOrder.clear();
    folder.clear();
    dataRoot.clear();
    indexPath.clear();
    dirty = false;
}

void DayIndex::SetFolder(const std::string& path) {
    folder = path;
    indexPath = files::Join(path, kIndexFileName);
}

// Empty for what is no day of any month: the year's own folder, or the month's, is no day's.
std::string DayIndex::FolderBelow(const std::string& root) const {
    const bool isDay = month >= 1 && month <= 12 && day >= 1 && day <= DaysInMonth(year, month);
    return isDay ? MakeDayFolderPath(root, year, month, day) : std::string();
}

bool DayIndex::Load(int loadYear, int loadMonth, int loadDay, const StopToken& stop) {
    const bool loaded = LoadUnwritten(loadYear, loadMonth, loadDay, stop);
    if (loaded && dirty) Write();
    return loaded;
}

bool DayIndex::LoadUnwritten(int loadYear, int loadMonth, int loadDay, const StopToken& stop) {
    year = loadYear;
    month = loadMonth;
    day = loadDay;
    const std::string root = dataRoot.empty() ? CurrentDataRoot() : dataRoot;
    Clear();
    if (root.empty()) return false;
    const std::string path = FolderBelow(root);
    if (path.empty() || !files::IsFolder(path)) return true;
    SetFolder(path);

    const auto bytes = files::ReadWholeFile(indexPath, kLongestIndex);
    if (!bytes) return Rebuild(stop);
    std::vector<EntryPointer> records;
    switch (ReadIndexText(*bytes, folder, stop, records)) {
        case IndexReading::OtherVersion:
            return Rebuild(stop);
        case IndexReading::Stopped:
            Log("[Stop] DayIndex(%d/%d/%d).Load(%s)", year, month, day, indexPath.c_str());
            TakeIn(records);
            return false;
        case IndexReading::Done:
            break;
    }
    timeOrder.reserve(records.size());
    for (const EntryPointer& record : records) timeOrder.push_back({record});
    SortTimeOrder();
    entries = std::move(records);
    SortByPath(entries);
    entries.shrink_to_fit();
    return true;
}

bool DayIndex::Rebuild(const StopToken& stop) {
    FolderWalk walk;
    walk.stop = stop;
    const WalkEnd end = WalkFolder(folder, walk);
    // A folder that may not be looked into is an empty day, and no reason to give the whole month up.
    dirty = end == WalkEnd::Finished || !walk.added.empty();
    TakeIn(walk.added);
    if (end != WalkEnd::Stopped && !stop.IsStopped()) return true;
    dirty = false;
    return false;
}

bool DayIndex::LoadFolder(const std::string& path, const StopToken& stop) {
    FolderWalk walk;
    walk.stop = stop;
    walk.seen.resize(entries.size());
    const WalkEnd end = WalkFolder(path, walk);
    TakeIn(walk.added);
    return end == WalkEnd::Finished;
}

DayIndex::WalkEnd DayIndex::WalkFolder(const std::string& path, FolderWalk& walk) {
    files::FileResult listing = files::FileResult::Done;
    const std::vector<files::FolderEntry> found = files::ListFolder(path, &listing);
    if (listing != files::FileResult::Done) return WalkEnd::Unreadable;
    for (const files::FolderEntry& entry : found) {
        if (walk.stop.IsStopped()) {
            Log("[Stop] LoadFolder (%s)", path.c_str());
            return WalkEnd::Stopped;
        }
        if (!entry.isFolder) {
            if (files::HasScratchName(entry.name))
                files::RemoveAbandoned(path, entry.name);
            else if (!IsLeftOut(GetExtension(entry.name)))
                Meet(files::Join(path, entry.name), walk);
            continue;
        }
        if (entry.name == kIndexFileName || walk.depth == kDeepestFolder) continue;
        if (entry.isLink) {
            if (WalkLink(files::Join(path, entry.name), walk) == WalkEnd::Stopped) return WalkEnd::Stopped;
            continue;
        }
        ++walk.depth;
        // What follows a sub-folder is not visited: meant, and held by
        // DayIndexFolder.WalkEndsAfterTheFirstSubFolder.
        return WalkFolder(files::Join(path, entry.name), walk);
    }
    return WalkEnd::Finished;
}

// Entered the first time that a link leads there, as the views do, so that links which form a circle end.
// What cannot be looked into is passed over.
DayIndex::WalkEnd DayIndex::WalkLink(const std::string& path, FolderWalk& walk) {
    const auto status = files::GetStatus(path);
    if (!status) return WalkEnd::Finished;
    const std::pair target(status->volume, status->identity);
    if (std::find(walk.links.begin(), walk.links.end(), target) != walk.links.end()) return WalkEnd::Finished;
    walk.links.push_back(target);
    const int depth = walk.depth++;
    const WalkEnd end = WalkFolder(path, walk);
    walk.depth = depth;
    return end;
}

void DayIndex::Meet(const std::string& path, FolderWalk& walk) {
    const auto place = PlaceOf(entries, path);
    if (place == entries.end() || (*place)->path != path) {
        auto entry = std::make_shared<IndexEntry>();
        entry->path = path;
        // A file that cannot be looked at has a record too, where it is not going to be dropped at once.
        if (!entry->Refresh() && walk.leavesOutGone && !files::Exists(path)) return;
        walk.added.push_back(std::move(entry));
        dirty = true;
        return;
    }
    const auto at = static_cast<std::size_t>(place - entries.begin());
    walk.seen[at] = true;
    const bool isStale = entries[at]->IsStale();
    if (!isStale && !IsNonsense(*entries[at])) return;
    auto again = std::make_shared<IndexEntry>(*entries[at]);
    walk.seen[at] = again->Refresh();
    // A photo may hold nonsense for good; that is no reason to write the index each time.
    if (!isStale && HasSameRecord(*again, *entries[at], folder)) return;
    entries[at] = std::move(again);
    dirty = true;
}

void DayIndex::TakeIn(std::vector<EntryPointer>& added) {
    if (added.empty()) return;
    // A file that had gone and is back must not be in the order of time twice.
    if (timeOrder.size() > entries.size()) {
        std::unordered_set<std::string_view> paths;
        for (const EntryPointer& entry : added) paths.insert(entry->path);
        std::erase_if(timeOrder, [&](const IndexTimeKey& key) { return paths.contains(key.Path()); });
    }
    timeOrder.reserve(timeOrder.size() + added.size());
    for (const EntryPointer& entry : added) timeOrder.push_back({entry});
    SortTimeOrder();
    entries.insert(entries.end(), std::make_move_iterator(added.begin()),
                   std::make_move_iterator(added.end()));
    SortByPath(entries);
    added.clear();
}

EntryPointer DayIndex::Add(const std::string& path) {
    FolderWalk walk;
    walk.seen.resize(entries.size());
    Meet(path, walk);
    TakeIn(walk.added);
    return Find(path);
}

EntryPointer DayIndex::Find(std::string_view path) const {
    const auto place = PlaceOf(entries, path);
    return place != entries.end() && (*place)->path == path ? *place : nullptr;
}

std::string DayIndex::MakeText() const { return MakeText(kLongestIndex); }

std::string DayIndex::MakeText(std::size_t longest) const {
    constexpr std::size_t kUsualRecord = 200;
    std::string text;
    // A file that the reader would refuse is never written.
    for (std::size_t comment = kLongestComment;; comment /= 2) {
        text = IndexHeader();
        text.reserve(timeOrder.size() * kUsualRecord);
        // Keys of files that have gone find no entry and are passed over.
        for (const IndexTimeKey& key : timeOrder)
            if (const auto place = PlaceOf(entries, key.Path());
                text.size() <= longest && place != entries.end() && (*place)->path == key.Path())
                AppendIndexRecord(text, **place, folder, comment);
        if (text.size() <= longest) return text;
        if (comment == 0) return {};
    }
}

bool DayIndex::Write() {
    if (indexPath.empty()) return false;
    if (!dirty || !files::IsFolder(folder)) return true;
    const std::string text = MakeText();
    if (text.empty()) return false;
    const files::NewContent content{indexPath, text};
    if (files::WriteWholeFiles({&content, 1}).front() != files::FileResult::Done) return false;
    dirty = false;
    return true;
}

}  // namespace kalmora
