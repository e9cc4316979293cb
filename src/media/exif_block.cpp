#include "media/exif_block.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

#include "base/byte_reader.h"

namespace kalmora::exif {

namespace {

constexpr std::size_t kHeaderLength = 8, kEntryLength = 12, kFieldLength = 4;
constexpr std::uint16_t kShortType = 3, kLongType = 4;
constexpr std::uint16_t kExifPointer = 0x8769, kGpsPointer = 0x8825, kInteroperabilityPointer = 0xA005,
                        kSubDirectories = 0x014A;
constexpr std::uint16_t kThumbnailOffset = 0x0201, kThumbnailLength = 0x0202;
constexpr int kMostChained = 8;  // directories behind the main one

constexpr std::string_view kAreaMark("KALMORA\0", 8);
constexpr std::size_t kAreaTail = 16;

std::size_t ElementLength(std::uint16_t type) {
    constexpr std::array<std::uint8_t, 14> lengths{0, 1, 1, 2, 4, 8, 1, 1, 2, 4, 8, 4, 8, 4};
    return type < lengths.size() ? lengths[type] : 0;
}

bool IsWholeNumber(std::uint16_t type) {
    constexpr std::uint16_t kSignedLong = 9, kDirectory = 13;
    return type == kShortType || type == kLongType || type == kSignedLong || type == kDirectory;
}

std::size_t Even(std::size_t value) { return value + value % 2; }

struct Range {
    std::uint64_t begin = 0, end = 0;
    bool Overlaps(const Range& other) const { return begin < other.end && other.begin < end; }
};

struct Entry {
    std::uint16_t tag = 0, type = 0;
    std::uint32_t count = 0;
    std::array<char, kFieldLength> field{};  // the value, or where it stands
    std::uint64_t length = 0;                // of the value in bytes; 0 for a type that there is not
    std::optional<std::string> own;          // a value that goes into our area
    bool IsFar() const { return length > kFieldLength; }
};

struct Directory {
    std::uint32_t offset = 0;
    std::uint32_t next = 0;
    bool hasNext = false;  // the offset of the next one stands in the block
    bool isOurs = false;   // goes into our area
    std::vector<Entry> entries;

    std::size_t Length() const { return 2 + entries.size() * kEntryLength + kFieldLength; }
    Range Where() const { return {offset, offset + Length() - (hasNext ? 0 : kFieldLength)}; }
    Entry* Find(std::uint16_t tag) {
        const auto found =
            std::find_if(entries.begin(), entries.end(), [tag](const Entry& e) { return e.tag == tag; });
        return found == entries.end() ? nullptr : &*found;
    }
};

class BlockEditor {
public:
    explicit BlockEditor(std::string_view block)
        : block_(block),
          reader_({reinterpret_cast<const std::uint8_t*>(block.data()), block.size()}, order_) {}

    // Follows the directories. False when the main one cannot be followed.
    bool Parse() {
        if (block_.empty()) {
            block_ = std::string_view("II*\0\0\0\0\0", kHeaderLength);
            main_.isOurs = main_.hasNext = true;
            areaStart_ = kHeaderLength;
            isNew_ = true;
            return true;
        }
        if (!ParseHeader()) return false;
        auto main = ReadDirectory(Number(4));
        if (!main) return false;
        main_ = std::move(*main);
        if (const Entry* pointer = main_.Find(kExifPointer)) {
            hasExifPointer_ = true;
            if (auto exif = Follow(*pointer)) {
                if (!exif->Where().Overlaps(main_.Where())) exif_ = std::move(*exif);
            }
        }
        FollowOthers();
        FindArea();
        return true;
    }
    bool HasExif() const { return exif_.has_value(); }

