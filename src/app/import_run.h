// An import in the background: of the import command, and of folders that are dropped.
#pragma once

#include <optional>

#include "import/import.h"

namespace kalmora {

struct CalendarStore;

// Imports on a thread of its own. What arrives joins the view; at the end the result is reported to the user.
// False, and reported, when an import runs already. GUI thread.
bool StartImportOf(CalendarStore& calendar, ImportOptions options);
// The same on the calling thread: comes back when it is done. Empty when an import runs already. Any thread.
std::optional<ImportSummary> ImportHere(CalendarStore& calendar, ImportOptions options);
// Reports to the user that another import has to wait. GUI thread.
void SayImportRuns();

}  // namespace kalmora
