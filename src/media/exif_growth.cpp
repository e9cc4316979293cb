#include "media/exif_growth.h"

#include <algorithm>
#include <array>
#include <functional>
#include <limits>
#include <optional>

#include "media/exif_block_map.h"
#include "media/exif_tags.h"
#include "media/maker_note_places.h"

namespace kalmora::exif {

namespace {

constexpr std::uint64_t kMostGrowth = 1u << 16;  // the most that a segment holds
constexpr std::uint64_t kMostKept = 4096;
constexpr std::uint32_t kShortestPicture = 256;
constexpr std::size_t kPictureHead = 4;
// How far from a picture's place its length is: beside it, or in an entry of a directory near by.
constexpr std::array<int, 12> kLengthSteps{-4, 4, -8, 8, -12, 12, -16, 16, -20, 20, -24, 24};
// Some makers put a head of their own in front of the picture.
constexpr std::array<std::uint64_t, 2> kOwnHeads{0, 32};
constexpr std::size_t kTailLooked = 4096;  // of a picture, for its end marker

// The first byte may be anything: some makers blank it, so that no program takes the preview for the photo.
bool IsPictureHead(std::span<const std::uint8_t> bytes) {
    if (bytes.size() < kPictureHead || bytes[1] != 0xD8 || bytes[2] != 0xFF) return false;
    const std::uint8_t marker = bytes[3];
    return marker == 0xDB || marker == 0xC0 || marker == 0xC2 || marker == 0xC4 || marker == 0xDD ||
           marker == 0xFE || (marker >= 0xE0 && marker <= 0xEF);
}

// Behind the end marker only filling.
bool EndsPicture(std::span<const std::uint8_t> tail) {
    std::size_t end = tail.size();
    while (end > 0 && (tail[end - 1] == 0 || tail[end - 1] == 0xFF)) --end;
    for (const std::size_t extra : {0u, 1u})
        if (end >= 2 + extra && tail[end - 2 - extra] == 0xFF && tail[end - 1 - extra] == 0xD9) return true;
    return false;
}

// From where numbers in the block count, as places in the block.
std::vector<std::int64_t> Bases(std::uint64_t blockStart, const std::optional<Range>& note) {
    std::vector<std::int64_t> bases{0, -static_cast<std::int64_t>(blockStart)};
    if (note)
        for (const std::int64_t header : {0, 8, 10, 12})
            bases.push_back(static_cast<std::int64_t>(note->begin) + header);
    return bases;
}

// The pictures behind the block's end that the block names.
class PicturesBehind {
public:
    PicturesBehind(ByteWindow& file, std::string_view block, std::uint64_t blockStart,
                   const std::optional<Range>& note)
        : file_(file), block_(block), start_(blockStart), size_(file.Size()), note_(note) {}

    void Find(BlockGrowth& growth) {
        const std::vector<std::int64_t> bases = Bases(start_, note_);
        for (const ByteOrder order : {ByteOrder::Little, ByteOrder::Big}) {
            const ByteReader reader = ReaderOf(block_, order);
            for (std::size_t at = 0; at + 4 <= block_.size(); ++at) {
                const std::uint32_t number = *reader.U32(at);
                if (number == 0 || number >= size_) continue;
                for (const std::int64_t base : bases) Look(reader, at, base + std::int64_t{number}, growth);
            }
        }
    }

private:
    void Look(const ByteReader& reader, std::size_t at, std::int64_t place, BlockGrowth& growth) {
        if (place < static_cast<std::int64_t>(block_.size())) return;
        const std::uint64_t begin = start_ + static_cast<std::uint64_t>(place);
        if (begin >= size_) return;
        const bool isNotes = note_ && at >= note_->begin && at < note_->end && (at - note_->begin) % 2 == 0;
        const std::vector<std::uint32_t> lengths = LengthsNear(reader, at, size_ - begin);
        if (lengths.empty() && !isNotes) return;
        if (!IsPicture(begin)) return;
        const bool isWhole = std::any_of(lengths.begin(), lengths.end(), [&](std::uint32_t length) {
            return IsEndAt(begin + length, length);
        });
        if (!isWhole) {
            if (isNotes) growth.refusal = GrowthRefusal::Note;
        } else if (std::none_of(growth.moved.begin(), growth.moved.end(),
                                [&](const MovedNumber& other) { return other.at == at; })) {
            growth.moved.push_back({at, reader.Order()});
        }
    }

