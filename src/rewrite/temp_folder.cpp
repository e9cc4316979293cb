#include "rewrite/temp_folder.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "platform/files.h"
#include "rewrite/rewrite_journal.h"
#include "store/data_folder.h"

namespace kalmora {

int SweepScratchFiles(const std::string& folder) {
    int removed = 0;
    std::optional<std::vector<std::string>> needed;
    for (const files::FolderEntry& entry : files::ListFolder(folder)) {
        if (entry.isFolder || !entry.name.starts_with('$')) continue;
        if (!needed) needed = CopiesInJournal(folder);
        if (std::find(needed->begin(), needed->end(), entry.name) != needed->end()) continue;
        if (files::RemoveFile(files::Join(folder, entry.name)) == files::FileResult::Done) ++removed;
    }
    return removed;
}

int SweepTempFolder(const std::string& folder) {
    constexpr int kLockWaitMs = 200;
    if (!files::IsFolder(folder)) return 0;
    files::FileLock lock;
    if (LockTempFolder(folder, lock, kLockWaitMs) != files::FileResult::Done) return 0;
    return SweepScratchFiles(folder);
}

bool PrepareTempFolder(const std::string& folder) {
    if (!files::IsFolder(folder)) return MakeDirectories(folder);
    SweepTempFolder(folder);
    return true;
}

}  // namespace kalmora
