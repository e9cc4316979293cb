// Writing into the user's files: every change to a photo is made here. After a kill at any
// instruction, or a power cut, the file is the old one or the new one, whole.
//
// The change is recorded, with the bytes that it replaces, in a journal in the Temp folder
// (rewrite_journal.h) and flushed; then the file is changed in place, so that it stays the same file; it is
// read back, given its times, flushed, and the record is removed. On any failure the old bytes are put back.
//
// - Bytes over as many bytes: the record alone holds the old bytes.
// - A file that grows by whole blocks, where the file system can insert space: the same.
// - Any other change of length: the file is first copied to the Temp folder, as "$" and its name.
//
// The file's time of creation and of last access stay. Its last write is the local clock taken as if it were
// UTC, unless the change says otherwise: meant, so that the index and other programs of this family agree,
// and held by a test. That goes for a file that says already what it should as well.
//
// If another program writes or replaces the file meanwhile, its version stays, the result is
// Changed, and a copy that was made of the old one stays in the Temp folder under a name without "$".
//
// Any thread. One rewrite at a time for a Temp folder, by a lock that other programs and threads share and
// get in the order in which they ask.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace kalmora {

enum class RewriteResult {
    Written,
    Unchanged,    // it says so already: only its time of last write moves
    Unreadable,   // there is no such file, or it cannot be read
    Unsupported,  // not a file of a kind that can be changed
    // One that cannot be changed without guessing, and why; their name is "unsupported" too. See ReasonOf.
    NotWhole,
    ExifUnclear,
    MakerNoteUnclear,
    IndexUnclear,
    TrailerUnclear,
    TooLarge,  // what is to be written does not fit where it belongs
    ExifFull,  // the same, of an Exif block
    Denied,    // read-only, or no right to write it (or the Temp folder)
    NoSpace,   // on its disk or on that of the Temp folder
    InUse,     // another program has it locked, or the Temp folder's lock
    Changed,   // another program wrote or replaced it meanwhile
    Failed     // the disk failed; the file is as it was
};

// "written", "unchanged" and so on: for results, logs and messages.
const char* NameOf(RewriteResult result);
// Why a photo is left alone, as a sentence's rest: "its maker note could not be followed". Null when the name
// says it all.
const char* ReasonOf(RewriteResult result);
// The file says now what it should.
inline bool IsDone(RewriteResult result) {
    return result == RewriteResult::Written || result == RewriteResult::Unchanged;
}

// The file is of a kind that takes nothing, or one that cannot be changed without guessing.
inline bool IsUnsupported(RewriteResult result) {
    return result >= RewriteResult::Unsupported && result <= RewriteResult::TrailerUnclear;
}

// What the time of the last write becomes.
enum class Stamp {
    LocalClock,  // the local clock's fields as if they were UTC
    Now          // the moment itself
};

// One stretch of a file, and what it becomes.
struct FileChange {
    std::uint64_t offset = 0;
    std::uint64_t oldLength = 0;
    std::string content;
    std::string copyName;  // of the copy in the Temp folder; empty: "$" and the file's name
    Stamp stamp = Stamp::LocalClock;
};

// Growth by a multiple of so many bytes is cheap where the file system helps.
inline constexpr std::size_t kCheapGrowth = 4096;

// Looks at the file and says what is to change: Written, with `change` filled, or any other result, which
// ends the rewrite. Called under the lock, so that what is read is what will be changed.
using PlanChange = std::function<RewriteResult(FileChange& change)>;

RewriteResult SafeRewrite(const std::string& path, const PlanChange& plan);

// Many files, in groups that share their flushes: with the same safety for each, many times faster than one
// by one. `plan` is called with the place of the path in the list, once for each, in order. A path that
// is in the list twice is changed twice.
std::vector<RewriteResult> SafeRewriteAll(
    std::span<const std::string> paths,
    const std::function<RewriteResult(std::size_t index, FileChange& change)>& plan);

// Makes whole what an earlier run left behind. The program calls it at start before it sweeps the Temp
// folder; every rewrite does the same by itself. If another program or thread holds the lock, waits at most
// 200 ms, then leaves the folder to that one. Returns how many files it restored.
int RecoverRewrites(const std::string& tempFolder);

// The same for a program that is about to read photos; where nothing is to be done it costs one look at the
// journal. While another program or thread is writing, waits for it for at most 2 seconds. A Temp folder that
// cannot be written is left as it is. The paths of the files that may be torn still.
std::vector<std::string> RecoverBeforeReading(const std::string& tempFolder);

}  // namespace kalmora
