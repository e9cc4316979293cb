#include "media/exif_block_map.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "media/exif_tags.h"
#include "media/maker_note_places.h"

namespace kalmora::exif {

namespace {

constexpr std::uint16_t kSubDirectories = 0x014A;
constexpr std::uint16_t kStripOffsets = 0x0111, kStripLengths = 0x0117;
constexpr int kMostChained = 8;  // directories behind the main one
constexpr std::uint32_t kMostSubDirectories = 16;
constexpr std::size_t kMainPointer = 4;
constexpr std::uint32_t kMostStrips = 1000;

}  // namespace

Entry* Directory::Find(std::uint16_t tag) {
    const auto found =
        std::find_if(entries.begin(), entries.end(), [tag](const Entry& e) { return e.tag == tag; });
    return found == entries.end() ? nullptr : &*found;
}

bool BlockMap::Follow() {
    if (!ReadHeader()) return false;
    auto first = ReadDirectory(Number(kMainPointer), kMainPointer);
    if (!first) return false;
    main = std::move(*first);
    if (const Entry* pointer = main.Find(kExifPointer)) {
        hasExifPointer = true;
        if (auto directory = FollowPointer(main, *pointer)) {
            if (directory->Where().Overlaps(main.Where()))
                NoteOther(*directory);
            else
                exif = std::move(*directory);
        }
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

// Empty when it does not lie in the block completely; that is then remembered.
std::optional<Directory> BlockMap::ReadDirectory(std::uint32_t offset, std::size_t number) {
    if (offset < kHeaderLength) return std::nullopt;
    Directory directory;
    directory.offset = offset;
    const auto count = reader_.U16(offset);
    const std::uint64_t end = std::uint64_t{offset} + 2 + std::uint64_t{count.value_or(0)} * kEntryLength;
    if (!count || end > block_.size()) {
        Add({offset, std::max<std::uint64_t>(end, std::uint64_t{offset} + 2)}, Outside::What::Directory,
            number);
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

std::optional<Directory> BlockMap::FollowPointer(const Directory& holder, const Entry& pointer) {
    if (!IsWholeNumber(pointer.type) || pointer.count != 1) return std::nullopt;
    return ReadDirectory(FieldNumber(pointer), pointer.type == kShortType ? 0 : FieldAt(holder, pointer));
}

// Directories whose places are an array.
void BlockMap::FollowArray(const Entry& pointers) {
    if (!IsWholeNumber(pointers.type) || pointers.type == kShortType || !pointers.IsFar()) return;
    for (std::uint32_t i = 0; i < std::min(pointers.count, kMostSubDirectories); ++i) {
        const std::size_t at = std::size_t{FieldOffset(pointers)} + i * kFieldLength;
        if (const auto offset = reader_.U32(at))
            if (const auto directory = ReadDirectory(*offset, at)) NoteOther(*directory);
    }
}

std::size_t BlockMap::FieldAt(const Directory& directory, const Entry& entry) const {
    const auto index = static_cast<std::size_t>(&entry - directory.entries.data());
    return directory.offset + 2 + index * kEntryLength + 8;
}

void BlockMap::Add(const Range& where, Outside::What what, std::size_t number) {
    outside.push_back({where, what, number, order_});
}

// Of everything that is not edited only the place is noted.
void BlockMap::FollowOthers() {
    Note(main);
    if (exif) Note(*exif);
    for (const Directory* holder : {&std::as_const(main), exif ? &std::as_const(*exif) : nullptr}) {
        if (!holder) continue;
        for (const Entry& entry : holder->entries) {
            if (entry.tag == kSubDirectories) FollowArray(entry);
            if (entry.tag == kGpsPointer || entry.tag == kInteroperabilityPointer ||
                entry.tag == kSubDirectories)
                if (const auto directory = FollowPointer(*holder, entry)) NoteOther(*directory);
        }
    }
    NoteStrips(main);
    std::uint32_t next = main.next;
    std::size_t number = main.offset + main.Length() - kFieldLength;
    for (int i = 0; i < kMostChained && next != 0; ++i) {
        auto directory = ReadDirectory(next, number);
        if (!directory) return;
        NoteOther(*directory);
        NoteThumbnail(*directory);
        NoteStrips(*directory);
        next = directory->next;
        number = directory->offset + directory->Length() - kFieldLength;
    }
}

void BlockMap::Note(const Directory& directory) {
    used.push_back(directory.Where());
    for (const Entry& entry : directory.entries) {
        if (!entry.IsFar()) continue;
        const Range value = ValueOf(entry);
        if (value.end > block_.size()) Add(value, Outside::What::Value, FieldAt(directory, entry));
        used.push_back(value);
    }
}

void BlockMap::NoteOther(const Directory& directory) {
    for (Directory* edited : {&main, exif ? &*exif : nullptr})
        if (edited && edited->Where().Overlaps(directory.Where())) edited->isShared = true;
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
    if (picture.end > block_.size())
        Add(picture, Outside::What::Picture, offset->type == kShortType ? 0 : FieldAt(directory, *offset));
    used.push_back(picture);
    foreign.push_back(picture);
}

// A preview without compression is stored in strips.
void BlockMap::NoteStrips(Directory& directory) {
    const Entry* offsets = directory.Find(kStripOffsets);
    const Entry* lengths = directory.Find(kStripLengths);
    if (!offsets || !lengths || offsets->count != lengths->count) return;
    const auto element = [&](const Entry& entry, std::uint32_t index) -> std::optional<std::uint64_t> {
        if (entry.type != kShortType && entry.type != kLongType) return std::nullopt;
        if (!entry.IsFar() && entry.count == 1) return FieldNumber(entry);
        const std::size_t width = ElementLength(entry.type);
        const std::size_t at =
            (entry.IsFar() ? FieldOffset(entry) : FieldAt(directory, entry)) + index * width;
        if (entry.type == kLongType) return reader_.U32(at);
        return reader_.U16(at);
    };
    for (std::uint32_t i = 0; i < std::min(offsets->count, kMostStrips); ++i) {
        const auto begin = element(*offsets, i), length = element(*lengths, i);
        if (!begin || !length) return;
        const Range strip{*begin, *begin + *length};
        if (strip.end > block_.size()) Add(strip, Outside::What::Picture, 0);
        used.push_back(strip);
        foreign.push_back(strip);
    }
}

void BlockMap::FollowMakerNote() {
    const Entry* entry = exif ? exif->Find(kMakerNote) : nullptr;
    if (!entry || !entry->IsFar()) return;
    Range where = ValueOf(*entry);
    if (where.begin >= block_.size()) return;
    where.end = std::min<std::uint64_t>(where.end, block_.size());
    note = where;
    for (const NotePlace& place : MakerNotePlaces(block_, where, order_).places) {
        noted.push_back(place.where);
        for (Directory* edited : {&main, &*exif})
            if (place.where.Overlaps(edited->Where())) edited->isShared = true;
        if (place.where.end > block_.size())
            outside.push_back({place.where, Outside::What::NotePlace, place.number, place.order});
    }
}

}  // namespace kalmora::exif
