#include "media/exif_block.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "media/exif_block_map.h"
#include "media/exif_tags.h"

namespace kalmora::exif {

namespace {

constexpr std::string_view kAreaMark("KALMORA\0", 8);
constexpr std::size_t kAreaTail = 16;

std::size_t Even(std::size_t value) { return value + value % 2; }

class BlockEditor {
public:
    explicit BlockEditor(std::string_view block)
        : block_(block), map_(block), main_(map_.main), exif_(map_.exif) {}

    // False when the main directory cannot be followed.
    bool Parse() {
        if (block_.empty()) {
            block_ = std::string_view("II*\0\0\0\0\0", kHeaderLength);
            main_.isOurs = main_.hasNext = true;
            areaStart_ = kHeaderLength;
            isNew_ = true;
            return true;
        }
        if (!map_.Follow()) return false;
        FindArea();
        if (main_.isShared) main_.isOurs = true;
        if (exif_ && exif_->isShared) exif_->isOurs = true;
        RememberValues(Home::Main, main_);
        if (exif_) RememberValues(Home::Exif, *exif_);
        return true;
    }

    EditResult Run(std::span<const Edit> edits, const Growth& growth, std::string& edited) {
        edited.assign(block_);
        for (const Edit& edit : edits)
            if (!Apply(edit, edited)) return EditResult::Unreadable;
        if (!isChanged_) return EditResult::Unchanged;
        const EditResult result = NeedsArea() ? WriteArea(growth, edited) : EditResult::Edited;
        return result == EditResult::Edited && !KeepsOthers(edits, edited) ? EditResult::Unreadable : result;
    }

private:
    // Where a value was before.
    struct Place {
        Home home;
        std::uint16_t tag;
        Range where;
    };
    void RememberValues(Home home, const Directory& directory) {
        for (const Entry& entry : directory.entries)
            if (entry.IsFar() && !entry.own) values_.push_back({home, entry.tag, map_.ValueOf(entry)});
    }

    // Everything that was not edited reads as before, also where it lies in an unusual place.
    bool KeepsOthers(std::span<const Edit> edits, const std::string& edited) const {
        const auto isKept = [&](const Range& range) {
            const auto begin = static_cast<std::size_t>(std::min<std::uint64_t>(range.begin, block_.size()));
            const auto end = static_cast<std::size_t>(std::min<std::uint64_t>(range.end, block_.size()));
            return block_.substr(begin, end - begin) == std::string_view(edited).substr(begin, end - begin);
        };
        const auto isEdited = [&](const Place& place) {
            return std::any_of(edits.begin(), edits.end(), [&](const Edit& edit) {
                return edit.home == place.home && edit.tag == place.tag;
            });
        };
        return std::all_of(map_.foreign.begin(), map_.foreign.end(), isKept) &&
               std::all_of(map_.noted.begin(), map_.noted.end(), isKept) &&
               std::all_of(values_.begin(), values_.end(),
                           [&](const Place& place) { return isEdited(place) || isKept(place.where); });
    }

    // ---- our area
    void FindArea() {
        areaStart_ = Even(block_.size());
        if (block_.size() < kHeaderLength + kAreaTail) return;
        const std::size_t tail = block_.size() - kAreaTail;
        const std::uint32_t start = map_.Number(tail + kAreaMark.size());
        if (block_.substr(tail, kAreaMark.size()) != kAreaMark || map_.Number(tail + 12) != block_.size())
            return;
        if (start < kHeaderLength || start % 2 != 0 || start > tail) return;
        const auto isInside = [&](const Range& range) { return range.begin >= start && range.end <= tail; };
        const auto isOutside = [&](const Range& range) { return range.end <= start; };
        if (!std::all_of(map_.foreign.begin(), map_.foreign.end(), isOutside)) return;
        for (const Range& range : map_.used)
            if (!isInside(range) && !isOutside(range)) return;
        areaStart_ = start;
        hasArea_ = true;
        TakeOver(main_);
        if (exif_) TakeOver(*exif_);
    }