    EditResult Run(std::span<const Edit> edits, const Growth& growth, std::string& edited) {
        edited.assign(block_);
        for (const Edit& edit : edits)
            if (!Apply(edit, edited)) return EditResult::Unreadable;
        if (!isChanged_) return EditResult::Unchanged;
        if (!NeedsArea()) return EditResult::Edited;
        return WriteArea(growth, edited);
    }

private:
    // ---- reading
    bool ParseHeader() {
        if (block_.starts_with("MM"))
            order_ = ByteOrder::Big;
        else if (!block_.starts_with("II"))
            return false;
        reader_ = ByteReader({reinterpret_cast<const std::uint8_t*>(block_.data()), block_.size()}, order_);
        constexpr unsigned kTiff = 42;
        return reader_.U16(2) == kTiff && reader_.Has(0, kHeaderLength) &&
               block_.size() <= std::numeric_limits<std::uint32_t>::max();
    }

    std::uint32_t Number(std::size_t at) const { return reader_.U32(at).value_or(0); }

    std::uint32_t FieldNumber(const Entry& entry) const {
        const ByteReader field({reinterpret_cast<const std::uint8_t*>(entry.field.data()), kFieldLength},
                               order_);
        return entry.type == kShortType ? *field.U16(0) : *field.U32(0);
    }

    // Empty when it does not stand in the block whole; what stands there is then remembered as broken.
    std::optional<Directory> ReadDirectory(std::uint32_t offset) {
        if (offset < kHeaderLength) return std::nullopt;
        Directory directory;
        directory.offset = offset;
        const auto count = reader_.U16(offset);
        const std::uint64_t end = std::uint64_t{offset} + 2 + std::uint64_t{count.value_or(0)} * kEntryLength;
        if (!count || end > block_.size()) {
            broken_.push_back({offset, std::max<std::uint64_t>(end, offset + 2)});
            return std::nullopt;
        }
        for (std::size_t at = offset + 2; at < end; at += kEntryLength)
            directory.entries.push_back(ReadEntry(at));
        directory.hasNext = end + kFieldLength <= block_.size();
        directory.next = directory.hasNext ? Number(static_cast<std::size_t>(end)) : 0;
        return directory;
    }

    Entry ReadEntry(std::size_t at) const {
        Entry entry;
        entry.tag = *reader_.U16(at);
        entry.type = *reader_.U16(at + 2);
        entry.count = Number(at + 4);
        std::copy_n(block_.begin() + static_cast<std::ptrdiff_t>(at + 8), kFieldLength, entry.field.begin());
        entry.length = std::uint64_t{entry.count} * ElementLength(entry.type);
        return entry;
    }

    Range ValueOf(const Entry& entry) const {
        const std::uint64_t begin = FieldNumber(entry);
        return {begin, begin + entry.length};
    }

    std::optional<Directory> Follow(const Entry& pointer) {
        if (!IsWholeNumber(pointer.type) || pointer.count != 1) return std::nullopt;
        return ReadDirectory(FieldNumber(pointer));
    }

    // All that is not edited is only asked where it stands.
    void FollowOthers() {
        Note(main_);
        if (exif_) Note(*exif_);
        std::vector<Entry> pointers;
        for (const std::uint16_t tag : {kGpsPointer, kInteroperabilityPointer, kSubDirectories}) {
            if (const Entry* entry = main_.Find(tag)) pointers.push_back(*entry);
            if (exif_)
                if (const Entry* entry = exif_->Find(tag)) pointers.push_back(*entry);
        }
        for (const Entry& pointer : pointers)
            if (const auto directory = Follow(pointer)) NoteOther(*directory);
        std::uint32_t next = main_.next;
        for (int i = 0; i < kMostChained && next != 0; ++i) {
            auto directory = ReadDirectory(next);
            if (!directory) return;
            NoteOther(*directory);
            NoteThumbnail(*directory);
            next = directory->next;
        }
    }

    void Note(const Directory& directory) {
        used_.push_back(directory.Where());
        for (const Entry& entry : directory.entries) {
            if (!entry.IsFar()) continue;
            const Range value = ValueOf(entry);
            if (value.end > block_.size()) broken_.push_back(value);
            used_.push_back(value);
        }
    }

    void NoteOther(const Directory& directory) {
        const std::size_t before = used_.size();
        Note(directory);
        foreign_.insert(foreign_.end(), used_.begin() + static_cast<std::ptrdiff_t>(before), used_.end());
    }

