// Where everything is in an Exif block, for editing it: the directories with their entries, and which
// bytes they use. What exif_reader.h needs for looking up a tag is less. Values only: nothing is changed
// here.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/byte_reader.h"
#include "media/exif_layout.h"

namespace kalmora::exif {

// What the block names and what does not lie in it completely.
struct Outside {
    enum class What { Value, Directory, Picture, NotePlace };
    Range where;
    What what = What::Value;
    std::size_t number = 0;  // of four bytes in the block, which says where it is; 0: there is no such number
    ByteOrder order = ByteOrder::Little;  // of that number
};

struct Entry {
    std::uint16_t tag = 0, type = 0;
    std::uint32_t count = 0;
    std::array<char, kFieldLength> field{};  // the value, or where it is
    std::uint64_t length = 0;                // of the value in bytes; 0 for a type that there is not
    std::optional<std::string> own;          // the editor's: a value that goes into its area
    bool IsFar() const { return length > kFieldLength; }
};

struct Directory {
    std::uint32_t offset = 0;
    std::uint32_t next = 0;
    bool hasNext = false;   // the offset of the next one is in the block
    bool isOurs = false;    // the editor's: goes into its area
    bool isShared = false;  // something else points at it, or says that it lies there
    std::vector<Entry> entries;

    std::size_t Length() const { return 2 + entries.size() * kEntryLength + kFieldLength; }
    Range Where() const { return {offset, offset + Length() - (hasNext ? 0 : kFieldLength)}; }
    Entry* Find(std::uint16_t tag);
};

// Made by following the directories once; every offset is checked against the block, which must outlive it.
class BlockMap {
public:
    explicit BlockMap(std::string_view block) : block_(block) {}

    // False when the main directory cannot be followed.
    bool Follow();

    std::string_view Block() const { return block_; }
    ByteOrder Order() const { return order_; }
    std::uint32_t Number(std::size_t at) const { return reader_.U32(at).value_or(0); }
    std::uint32_t FieldNumber(const Entry& entry) const;
    std::uint32_t FieldOffset(const Entry& entry) const;  // of one that IsFar, of any type
    Range ValueOf(const Entry& entry) const;              // the same

    Directory main;
    std::optional<Directory> exif;
    bool hasExifPointer = false;  // also when it cannot be followed
    std::vector<Range> used;      // directories, values and the thumbnail
    std::vector<Range> foreign;   // those of them that do not belong to the main and the Exif directory
    std::optional<Range> note;    // the maker note, as far as it lies in the block
    std::vector<Range> noted;     // where the maker note says that something of its own lies
    // What reaches past the end of the block, as far as it is known; the maker note's own places too.
    std::vector<Outside> outside;

private:
    bool ReadHeader();
    // `number`: where the block says it.
    std::optional<Directory> ReadDirectory(std::uint32_t offset, std::size_t number);
    Entry ReadEntry(std::size_t at) const;
    std::optional<Directory> FollowPointer(const Directory& holder, const Entry& pointer);
    void FollowArray(const Entry& pointers);
    void FollowOthers();
    void FollowMakerNote();
    void Note(const Directory& directory);
    void NoteOther(const Directory& directory);
    void NoteThumbnail(Directory& directory);
    void NoteStrips(Directory& directory);
    std::size_t FieldAt(const Directory& directory, const Entry& entry) const;
    void Add(const Range& where, Outside::What what, std::size_t number);

    std::string_view block_;
    ByteOrder order_ = ByteOrder::Little;
    ByteReader reader_;
};

}  // namespace kalmora::exif
