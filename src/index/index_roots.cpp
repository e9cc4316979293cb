// The two index managers of the program, and what is asked of both.
#include <atomic>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

#include "base/log.h"
#include "index/index_batch.h"
#include "index/index_manager.h"
#include "index/index_tree.h"
#include "platform/files.h"
#include "state/app_state.h"
#include "store/data_folder.h"

namespace kalmora {

namespace {

std::mutex madeMutex;
// Guarded by madeMutex for changes. Never destroyed: threads may outlive main.
std::atomic<IndexManager*> mainIndex = nullptr, otherIndex = nullptr;

// Of both; guarded by madeMutex.
WorkContext& TheContext() {
    static auto* const context = new WorkContext;
    return *context;
}

IndexManager& TheOne(std::atomic<IndexManager*>& one, const std::function<std::string()>& root) {
    if (IndexManager* const made = one) return *made;
    std::lock_guard lock(madeMutex);
    if (!one) one = new IndexManager(root(), TheContext());
    return *one;
}

// The manager in whose tree the path lies; null for none.
IndexManager* ManagerOf(const std::string& path) {
    if (IsBelow(path, MainIndex().dataRoot)) return &MainIndex();
    if (IsBelow(path, OtherIndex().dataRoot)) return &OtherIndex();
    return nullptr;
}

}  // namespace

IndexManager& MainIndex() { return TheOne(mainIndex, MainRoot); }

IndexManager& OtherIndex() {
    return TheOne(otherIndex, [] { return State().settings.OtherDirectory; });
}

void ResetIndexes(const WorkContext& context) {
    // Kept, not destroyed: a thread of before may be on its way out of one.
    static auto* const former = new std::vector<std::unique_ptr<IndexManager>>;
    std::lock_guard lock(madeMutex);
    TheContext() = context;
    for (std::atomic<IndexManager*>* one : {&mainIndex, &otherIndex})
        if (IndexManager* const made = one->exchange(nullptr)) former->emplace_back(made);
}

IndexManager* OtherIndexInUse() { return OtherRoot().empty() ? nullptr : &OtherIndex(); }

void StopIndexing(const char* reason) {
    Log("[Stop Indexing] %s", reason ? reason : "none");
    MainIndex().RequestStop();
    if (State().settings.UseOtherFolder) OtherIndex().RequestStop();
}

void AddFileToIndex(const std::string& path) { AddFilesToIndex({path}); }

void AddFilesToIndex(const std::vector<std::string>& paths) {
    std::map<std::pair<IndexManager*, CalendarDate>, std::vector<std::string>> days;
    for (const std::string& path : paths) {
        IndexManager* const manager = ManagerOf(path);
        const auto date = manager ? ParsePathDate(path) : std::nullopt;
        if (date) days[{manager, *date}].push_back(path);
    }
    for (const auto& [day, files] : days) day.first->AddFiles(day.second, files);
}

void IndexManager::AddFiles(const CalendarDate& date, const std::vector<std::string>& paths) {
    if (date.month < 1 || date.month > 12 || date.day < 1 || date.day > DaysInMonth(date.year, date.month))
        return;
    const MonthPointer month = AddBlank(date.year, date.month);
    // From the index file and not from memory: it has what was added since the month was loaded.
    DayIndex records;
    records.dataRoot = dataRoot;
    if (!records.Load(date.year, date.month, date.day, context.stop)) return;
    for (const std::string& path : paths) {
        const EntryPointer before = records.Find(path);
        const EntryPointer entry = records.Add(path);
        if (before && entry != before) month->ReplaceEntry(date.day, entry);
    }
    records.Write();
}

bool IndexManager::LoadMonths(const std::vector<CalendarDate>& months) {
    // Into the list first, so that its order does not hang on which thread is faster.
    for (const CalendarDate& month : months) MoveToFront(AddBlank(month.year, month.month));
    return RunOverMonths(months, context.stop, [this](const CalendarDate& month, IndexBatch& batch) {
        const MonthPointer found = FindMonth(month.year, month.month);
        return found && found->Load(0, batch);
    });
}

}  // namespace kalmora
