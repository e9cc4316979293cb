// IndexEntry: what the index knows of one file; the record that search reads instead of the file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "base/system_time.h"
#include "media/camera_values.h"
#include "media/estimation.h"

namespace kalmora {

// What is kept of a comment at most, in bytes; no comment that the program makes is longer.
inline constexpr std::size_t kLongestComment = 4u << 20;

// In a day's lists entries are shared and never changed: a file that is read again gets a new entry. So a
// list of them can be read without a lock while an update runs.
struct IndexEntry {
    std::string path;  // absolute, the platform's separators; the key
    std::string
        comment;  // UTF-8, on one line, folded (text::Fold), so that a folded word is found by its bytes
    std::int32_t width = -1;   // pixels, fitted into ThumbnailMaxSize as the file was read; -1 unknown,
    std::int32_t height = -1;  // 0 a picture without a size
    Estimations estimations;
    SystemTime date;         // when it was taken or written, local; all zero when never read
    FileTime lastWriteTime;  // of the file as it was read
    // Exposure bias, time and program do not reach the index file: they are 0 after a load, so nothing may
    // search by them.
    CameraValues camera;

    // True when the file's last-write time is another one than that of the last reading, and when the file
    // cannot be looked at. Neither its size nor its birth counts.
    bool IsStale() const;
    // Reads everything again from the file. False when the file is not there; all stays as it was then. A
    // file without an extension gives its last-write time alone. Any thread; one at a time for an entry.
    bool Refresh();
};

using EntryPointer = std::shared_ptr<const IndexEntry>;

// A place in the order of time. Holds the entry as it was when the place was given: a file that is read again
// and has another date keeps its old place until its day is loaded again.
struct IndexTimeKey {
    EntryPointer entry;  // never null
    const std::string& Path() const { return entry->path; }
    const SystemTime& Date() const { return entry->date; }
};

}  // namespace kalmora