    // The content of the area gets a new layout each time.
    void TakeOver(Directory& directory) {
        directory.isOurs = directory.offset >= areaStart_;
        for (Entry& entry : directory.entries) {
            if (!entry.IsFar()) continue;
            const Range value = map_.ValueOf(entry);
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
        const Range old = map_.ValueOf(entry);
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
        const Range value = map_.ValueOf(entry);
        if (value.end > block_.size()) return {};
        return block_.substr(static_cast<std::size_t>(value.begin), static_cast<std::size_t>(entry.length));
    }

    // The old value's place is long enough and belongs to nothing else, also not according to a maker note
    // that another program has moved and so separated from its values.
    bool HasRoomFor(const Entry& entry, std::size_t length) const {
        if (!entry.IsFar() || entry.length < length) return false;
        const Range place = map_.ValueOf(entry);
        if (place.begin < kHeaderLength || place.end > block_.size()) return false;
        const auto others = std::count_if(map_.used.begin(), map_.used.end(),
                                          [&](const Range& range) { return range.Overlaps(place); });
        return others == 1 && std::none_of(map_.noted.begin(), map_.noted.end(),
                                           [&](const Range& range) { return range.Overlaps(place); });
    }

    bool MakeExif() {
        if (map_.hasExifPointer) return false;  // it is there and cannot be followed
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
        return map_.Order() == ByteOrder::Big ? std::string{high, low} : std::string{low, high};
    }
    std::string Word32(std::uint32_t value) const {
        const std::string low = Word16(value & 0xFFFF), high = Word16(value >> 16);
        return map_.Order() == ByteOrder::Big ? high + low : low + high;
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

    // The filling at the end of the block: bytes that are all zero or all FF.
    std::size_t FillingStart() const {
        if (block_.empty() || (block_.back() != '\0' && block_.back() != '\xFF')) return block_.size();
        const std::size_t last = block_.find_last_not_of(block_.back());
        return last == std::string_view::npos ? block_.size() : last + 1;
    }

    // Where an area in the filling may begin; nothing when something is known to lie there. `isSure`: all
    // that lies in front of it is known.
    std::optional<std::size_t> PlaceInFilling(const Growth& growth, bool& isSure) const {
        constexpr std::size_t kSlack = 16, kDistance = 64, kLeast = 2048;
        const std::size_t filling = FillingStart();
        std::uint64_t known = growth.taken;
        for (const auto* ranges : {&map_.used, &map_.noted})
            for (const Range& range : *ranges)
                if (range.begin < block_.size()) known = std::max(known, range.end);
        if (known >= block_.size()) return std::nullopt;
        isSure = filling <= known + kSlack;
        if (isSure) return Even(std::max<std::size_t>(filling, static_cast<std::size_t>(known)));
        if (block_.size() - filling < kLeast) return std::nullopt;
        return Even(filling + kDistance);
    }

    // The area in room that the block has already. False when it does not fit.
    bool FitsInFilling(std::size_t start) {
        areaStart_ = start;
        return PlaceInArea() + kAreaTail <= block_.size();
    }

    EditResult WriteArea(const Growth& growth, std::string& edited) {
        bool isSure = false;
        const auto filling = hasArea_ || isNew_ ? std::nullopt : PlaceInFilling(growth, isSure);
        if (filling && isSure && FitsInFilling(*filling)) return FillArea(block_.size(), edited);
        if (!hasArea_ && !isNew_) areaStart_ = Even(block_.size() + growth.kept.size());
        const std::size_t length = ChooseLength(PlaceInArea() + kAreaTail, growth);
        if (length == 0) {
            if (filling && FitsInFilling(*filling)) return FillArea(block_.size(), edited);
            return EditResult::TooLarge;
        }
        // What points past the end would find something there after growing.
        if (length > block_.size() && growth.pastEnd == Growth::PastEnd::Refused &&
            std::any_of(map_.outside.begin(), map_.outside.end(), [&](const Outside& outside) {
                return outside.where.begin < length && outside.where.end > block_.size();
            }))
            return EditResult::Unreadable;
        if (length > block_.size() && hasArea_ && !growth.kept.empty()) return EditResult::Unreadable;
        const EditResult result = FillArea(length, edited);
        if (length > block_.size() && !isNew_) Overwrite(edited, block_.size(), growth.kept);
        return result;
    }

    EditResult FillArea(std::size_t length, std::string& edited) {
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
            if (entry.own) Overwrite(edited, map_.FieldOffset(entry), *entry.own);
            const bool isPointer =
                entry.tag == kExifPointer && exif_ && exif_->isOurs && &directory == &main_;
            if (!directory.isOurs && (entry.own || isPointer)) WriteEntryInPlace(directory, entry, edited);
        }
    }

    std::string_view block_;
    BlockMap map_;
    Directory& main_;
    std::optional<Directory>& exif_;
    std::vector<Place> values_;  // of the main and the Exif directory, but for those in our area
    bool isNew_ = false;
    bool isChanged_ = false;
    bool hasArea_ = false;
    std::size_t areaStart_ = 0;
};

}  // namespace

EditResult EditBlock(std::string_view block, std::span<const Edit> edits, const Growth& growth,
                     std::string& edited) {
    BlockEditor editor(block);
    return editor.Parse() ? editor.Run(edits, growth, edited) : EditResult::Unreadable;
}

bool HasDirectory(std::string_view block, Home home) {
    BlockMap map(block);
    return map.Follow() && (home == Home::Main || map.exif);
}

}  // namespace kalmora::exif
