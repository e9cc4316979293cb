// The strategies of a rewrite, one record at a time: changes a file as its record says, checks the result,
// puts the old bytes back, and recovers the file after a crash. The caller holds the Temp folder's lock.
#pragma once

#include <string>

#include "platform/edit_file.h"
#include "rewrite/rewrite_journal.h"

namespace kalmora {

// Changes the file. Not for Strategy::Tool. After any other result than Done the file may be torn, unless
// `nothingDone` is set: no byte was changed then, and another strategy may be used.
files::FileResult ApplyRewrite(files::EditFile& file, const RewriteRecord& record,
                               const std::string& tempFolder, bool& nothingDone);

// True when the file holds what the record says that it becomes, read back from it.
bool HoldsNewBytes(const files::EditFile& file, const RewriteRecord& record, const std::string& tempFolder);

enum class Recovery {
    AlreadyWhole,     // the file is the old or the new one
    Restored,         // it was torn: the old or the new file is back
    ChangedByOthers,  // another program has changed or removed it since: that version stays, our copy is kept
    Pending           // it cannot be reached or not be written now: the record stays in the journal
};

// After a crash: restores the old or the new file where it is neither.
Recovery RecoverFile(const RewriteRecord& record, const std::string& tempFolder);
// After a failure: back to the old file, times included, and flushed. `file` is the one that was written.
Recovery UndoRewrite(files::EditFile& file, const RewriteRecord& record, const std::string& tempFolder);

}  // namespace kalmora
