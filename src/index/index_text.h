// The text of an index file: reading and writing bytes. docs/formats.md describes the format.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "base/stop_token.h"
#include "index/index_entry.h"

namespace kalmora {

// What is read of one index file at most; no day of files comes near it.
inline constexpr std::size_t kLongestIndex = 128u << 20;

enum class IndexReading {
    Done,
    OtherVersion,  // not of this version, or no index at all: the records are untouched
    Stopped,       // the records read until then stay
};

// Appends the records of an index file to `records`, in the order of the file. `folder` is the day's. Records
// that are cut short, not ended, or whose path would lead out of the folder are left out. Text without any
// byte is an empty day. Looks at `stop` before each line.
IndexReading ReadIndexText(std::string_view bytes, const std::string& folder, const StopToken& stop,
                           std::vector<EntryPointer>& records);

// A path below the day's folder as the index file has it, and back. From the file: empty when the path
// climbs, is absolute, holds nothing, or is longer than the system takes.
std::string ToIndexPath(std::string_view relative);
std::string FromIndexPath(std::string_view bytes);

// The file's first line.
std::string IndexHeader();
// Appends one record, with so many bytes of its comment at most; one whose path does not lie below the folder
// is left out.
void AppendIndexRecord(std::string& out, const IndexEntry& entry, const std::string& folder,
                       std::size_t longestComment = kLongestComment);

}  // namespace kalmora