    std::vector<std::uint32_t> LengthsNear(const ByteReader& reader, std::size_t at,
                                           std::uint64_t most) const {
        std::vector<std::uint32_t> lengths;
        for (const int step : kLengthSteps) {
            if (step < 0 && at < static_cast<std::size_t>(-step)) continue;
            const auto length = reader.U32(at + static_cast<std::size_t>(step));
            if (length && *length >= kShortestPicture && *length <= most) lengths.push_back(*length);
        }
        return lengths;
    }
    bool IsPicture(std::uint64_t begin) {
        return std::any_of(kOwnHeads.begin(), kOwnHeads.end(), [&](std::uint64_t head) {
            return IsPictureHead(file_.At(begin + head, kPictureHead));
        });
    }
    bool IsEndAt(std::uint64_t end, std::uint32_t length) {
        const std::size_t tail = std::min<std::size_t>(length, kTailLooked);
        return EndsPicture(file_.At(end - tail, tail));
    }

    ByteWindow& file_;
    std::string_view block_;
    std::uint64_t start_, size_;
    std::optional<Range> note_;
};

// Decides about what the directories and the maker note say outside the block.
class Places {
public:
    Places(const BlockMap& map, std::uint64_t blockStart, std::uint64_t fileSize, BlockGrowth& growth)
        : end_(map.Block().size()), fileEnd_(fileSize - blockStart), start_(blockStart), growth_(growth) {
        if (!map.note) return;
        note_ = *map.note;
        const NotePlaces read = MakerNotePlaces(map.Block(), note_, map.Order());
        noteBase_ = read.base;
        for (const NotePlace& place : read.places) noted_.push_back(place.where);
        noteBegin_ = read.directory;
    }

    void Plan(const Outside& outside) {
        const bool isNotes = outside.what == Outside::What::NotePlace;
        const GrowthRefusal refusal = isNotes ? GrowthRefusal::Note : GrowthRefusal::Block;
        if (IsMoved(outside.number)) return;
        const Range& where = outside.where;
        // A place outside the file is not read, before the growth or after it.
        const bool isNowhere = where.end > fileEnd_ && where.end > end_ + kMostGrowth;
        if (where.begin >= end_) {
            if (where.begin >= end_ + kMostGrowth && where.begin >= fileEnd_) return;
            if (isNotes && FitsFromElsewhere()) {
                if (where.end <= end_ + kMostKept && where.end <= fileEnd_) Keep(where);
                return;
            }
            if (outside.number == 0 || (isNotes && !IsBaseSure()))
                growth_.refusal = refusal;
            else
                growth_.moved.push_back({outside.number, outside.order});
            return;
        }
        if (isNowhere) return;
        const bool mayKeep = isNotes || outside.what == Outside::What::Picture;
        if (mayKeep && where.end - end_ <= kMostKept && where.end <= fileEnd_)
            Keep(where);
        else if (!isNotes || !FitsFromElsewhere())
            growth_.refusal = refusal;
    }

private:
    bool IsMoved(std::size_t number) const {
        return number != 0 && std::any_of(growth_.moved.begin(), growth_.moved.end(),
                                          [&](const MovedNumber& moved) { return moved.at == number; });
    }
    void Keep(const Range& where) {
        growth_.kept = std::max(growth_.kept, static_cast<std::size_t>(where.end - end_));
    }
    // Counted from another place that makers count from, or as an editor has left a note that it moved,
    // everything the note names lies in the block: then it stays where it is.
    bool FitsFromElsewhere() const {
        if (noted_.empty()) return false;
        std::int64_t first = std::numeric_limits<std::int64_t>::max(), last = 0;
        for (const Range& place : noted_) {
            first = std::min(first, static_cast<std::int64_t>(place.begin));
            last = std::max(last, static_cast<std::int64_t>(place.end));
        }
        for (const std::int64_t base : Bases(start_, note_)) {
            const std::int64_t shift = base - static_cast<std::int64_t>(noteBase_);
            if (shift != 0 && first + shift >= 0 && last + shift <= static_cast<std::int64_t>(end_))
                return true;
        }
        constexpr std::size_t kEnough = 3;
        return noted_.size() >= kEnough && last - first <= static_cast<std::int64_t>(note_.end - noteBegin_);
    }
    // Most of what the note names lies in itself.
    bool IsBaseSure() const {
        const auto inside = std::count_if(noted_.begin(), noted_.end(), [&](const Range& place) {
            return place.begin >= note_.begin && place.end <= note_.end;
        });
        return inside >= 2 && 2 * static_cast<std::size_t>(inside) >= noted_.size();
    }

