// The result for one file that was to be imported.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "base/dates.h"
#include "base/system_time.h"
#include "platform/files.h"
#include "rewrite/safe_rewrite.h"
#include "store/extension_table.h"

namespace kalmora {

enum class ImportResult {
    Copied,
    Moved,
    Linked,      // a shortcut to it lies in its day
    Same,        // the day has it already
    Differs,     // it counts as the same as a file of the day, and is not
    InPlace,     // it lay in its day's folder
    Removed,     // a picture cache of another program, which is not wanted
    PassedOver,  // nothing that is imported: a pipe, an index, another program's scratch file, a trash folder
    Followed,    // a link to a folder: what lies there comes in
    VisitedOnce,  // a folder to which another way led before
    Gone,         // it was there when the folder was listed
    Denied,
    NoSpace,
    Taken,        // no name is left for it
    Changed,      // another program wrote it meanwhile
    Unreadable,   // a folder that cannot be listed
    MeetsTarget,  // a folder that holds the data folder or lies in it
    Failed        // the disk failed, or no date is known
};

// "copied", "same file" and so on: for results, logs and messages.
const char* NameOf(ImportResult result);
// A file is in the calendar now that was not there before.
inline bool HasArrived(ImportResult result) {
    return result == ImportResult::Copied || result == ImportResult::Moved || result == ImportResult::Linked;
}
// The user would want to know.
inline bool IsFailure(ImportResult result) { return result >= ImportResult::Gone; }
ImportResult ImportResultOf(files::FileResult result);

struct ImportedFile {
    std::string source;
    std::string target;    // its path in the calendar, or empty; of a shortcut the .lnk
    std::string existing;  // of Same and Differs: the file of the day
    std::string words;     // that are to be added to its comment, or empty
    std::uint64_t bytes = 0;
    ImportResult result = ImportResult::Failed;
    bool isFolder = false;     // no file: the report is of a folder
    bool isProtected = false;  // it may not be written: it stays, and its copy is a plain file
    bool sourceStays = false;  // although it was to be taken away
    std::optional<RewriteResult> commentResult;  // when words were to be added to its comment
    ObjectKind kind = ObjectKind::Unknown;
    SystemTime taken;  // its date; zero when none was found
    CalendarDate day;  // the day that it belongs to
};

}  // namespace kalmora