    void NoteThumbnail(Directory& directory) {
        const Entry* offset = directory.Find(kThumbnailOffset);
        const Entry* length = directory.Find(kThumbnailLength);
        if (!offset || !length) return;
        const std::uint64_t begin = FieldNumber(*offset);
        const Range picture{begin, begin + FieldNumber(*length)};
        if (picture.end > block_.size()) broken_.push_back(picture);
        used_.push_back(picture);
        foreign_.push_back(picture);
    }

    // ---- our area
    void FindArea() {
        areaStart_ = Even(block_.size());
        if (block_.size() < kHeaderLength + kAreaTail) return;
        const std::size_t tail = block_.size() - kAreaTail;
        const std::uint32_t start = Number(tail + kAreaMark.size());
        if (block_.substr(tail, kAreaMark.size()) != kAreaMark || Number(tail + 12) != block_.size()) return;
        if (start < kHeaderLength || start % 2 != 0 || start > tail) return;
        const auto isInside = [&](const Range& range) { return range.begin >= start && range.end <= tail; };
        const auto isOutside = [&](const Range& range) { return range.end <= start; };
        if (!std::all_of(foreign_.begin(), foreign_.end(), isOutside)) return;
        for (const Range& range : used_)
            if (!isInside(range) && !isOutside(range)) return;
        areaStart_ = start;
        hasArea_ = true;
        TakeOver(main_);
        if (exif_) TakeOver(*exif_);
    }

    // What stands in the area is laid out anew each time.
    void TakeOver(Directory& directory) {
        directory.isOurs = directory.offset >= areaStart_;
        for (Entry& entry : directory.entries) {
            if (!entry.IsFar()) continue;
            const Range value = ValueOf(entry);
            if (value.begin >= areaStart_)
                entry.own = block_.substr(static_cast<std::size_t>(value.begin),
                                          static_cast<std::size_t>(entry.length));
        }
    }

    // ---- changing
    std::string BytesOf(const Edit& edit) const {
        if (edit.numbers.empty()) return edit.value;
        std::string bytes;
        for (const std::uint32_t number : edit.numbers)
            bytes += edit.type == kShortType ? Word16(number) : Word32(number);
        return bytes;
    }

    // False when the directory that it needs cannot be followed.
    bool Apply(const Edit& edit, std::string& edited) {
        const std::string value = BytesOf(edit);
        const std::size_t element = ElementLength(edit.type);
        if (value.empty() || element == 0) return true;
        if (edit.home == Home::Exif && !exif_ && !MakeExif()) return false;
        Directory& directory = edit.home == Home::Main ? main_ : *exif_;
        const auto count = static_cast<std::uint32_t>(value.size() / element);
        Entry* entry = directory.Find(edit.tag);
        if (!entry) {
            // In the order of the tags, as far as the directory keeps it.
            const auto behind = std::find_if(directory.entries.begin(), directory.entries.end(),
                                             [&](const Entry& e) { return e.tag > edit.tag; });
            directory.isOurs = true;
            entry = &*directory.entries.insert(behind, Entry{});
            entry->tag = edit.tag;
        } else if (entry->type == edit.type && entry->count == count && CurrentValue(*entry) == value) {
            return true;
        }
        isChanged_ = true;
        Put(directory, *entry, edit.type, count, value, edited);
        return true;
    }

    void Put(Directory& directory, Entry& entry, std::uint16_t type, std::uint32_t count,
             const std::string& value, std::string& edited) {
        const bool fitsThere = !entry.own && value.size() > kFieldLength && HasRoomFor(entry, value.size());
        const Range old = ValueOf(entry);
        entry.type = type;
        entry.count = count;
        entry.own.reset();
        if (value.size() <= kFieldLength) {
            entry.field.fill('\0');
            std::copy(value.begin(), value.end(), entry.field.begin());
        } else if (fitsThere) {
            // Old words do not linger behind the new ones.
            const auto begin = edited.begin() + static_cast<std::ptrdiff_t>(old.begin);
            std::fill(begin, begin + static_cast<std::ptrdiff_t>(old.end - old.begin), '\0');
            std::copy(value.begin(), value.end(), begin);
        } else {
            entry.own = value;
        }
        entry.length = value.size();
        if (!directory.isOurs && !entry.own) WriteEntryInPlace(directory, entry, edited);
    }

