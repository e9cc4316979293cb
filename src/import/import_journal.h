// The journal of moves from one volume to another: which sources are about to be removed because their copies
// lie verified in the calendar. A program that is killed between the two leaves a file on both sides; the
// next import finishes what was begun.
//
// One file in the Temp folder, "import.journal", held locked by the import that uses it:
//
//     "KMIMPORT1 ", CRC-32 of the body as 8 hexadecimal digits, blank, its length as 20 digits, line feed;
//     the body: for each file its size, blank, its last write in 100 ns since 1601, zero byte, the source's
//     path, zero byte, the target's path, zero byte
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/edit_file.h"

namespace kalmora {

struct MoveRecord {
    std::string source, target;
    std::uint64_t size = 0;  // of the source, when it was copied
    FileTime written;
};

std::string MakeImportJournal(std::span<const MoveRecord> records);
// Nothing for what is no journal, or one whose writing was cut off.
std::vector<MoveRecord> ParseImportJournal(std::string_view bytes);

class ImportJournal {
public:
    // Makes the file when it is missing. False when it cannot be had or another import uses it.
    bool Open(const std::string& tempFolder);
    bool IsOpen() const { return file_.IsOpen(); }

    // Removes each source that is as it was recorded and whose target holds the same bytes. How many.
    int Recover();
    // On the disk when it returns Done.
    files::FileResult Write(std::span<const MoveRecord> records);
    void Clear();

private:
    files::EditFile file_;
};

}  // namespace kalmora
