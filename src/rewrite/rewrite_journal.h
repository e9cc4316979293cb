// The journal of rewrites: what is about to be changed in the user's files, and what was there, recorded
// and flushed before the first byte is changed. A program that is killed, or a machine that loses its power,
// leaves the record behind, and the next one that looks here makes the file whole again.
//
// One file in the Temp folder, "rewrite.journal" (its name has no "$": the sweep of scratch files passes it
// over). It holds the records of one group of rewrites and is written over by the next group. It is read and
// written only by the holder of the folder's lock (LockTempFolder).
//
//     "KMRWJRN1", u64 length of the body, u32 CRC-32 of the body, u32 number of records; then the body:
//     records one behind the other, all numbers little-endian, each text as u64 length and its bytes
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "base/system_time.h"
#include "platform/edit_file.h"

namespace kalmora {

struct RewriteRecord {
    // How the file is changed. The numbers stand in the journal.
    enum class Strategy : std::uint32_t {
        InPlace = 1,   // bytes are written over bytes
        Inserted = 2,  // space is inserted at `offset`, then bytes are written over what is there
        Copied = 3,    // the file is rewritten from `offset` on; a copy of it is in the Temp folder
        Tool = 4  // an outside program wrote the file from that copy: earlier versions of this one did so
    };

    Strategy strategy = Strategy::InPlace;
    std::string path;
    std::uint64_t oldSize = 0, newSize = 0;  // of the file; newSize is unknown where a tool wrote it
    std::uint64_t offset = 0;                // of the stretch that changes
    std::uint64_t oldLength = 0;             // of that stretch
    std::string oldBytes;                    // it itself; not of the strategies with a copy
    std::string newBytes;                    // what it becomes; empty where a tool wrote it
    std::string copyName;                    // in the Temp folder, of the strategies with a copy
    FileTime accessed, written;              // the file's times before
    std::uint64_t volume = 0, identity = 0;  // of the file
};

class RewriteJournal {
public:
    enum class Clearing { Soon, Flushed };

    // Makes the file when it is missing.
    files::FileResult Open(const std::string& tempFolder);
    // The pending records: none after Clear, and none of a group whose writing was cut off.
    std::vector<RewriteRecord> Read() const;
    // On the disk when it returns Done.
    files::FileResult Write(std::span<const RewriteRecord> records);
    // Soon: what is cleared may be back after a power cut. That does no harm: recovery compares each record
    // with the bytes of its file.
    files::FileResult Clear(Clearing clearing);

private:
    files::EditFile file_;
    std::string body_;
};

// The right to use the Temp folder's scratch names and its journal, for one thread of one program at a time.
// Waits for whoever has it. Failed when nobody lets go of it in that time, otherwise what opening a file in
// the folder gives.
files::FileResult LockTempFolder(const std::string& tempFolder, files::FileLock& lock,
                                 int timeoutMs = 60'000);

// The records that stand in the journal, for a look without the lock: none where there is no journal. Writes
// and makes nothing. Whoever is writing at this moment may be in the middle of it.
std::vector<RewriteRecord> PeekAtJournal(const std::string& tempFolder);

// The names of scratch files that the journal still needs. The caller holds the lock.
std::vector<std::string> CopiesInJournal(const std::string& tempFolder);

}  // namespace kalmora
