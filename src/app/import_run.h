// An import in the background: of the import command, and of folders that are dropped.
#pragma once

#include <optional>

#include "import/import.h"

namespace kalmora {

// Imports on a thread of its own; what arrives joins the view, and at the end the user is told what became of
// it. False when an import runs already: the user was told, and nothing is done. GUI thread.
bool StartImportOf(ImportOptions options);
// The same on the calling thread: comes back when it is done. Empty when an import runs already. Any thread.
std::optional<ImportSummary> ImportHere(ImportOptions options);
// Tells the user that another import has to wait. GUI thread.
void SayImportRuns();

}  // namespace kalmora