    std::string_view CurrentValue(const Entry& entry) const {
        if (entry.own) return *entry.own;
        if (!entry.IsFar()) return {entry.field.data(), static_cast<std::size_t>(entry.length)};
        const Range value = ValueOf(entry);
        if (value.end > block_.size()) return {};
        return block_.substr(static_cast<std::size_t>(value.begin), static_cast<std::size_t>(entry.length));
    }

    // The old value's place is long enough and belongs to nothing else.
    bool HasRoomFor(const Entry& entry, std::size_t length) const {
        if (!entry.IsFar() || entry.length < length) return false;
        const Range place = ValueOf(entry);
        if (place.begin < kHeaderLength || place.end > block_.size()) return false;
        const auto others = std::count_if(used_.begin(), used_.end(),
                                          [&](const Range& range) { return range.Overlaps(place); });
        return others == 1;
    }

    bool MakeExif() {
        if (hasExifPointer_) return false;  // it is there and cannot be followed
        exif_.emplace();
        exif_->isOurs = exif_->hasNext = true;
        main_.isOurs = true;
        Entry pointer;
        pointer.tag = kExifPointer;
        pointer.type = kLongType;
        pointer.count = 1;
        pointer.length = kFieldLength;
        const auto behind = std::find_if(main_.entries.begin(), main_.entries.end(),
                                         [](const Entry& e) { return e.tag > kExifPointer; });
        main_.entries.insert(behind, pointer);
        return true;
    }

    // ---- writing
    std::string Word16(std::uint32_t value) const {
        const char low = static_cast<char>(value & 0xFF), high = static_cast<char>(value >> 8 & 0xFF);
        return order_ == ByteOrder::Big ? std::string{high, low} : std::string{low, high};
    }
    std::string Word32(std::uint32_t value) const {
        const std::string low = Word16(value & 0xFFFF), high = Word16(value >> 16);
        return order_ == ByteOrder::Big ? high + low : low + high;
    }
    static void Overwrite(std::string& bytes, std::size_t at, std::string_view with) {
        std::copy(with.begin(), with.end(), bytes.begin() + static_cast<std::ptrdiff_t>(at));
    }

    std::string EntryBytes(const Entry& entry) const {
        return Word16(entry.tag) + Word16(entry.type) + Word32(entry.count) +
               std::string(entry.field.begin(), entry.field.end());
    }

    void WriteEntryInPlace(const Directory& directory, const Entry& entry, std::string& edited) const {
        const auto index = static_cast<std::size_t>(&entry - directory.entries.data());
        Overwrite(edited, directory.offset + 2 + index * kEntryLength, EntryBytes(entry));
    }

    bool NeedsArea() const {
        const auto needs = [](const Directory& directory) {
            return directory.isOurs || std::any_of(directory.entries.begin(), directory.entries.end(),
                                                   [](const Entry& entry) { return entry.own.has_value(); });
        };
        return needs(main_) || (exif_ && needs(*exif_));
    }

    // Gives each directory and value of the area its place; the end of the last.
    std::size_t PlaceInArea() {
        std::size_t at = areaStart_;
        const auto placeDirectory = [&](Directory& directory) {
            if (!directory.isOurs) return;
            directory.offset = static_cast<std::uint32_t>(at);
            at += directory.Length();
        };
        const auto placeValues = [&](Directory& directory) {
            for (Entry& entry : directory.entries) {
                if (!entry.own) continue;
                SetField(entry, static_cast<std::uint32_t>(at));
                at += Even(entry.own->size());
            }
        };
        placeDirectory(main_);
        if (exif_) placeDirectory(*exif_);
        placeValues(main_);
        if (exif_) {
            placeValues(*exif_);
            if (exif_->isOurs)
                if (Entry* pointer = main_.Find(kExifPointer)) {
                    pointer->type = kLongType;
                    pointer->count = 1;
                    SetField(*pointer, exif_->offset);
                }
        }
        return at;
    }

