// Comparing a day's records with its folder.
//
//   in the folder                     in the index   after a load            after an update
//   a file, its last-write time       a record       served                  kept, not read
//   a file, another time              a record       served as it was        read again, written
//   a file, its last-write time       nonsense       served as it was        read again, written
//   a file                            none           not seen                read, added, written
//   none                              a record       served                  dropped, written
//   no folder                         gone with it   an empty day            an empty day
#include <algorithm>

#include "base/log.h"
#include "index/day_index.h"
#include "platform/files.h"
#include "store/data_folder.h"

namespace kalmora {

bool DayIndex::Update(int updateYear, int updateMonth, int updateDay, const StopToken& stop) {
    if (UpdateUnwritten(updateYear, updateMonth, updateDay, stop) && dirty) Write();
    return true;
}

bool DayIndex::UpdateUnwritten(int updateYear, int updateMonth, int updateDay, const StopToken& stop) {
    year = updateYear;
    month = updateMonth;
    day = updateDay;
    Log("Update: %d/%d/%d", year, month, day);
    const std::string root = dataRoot.empty() ? CurrentDataRoot() : dataRoot;
    SetFolder(root.empty() ? std::string() : FolderBelow(root));
    return UpdateIndex(stop);
}

bool DayIndex::UpdateIndex(const StopToken& stop) {
    if (!files::IsFolder(folder)) {
        Clear();
        return true;
    }
    Log("UpdateIndex: %s", folder.c_str());
    FolderWalk walk;
    walk.stop = stop;
    walk.seen.resize(entries.size());
    walk.leavesOutGone = true;
    const WalkEnd end = WalkFolder(folder, walk);
    std::vector<EntryPointer> unseen;
    for (std::size_t i = 0; i < entries.size(); ++i)
        if (!walk.seen[i]) unseen.push_back(entries[i]);
    TakeIn(walk.added);
    if (end != WalkEnd::Finished) return false;
    if (stop.IsStopped()) {
        Log("Stop: Updating!");
        return false;
    }
    return DropGoneFiles(unseen, stop);
}

// The walk may have left out files that exist (those that follow a sub-folder), so each is looked for.
bool DayIndex::DropGoneFiles(const std::vector<EntryPointer>& unseen, const StopToken& stop) {
    std::vector<EntryPointer> gone;  // in byte order of the path, as `unseen` is
    bool finished = true;
    for (const EntryPointer& entry : unseen) {
        if (stop.IsStopped()) {
            Log("Stop: UpdateIndex");
            finished = false;
            break;
        }
        if (!files::Exists(entry->path)) gone.push_back(entry);
    }
    if (gone.empty()) return finished;
    // Their places in the order of time stay until the day is loaded again.
    std::erase_if(entries, [&gone](const EntryPointer& entry) {
        return std::binary_search(
            gone.begin(), gone.end(), entry,
            [](const EntryPointer& a, const EntryPointer& b) { return a->path < b->path; });
    });
    dirty = true;
    return finished;
}

}  // namespace kalmora
