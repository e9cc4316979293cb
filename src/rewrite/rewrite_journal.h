// The journal of rewrites: what is about to be changed in the user's files, and what stood there, noted and
// flushed before the first byte is changed. A program that is killed, or a machine that loses its power,
// leaves the note behind, and the next one that looks here makes the file whole again.
//
// One file in the Temp folder, "rewrite.journal" (its name has no "$": the sweep of scratch files passes it
// over). It holds the notes of one group of rewrites and is written over by the next group. It is read and
// written only by the holder of the folder's lock (LockTempFolder).
//
//     "KMRWJRN1", u64 length of the body, u32 CRC-32 of the body, u32 number of notes; then the body: notes
//     one behind the other, all numbers little-endian, each text as u64 length and its bytes
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "base/system_time.h"
#include "platform/edit_file.h"

namespace kalmora {

struct RewriteNote {
    // How the file is changed. The numbers stand in the journal.
    enum class Road : std::uint32_t {
        InPlace = 1,   // bytes are written over bytes
        Inserted = 2,  // space is inserted at `offset`, then bytes are written over what stands there
        Copied = 3,    // the file is written anew from `offset` on; a copy of it stands in the Temp folder
        Tool = 4  // an outside program wrote the file from that copy: earlier versions of this one did so
    };

    Road road = Road::InPlace;
    std::string path;
    std::uint64_t oldSize = 0, newSize = 0;  // of the file; newSize is unknown where a tool wrote it
    std::uint64_t offset = 0;                // of the stretch that changes
    std::uint64_t oldLength = 0;             // of that stretch
    std::string oldBytes;                    // it itself; not on the roads with a copy
    std::string newBytes;                    // what it becomes; empty where a tool wrote it
    std::string copyName;                    // in the Temp folder, on the roads with a copy
    FileTime accessed, written;              // the file's times before
    std::uint64_t volume = 0, identity = 0;  // of the file
};

class RewriteJournal {
public:
    enum class Clearing { Soon, Flushed };

    // Makes the file when it is missing.
    files::FileResult Open(const std::string& tempFolder);
    // The notes that stand: none after Clear, and none of a group whose writing was cut off.
    std::vector<RewriteNote> Read() const;
    // On the disk when it returns Done.
    files::FileResult Write(std::span<const RewriteNote> notes);
    // Soon: what is cleared may stand again after a power cut, which does no harm to notes that tell by the
    // file's own bytes whether they are still true.
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

// The notes that stand in the journal, for a look without the lock: none where there is no journal. Writes
// and makes nothing. Whoever is writing at this moment may be in the middle of it.
std::vector<RewriteNote> PeekAtNotes(const std::string& tempFolder);

// The names of scratch files that the journal still needs. The caller holds the lock.
std::vector<std::string> NotedCopies(const std::string& tempFolder);

}  // namespace kalmora
