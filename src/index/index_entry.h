// IndexEntry: what the index knows of one file; the record that search reads instead of the file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "base/system_time.h"

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
    std::int32_t rating1 = 0;  // like; see estimation.h for the three
    std::int32_t rating3 = 0;  // good
    std::int32_t rating2 = 0;  // privacy
    std::int32_t faceCount = 0;
    SystemTime date;         // when it was taken or written, local; all zero when never read
    FileTime lastWriteTime;  // of the file as it was read
    // The camera's values as CameraValues has them.
    std::int32_t mode = 0;
    std::int32_t value1 = 0;  // ISO
    std::int32_t value2 = 0;  // shutter
    std::int32_t value3 = 0;  // brightness
    std::int32_t value4 = 0;  // flash
    std::int32_t value5 = 0;  // exposure bias; this and the next two do not reach the index file: 0 after a
    std::int32_t value6 = 0;  // exposure time    load, so nothing may search by them
    std::int32_t value7 = 0;  // exposure program
    std::int32_t value8 = 0;  // aperture

    // True when the file's last-write time is another one than that of the last reading, and when the file
    // cannot be looked at. Neither its size nor its birth counts.
    bool IsStale() const;
    // Reads everything again from the file. False when the file is not there; all stays as it was then. A
    // file without an extension gives its last-write time alone. Any thread; one at a time for an entry.
    bool Refresh();
};

using EntryPointer = std::shared_ptr<const IndexEntry>;

// A place in the order of time. Holds the entry as it was when the place was given: a file that is read again
// and has another date keeps its old place until its day is loaded anew.
struct IndexTimeKey {
    EntryPointer entry;  // never null
    const std::string& Path() const { return entry->path; }
    const SystemTime& Date() const { return entry->date; }
};

}  // namespace kalmora
