#include "media/exif_block_map.h"

#include <algorithm>
#include <limits>

#include "media/maker_note_places.h"

namespace kalmora::exif {

namespace {

constexpr std::uint16_t kShortType = 3, kLongType = 4;
constexpr std::uint16_t kGpsPointer = 0x8825, kInteroperabilityPointer = 0xA005, kSubDirectories = 0x014A,
                        kMakerNote = 0x927C;
constexpr std::uint16_t kThumbnailOffset = 0x0201, kThumbnailLength = 0x0202;
constexpr int kMostChained = 8;  // directories behind the main one

bool IsWholeNumber(std::uint16_t type) {
    constexpr std::uint16_t kSignedLong = 9, kDirectory = 13;
    return type == kShortType || type == kLongType || type == kSignedLong || type == kDirectory;
}

}  // namespace

std::size_t ElementLength(std::uint16_t type) {
    constexpr std::array<std::uint8_t, 14> lengths{0, 1, 1, 2, 4, 8, 1, 1, 2, 4, 8, 4, 8, 4};
    return type < lengths.size() ? lengths[type] : 0;
}

Entry* Directory::Find(std::uint16_t tag) {
    const auto found =
        std::find_if(entries.begin(), entries.end(), [tag](const Entry& e) { return e.tag == tag; });
    return found == entries.end() ? nullptr : &*found;
}

bool BlockMap::Follow() {
    if (!ReadHeader()) return false;
    auto first = ReadDirectory(Number(4));
    if (!first) return false;
    main = std::move(*first);
    if (const Entry* pointer = main.Find(kExifPointer)) {
        hasExifPointer = true;
        if (auto directory = FollowPointer(*pointer); directory && !directory->Where().Overlaps(main.Where()))
            exif = std::move(*directory);
    }
    FollowOthers();
    FollowMakerNote();
    return true;
}

bool BlockMap::ReadHeader() {
    if (block_.starts_with("MM"))
        order_ = ByteOrder::Big;
    else if (!block_.starts_with("II"))
        return false;
    reader_ = ByteReader({reinterpret_cast<const std::uint8_t*>(block_.data()), block_.size()}, order_);
    constexpr unsigned kTiff = 42;
    return reader_.U16(2) == kTiff && reader_.Has(0, kHeaderLength) &&
           block_.size() <= std::numeric_limits<std::uint32_t>::max();
}

std::uint32_t BlockMap::FieldNumber(const Entry& entry) const {
    const ByteReader field({reinterpret_cast<const std::uint8_t*>(entry.field.data()), kFieldLength}, order_);
    return entry.type == kShortType ? *field.U16(0) : *field.U32(0);
}

std::uint32_t BlockMap::FieldOffset(const Entry& entry) const {
    return *ByteReader({reinterpret_cast<const std::uint8_t*>(entry.field.data()), kFieldLength}, order_)
                .U32(0);
}

// Empty when it does not stand in the block whole; what stands there is then remembered as broken.
std::optional<Directory> BlockMap::ReadDirectory(std::uint32_t offset) {
    if (offset < kHeaderLength) return std::nullopt;
    Directory directory;
    directory.offset = offset;
    const auto count = reader_.U16(offset);
    const std::uint64_t end = std::uint64_t{offset} + 2 + std::uint64_t{count.value_or(0)} * kEntryLength;
    if (!count || end > block_.size()) {
        broken.push_back({offset, std::max<std::uint64_t>(end, offset + 2)});
        return std::nullopt;
    }
    for (std::size_t at = offset + 2; at < end; at += kEntryLength)
        directory.entries.push_back(ReadEntry(at));
    directory.hasNext = end + kFieldLength <= block_.size();
    directory.next = directory.hasNext ? Number(static_cast<std::size_t>(end)) : 0;
    return directory;
}

Entry BlockMap::ReadEntry(std::size_t at) const {
    Entry entry;
    entry.tag = *reader_.U16(at);
    entry.type = *reader_.U16(at + 2);
    entry.count = Number(at + 4);
    std::copy_n(block_.begin() + static_cast<std::ptrdiff_t>(at + 8), kFieldLength, entry.field.begin());
    entry.length = std::uint64_t{entry.count} * ElementLength(entry.type);
    return entry;
}

Range BlockMap::ValueOf(const Entry& entry) const {
    const std::uint64_t begin = FieldOffset(entry);
    return {begin, begin + entry.length};
}

std::optional<Directory> BlockMap::FollowPointer(const Entry& pointer) {
    if (!IsWholeNumber(pointer.type) || pointer.count != 1) return std::nullopt;
    return ReadDirectory(FieldNumber(pointer));
}

// All that is not edited is only asked where it stands.
void BlockMap::FollowOthers() {
    Note(main);
    if (exif) Note(*exif);
    std::vector<Entry> pointers;
    for (const std::uint16_t tag : {kGpsPointer, kInteroperabilityPointer, kSubDirectories}) {
        if (const Entry* entry = main.Find(tag)) pointers.push_back(*entry);
        if (exif)
            if (const Entry* entry = exif->Find(tag)) pointers.push_back(*entry);
    }
    for (const Entry& pointer : pointers)
        if (const auto directory = FollowPointer(pointer)) NoteOther(*directory);
    std::uint32_t next = main.next;
    for (int i = 0; i < kMostChained && next != 0; ++i) {
        auto directory = ReadDirectory(next);
        if (!directory) return;
        NoteOther(*directory);
        NoteThumbnail(*directory);
        next = directory->next;
    }
}

void BlockMap::Note(const Directory& directory) {
    used.push_back(directory.Where());
    for (const Entry& entry : directory.entries) {
        if (!entry.IsFar()) continue;
        const Range value = ValueOf(entry);
        if (value.end > block_.size()) broken.push_back(value);
        used.push_back(value);
    }
}

void BlockMap::NoteOther(const Directory& directory) {
    const std::size_t before = used.size();
    Note(directory);
    foreign.insert(foreign.end(), used.begin() + static_cast<std::ptrdiff_t>(before), used.end());
}

void BlockMap::NoteThumbnail(Directory& directory) {
    const Entry* offset = directory.Find(kThumbnailOffset);
    const Entry* length = directory.Find(kThumbnailLength);
    if (!offset || !length) return;
    const std::uint64_t begin = FieldNumber(*offset);
    const Range picture{begin, begin + FieldNumber(*length)};
    if (picture.end > block_.size()) broken.push_back(picture);
    used.push_back(picture);
    foreign.push_back(picture);
}

void BlockMap::FollowMakerNote() {
    const Entry* note = exif ? exif->Find(kMakerNote) : nullptr;
    if (!note || !note->IsFar()) return;
    const Range where = ValueOf(*note);
    if (where.end > block_.size()) return;
    noted = MakerNotePlaces(block_, where, order_);
    for (const Range& place : noted)
        if (place.end > block_.size()) broken.push_back(place);
}

}  // namespace kalmora::exif
