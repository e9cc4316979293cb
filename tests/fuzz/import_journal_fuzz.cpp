// The journal of moves, as a crash or a stranger may have left it.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "import/import_journal.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const auto notes = kalmora::ParseImportJournal(bytes);
    // What was read comes back from what is written.
    const auto again = kalmora::ParseImportJournal(kalmora::MakeImportJournal(notes));
    if (again.size() != notes.size()) std::abort();
    for (std::size_t i = 0; i < notes.size(); ++i)
        if (again[i].source != notes[i].source || again[i].target != notes[i].target ||
            again[i].size != notes[i].size || again[i].written != notes[i].written)
            std::abort();
    return 0;
}