    void SetField(Entry& entry, std::uint32_t number) const {
        const std::string bytes = Word32(number);
        std::copy(bytes.begin(), bytes.end(), entry.field.begin());
    }

    // 0 when it would pass the limit.
    std::size_t ChooseLength(std::size_t needed, const Growth& growth) const {
        const std::size_t now = isNew_ ? 0 : block_.size();
        if (!isNew_ && hasArea_ && needed <= now) return now;
        const std::size_t overhead = isNew_ ? growth.overhead : 0;
        const auto inSteps = [&](std::size_t wanted) {
            const std::size_t added = wanted + overhead - now;
            return now + (added + growth.step - 1) / growth.step * growth.step - overhead;
        };
        for (const std::size_t length : {inSteps(needed + growth.spare), inSteps(needed)})
            if (length <= growth.most) return length;
        return needed <= growth.most ? std::min(growth.most, needed + growth.spare) : 0;
    }

    EditResult WriteArea(const Growth& growth, std::string& edited) {
        const std::size_t length = ChooseLength(PlaceInArea() + kAreaTail, growth);
        if (length == 0) return EditResult::TooLarge;
        // What points past the end would find something there after growing.
        if (length > block_.size() && std::any_of(broken_.begin(), broken_.end(), [&](const Range& range) {
                return range.begin < length && range.end > block_.size();
            }))
            return EditResult::Unreadable;
        edited.resize(areaStart_, '\0');
        edited.resize(length, '\0');
        WriteDirectory(main_, edited);
        if (exif_) WriteDirectory(*exif_, edited);
        if (main_.isOurs) Overwrite(edited, 4, Word32(main_.offset));
        const std::size_t tail = length - kAreaTail;
        Overwrite(edited, tail, kAreaMark);
        Overwrite(
            edited, tail + kAreaMark.size(),
            Word32(static_cast<std::uint32_t>(areaStart_)) + Word32(static_cast<std::uint32_t>(length)));
        return EditResult::Edited;
    }

    void WriteDirectory(const Directory& directory, std::string& edited) const {
        if (directory.isOurs) {
            std::string bytes = Word16(static_cast<std::uint32_t>(directory.entries.size()));
            for (const Entry& entry : directory.entries) bytes += EntryBytes(entry);
            Overwrite(edited, directory.offset, bytes + Word32(directory.next));
        }
        for (const Entry& entry : directory.entries) {
            if (entry.own) Overwrite(edited, FieldNumber(entry), *entry.own);
            const bool isPointer =
                entry.tag == kExifPointer && exif_ && exif_->isOurs && &directory == &main_;
            if (!directory.isOurs && (entry.own || isPointer)) WriteEntryInPlace(directory, entry, edited);
        }
    }

    std::string_view block_;
    ByteOrder order_ = ByteOrder::Little;
    ByteReader reader_;
    Directory main_;
    std::optional<Directory> exif_;
    bool hasExifPointer_ = false;
    bool isNew_ = false;
    bool isChanged_ = false;
    bool hasArea_ = false;
    std::size_t areaStart_ = 0;
    std::vector<Range> used_;     // directories and values
    std::vector<Range> foreign_;  // those of them that are never edited here
    std::vector<Range> broken_;   // what reaches past the end of the block
};

}  // namespace

EditResult EditBlock(std::string_view block, std::span<const Edit> edits, const Growth& growth,
                     std::string& edited) {
    BlockEditor editor(block);
    return editor.Parse() ? editor.Run(edits, growth, edited) : EditResult::Unreadable;
}

bool HasDirectory(std::string_view block, Home home) {
    if (block.empty()) return false;
    BlockEditor editor(block);
    return editor.Parse() && (home == Home::Main || editor.HasExif());
}

}  // namespace kalmora::exif