    std::uint64_t end_, fileEnd_, start_;
    BlockGrowth& growth_;
    Range note_;
    std::uint64_t noteBase_ = 0, noteBegin_ = 0;
    std::vector<Range> noted_;
};

// True when raising the number would change something else too: in a broken block one value can lie across
// another, or across a directory.
bool IsSharedWithAnother(const BlockMap& map, const MovedNumber& moved) {
    const Range number{moved.at, moved.at + kFieldLength};
    const auto isInDirectory = [&](const Directory& directory) {
        std::uint64_t field = directory.offset + 2 + kEntryLength - kFieldLength;
        for (const Entry& entry : directory.entries) {
            const bool isItsOwn = number.begin == field;
            if (!isItsOwn && number.Overlaps({field + kFieldLength - kEntryLength, field + kFieldLength}))
                return true;
            if (entry.IsFar() && entry.tag != kMakerNote && number.Overlaps(map.ValueOf(entry))) return true;
            field += kEntryLength;
        }
        return false;
    };
    return isInDirectory(map.main) || (map.exif && isInDirectory(*map.exif));
}

}  // namespace

BlockGrowth PlanBlockGrowth(ByteWindow& file, std::string_view block, std::uint64_t blockStart) {
    BlockGrowth growth;
    BlockMap map(block);
    const std::uint64_t size = file.Size();
    if (!map.Follow() || size < blockStart + block.size()) {
        growth.refusal = GrowthRefusal::Block;
        return growth;
    }
    PicturesBehind(file, block, blockStart, map.note).Find(growth);
    Places places(map, blockStart, size, growth);
    for (const Outside& outside : map.outside) places.Plan(outside);
    if (std::any_of(growth.moved.begin(), growth.moved.end(),
                    [&](const MovedNumber& moved) { return IsSharedWithAnother(map, moved); }))
        growth.refusal = GrowthRefusal::Block;
    return growth;
}

bool MoveNumbers(std::string& block, const std::vector<MovedNumber>& moved, std::size_t by) {
    std::vector<bool> isTaken(block.size());
    for (const auto& [at, order] : moved) {
        const auto number = ReaderOf(block, order).U32(at);
        if (!number || *number > std::numeric_limits<std::uint32_t>::max() - by) return false;
        const auto raised = static_cast<std::uint32_t>(*number + by);
        for (std::size_t i = 0; i < 4; ++i) {
            if (isTaken[at + i]) return false;
            isTaken[at + i] = true;
            const std::size_t shift = 8 * (order == ByteOrder::Big ? 3 - i : i);
            block[at + i] = static_cast<char>(raised >> shift & 0xFF);
        }
    }
    return true;
}

std::size_t EndOfPicturesIn(std::string_view block, std::uint64_t blockStart) {
    BlockMap map(block);
    map.Follow();
    const std::vector<std::int64_t> bases = Bases(blockStart, map.note);
    const ByteReader bytes = ReaderOf(block, ByteOrder::Little);
    std::size_t last = 0;
    const auto lookFor = [&](std::int64_t place, std::int64_t base) {
        for (const ByteOrder order : {ByteOrder::Little, ByteOrder::Big}) {
            const ByteReader reader = ReaderOf(block, order);
            for (std::size_t at = 0; at + 4 <= block.size(); ++at) {
                if (base + std::int64_t{*reader.U32(at)} != place) continue;
                for (const int step : kLengthSteps) {
                    if (step < 0 && at < static_cast<std::size_t>(-step)) continue;
                    const auto length = reader.U32(at + static_cast<std::size_t>(step));
                    if (length && *length >= kShortestPicture)
                        if (const std::uint64_t end = static_cast<std::uint64_t>(place) + *length;
                            end <= block.size())
                            last = std::max(last, static_cast<std::size_t>(end));
                }
            }
        }
    };
    constexpr int kMostPictures = 8;
    int pictures = 0;
    for (std::size_t at = 0; at < block.size() && pictures < kMostPictures; ++at) {
        if (!IsPictureHead(bytes.Bytes(at, kPictureHead))) continue;
        ++pictures;
        for (const std::uint64_t head : kOwnHeads)
            if (at >= head)
                for (const std::int64_t base : bases) lookFor(static_cast<std::int64_t>(at - head), base);
    }
    return last;
}

}  // namespace kalmora::exif
