// What there is to import, and whether there is room for it.
#pragma once

#include <cstdint>
#include <string>

#include "import/import_options.h"

namespace kalmora {

struct SourceCount {
    int files = 0;
    std::uint64_t bytes = 0;
    std::string meetsTarget;  // a folder that holds the data folder or lies in it; empty when none does
};

// Counts all that the sources hold, and reports the progress.
SourceCount CountSources(const ImportOptions& options);

// True when it fits, as far as is known. Fills `neededBytes` and `freeBytes` of the summary. Makes the
// data folder when it is missing, unless it is a rehearsal.
bool HasRoom(const ImportOptions& options, const SourceCount& count, ImportSummary& summary);

}  // namespace kalmora
