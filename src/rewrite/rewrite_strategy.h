// The roads of safe_rewrite, one note at a time: changing a file as its note says, looking whether that came
// about, putting back what stood there, and telling after a crash what became of it. The caller holds the
// Temp folder's lock.
#pragma once

#include <string>

#include "platform/edit_file.h"
#include "rewrite/rewrite_journal.h"

namespace kalmora {

// Changes the file. Not for the road of a tool. After any other result but Done it may be torn, with one
// exception: `nothingDone` tells that no byte was touched and another road may be taken.
files::FileResult ApplyNote(files::EditFile& file, const RewriteNote& note, const std::string& tempFolder,
                            bool& nothingDone);

// True when the file holds what the note says that it becomes, read back from it.
bool HoldsNewBytes(const files::EditFile& file, const RewriteNote& note, const std::string& tempFolder);

enum class Settled {
    Whole,  // the file is the old or the new one
    Mended,
    LeftAlone,  // somebody else has changed or removed it since: his version stands, and our copy is kept
    Waits       // it cannot be reached or not be written now: the note must stay
};

// After a crash: what became of the file, and the old one or the new one back where it is neither.
Settled SettleNote(const RewriteNote& note, const std::string& tempFolder);
// After a failure: back to the old file, times included, and flushed. `file` is the one that was written.
Settled UndoNote(files::EditFile& file, const RewriteNote& note, const std::string& tempFolder);

}  // namespace kalmora
