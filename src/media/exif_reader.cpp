#include "media/exif_reader.h"

#include <algorithm>

#include "media/exif_layout.h"
#include "media/exif_tags.h"
#include "media/jpeg_markers.h"
#include "media/jpeg_segments.h"

namespace kalmora::exif {

namespace {

constexpr std::uint64_t kLongestValue = 1u << 20;

enum class Directory { Main, Exif, Gps, Interoperability, Thumbnail };
constexpr std::size_t kDirectories = 5;

struct Wanted {
    std::uint16_t id;
    Directory home;
};

// By Tag, which is the order of the ids: a lookup searches by halves.
constexpr std::array<Wanted, kWantedTags> kWanted{{
    {0x010F, Directory::Main},  // Make
    {0x0112, Directory::Main},  // Orientation
    {0x0132, Directory::Main},  // DateTime
    {0x829A, Directory::Exif},  // ExposureTime
    {0x8822, Directory::Exif},  // ExposureProgram
    {0x8827, Directory::Exif},  // IsoSpeedRatings
    {0x9003, Directory::Exif},  // DateTimeOriginal
    {0x9201, Directory::Exif},  // ShutterSpeedValue
    {0x9202, Directory::Exif},  // ApertureValue
    {0x9203, Directory::Exif},  // BrightnessValue
    {0x9204, Directory::Exif},  // ExposureBiasValue
    {0x9209, Directory::Exif},  // Flash
    {0x927C, Directory::Exif},  // MakerNote
    {0x9286, Directory::Exif},  // UserComment
    {0x9C9C, Directory::Main},  // XpComment
}};
static_assert(static_cast<std::size_t>(Tag::XpComment) + 1 == kWantedTags);
static_assert(std::is_sorted(kWanted.begin(), kWanted.end(),
                             [](const Wanted& a, const Wanted& b) { return a.id < b.id; }));

// The place in kWanted; kWantedTags for a tag that is not wanted.
std::size_t IndexOf(std::uint16_t id) {
    const auto found =
        std::lower_bound(kWanted.begin(), kWanted.end(), id,
                         [](const Wanted& wanted, std::uint16_t value) { return wanted.id < value; });
    return found != kWanted.end() && found->id == id ? static_cast<std::size_t>(found - kWanted.begin())
                                                     : kWantedTags;
}

// One pass over the directories of one block.
class BlockScan {
public:
    BlockScan(ByteWindow& file, Block& block) : file_(file), block_(block) {}

    // How many bytes of the block its entries reach over.
    std::uint64_t Run(std::uint32_t mainOffset) {
        const std::uint32_t next = ReadDirectory(mainOffset, Directory::Main);
        // The Exif directory may name the other two, so it comes first.
        for (const Directory which : {Directory::Exif, Directory::Gps, Directory::Interoperability})
            if (pointers_[static_cast<std::size_t>(which)] != 0)
                ReadDirectory(pointers_[static_cast<std::size_t>(which)], which);
        if (next != 0) {
            // The last that is asked for is this directory or a value in front of it, such as the maker note.
            constexpr std::uint64_t kUsualLength = 256;
            file_.Expect(block_.start + std::max(end_, std::min(block_.length, next + kUsualLength)));
            ReadDirectory(next, Directory::Thumbnail);
        }
        SettleThumbnail();
        return end_;
    }

private:
    // The offset of the directory that follows; 0 when there is none.
    std::uint32_t ReadDirectory(std::uint32_t offset, Directory which) {
        // A directory that points back to one that was read would never end.
        if (offset < 8 || std::find(read_.begin(), read_.end(), offset) != read_.end()) return 0;
        read_[static_cast<std::size_t>(which)] = offset;
        const auto count = At(offset, 2).U16(0);
        if (!count) return 0;
        std::uint64_t position = std::uint64_t{offset} + 2;
        for (int i = 0; i < *count; ++i, position += kEntryLength) {
            const ByteReader entry = At(position, kEntryLength);
            if (entry.Length() == 0) return 0;  // the count passes the end of the block
            ReadEntry(entry, position, which);
        }
        return At(position, 4).U32(0).value_or(0);
    }

    void ReadEntry(ByteReader entry, std::uint64_t position, Directory which) {
        const std::uint16_t tag = *entry.U16(0), type = *entry.U16(2);
        const std::uint64_t length = std::uint64_t{*entry.U32(4)} * ElementLength(type);
        if (length == 0 || length > block_.length) return;
        if ((which == Directory::Main || which == Directory::Exif) && TakePointer(tag, type, entry)) return;
        const std::uint64_t value = length <= 4 ? position + 8 : *entry.U32(8);
        if (length > block_.length - std::min(value, block_.length)) return;
        end_ = std::max(end_, value + length);
        ++block_.propertyCount;
        if (which == Directory::Thumbnail) {
            if (tag == kThumbnailOffset) thumbnailOffset_ = Number(entry, type);
            if (tag == kThumbnailLength) thumbnailLength_ = Number(entry, type);
        }
        if (which != Directory::Main && which != Directory::Exif) return;
        const std::size_t index = IndexOf(tag);
        if (index == kWantedTags) return;
        const bool home = kWanted[index].home == which;
        if (block_.items[index] && (fromHome_[index] || !home)) return;
        fromHome_[index] = home;
        block_.items[index] = {type, static_cast<std::uint32_t>(length), block_.start + value};
    }

    bool TakePointer(std::uint16_t tag, std::uint16_t type, ByteReader entry) {
        Directory target;
        switch (tag) {
            case kExifPointer:
                target = Directory::Exif;
                break;
            case kGpsPointer:
                target = Directory::Gps;
                break;
            case kInteroperabilityPointer:
                target = Directory::Interoperability;
                break;
            default:
                return false;
        }
        std::uint32_t& pointer = pointers_[static_cast<std::size_t>(target)];
        if (pointer == 0 && IsWholeNumber(type)) pointer = Number(entry, type);
        return true;
    }

    static std::uint32_t Number(ByteReader entry, std::uint16_t type) {
        return type == kShortType ? *entry.U16(8) : *entry.U32(8);
    }

    void SettleThumbnail() {
        // That it lies in the file is looked at when it is taken: asking now would cost every photo a call.
        if (thumbnailOffset_ == 0 || thumbnailLength_ == 0) return;
        block_.thumbnailOffset = block_.start + thumbnailOffset_;
        block_.thumbnailLength = thumbnailLength_;
        ++block_.propertyCount;
    }

    ByteReader At(std::uint64_t offset, std::size_t length) {
        if (offset > block_.length || length > block_.length - offset) return {};
        return {file_.At(block_.start + offset, length), block_.order};
    }

    ByteWindow& file_;
    Block& block_;
    std::array<std::uint32_t, kDirectories> read_{};      // offsets of the directories that were read
    std::array<std::uint32_t, kDirectories> pointers_{};  // offsets of those that others name
    std::array<bool, kWantedTags> fromHome_{};
    std::uint32_t thumbnailOffset_ = 0;  // from the start of the block
    std::uint32_t thumbnailLength_ = 0;
    std::uint64_t end_ = 0;
};

// Reads the block whose TIFF header is at `start`. False when there is none or it has no entry.
bool ReadBlockAt(ByteWindow& file, std::uint64_t start, std::uint64_t length, Block& block) {
    const auto header = file.At(start, 8);
    if (header.size() < 8 || length < 8) return false;
    const bool little = header[0] == 'I' && header[1] == 'I';
    if (!little && !(header[0] == 'M' && header[1] == 'M')) return false;
    const ByteOrder order = little ? ByteOrder::Little : ByteOrder::Big;
    const ByteReader reader(header, order);
    if (*reader.U16(2) != 42) return false;
    const std::uint32_t mainOffset = *reader.U32(4);
    block = Block{start, length, order};
    if (const std::uint64_t end = BlockScan(file, block).Run(mainOffset); !file.Has(start, end)) {
        // The file is cut inside the block. Once more, with what there really is.
        block = Block{start, std::min(length, file.Size() - std::min(start, file.Size())), order};
        BlockScan(file, block).Run(mainOffset);
    }
    return block.propertyCount > 0;
}

// How many bytes of an APP1 payload come before its TIFF header; 0 when it holds no Exif. "Exif", a zero
// byte and a byte that is mostly zero; a few writers leave up to four bytes in front of it.
std::uint32_t ExifHeaderLength(std::span<const std::uint8_t> payload) {
    constexpr std::size_t kMostBefore = 4, kLength = 6;
    const ByteReader reader(payload, ByteOrder::Big);
    for (std::size_t before = 0; before <= kMostBefore; ++before)
        if (reader.StartsWith(before, {"Exif\0", 5})) return static_cast<std::uint32_t>(before + kLength);
    return 0;
}

}  // namespace

bool ReadBlock(ByteWindow& file, Block& block) {
    JpegSegmentWalk walk(file);
    if (!walk.IsJpeg()) return ReadBlockAt(file, 0, file.Size(), block);
    JpegSegment segment;
    while (walk.Next(segment)) {
        if (segment.marker != jpeg::kApp1) continue;
        const std::uint32_t before =
            ExifHeaderLength(file.At(segment.payload, std::min<std::size_t>(segment.length, 10)));
        if (before == 0) continue;
        if (ReadBlockAt(file, segment.payload + before, segment.length - before, block)) return true;
    }
    return false;
}

std::int32_t FirstNumber(ByteWindow& file, const Block& block, Tag tag) {
    const Item& item = block.Find(tag);
    if (!item) return 0;
    const std::size_t length = std::min<std::size_t>(item.length, 4);
    const ByteReader value(file.At(item.offset, length), block.order);
    if (value.Length() < length) return 0;
    switch (ElementLength(item.type)) {
        case 1: {
            // Bytes and text have no order: they are taken as they are, the first the lowest.
            std::uint32_t number = 0;
            for (std::size_t i = length; i-- > 0;) number = number << 8 | *value.U8(i);
            return static_cast<std::int32_t>(number);
        }
        case 2:
            return static_cast<std::int16_t>(*value.U16(0));
        default:
            return static_cast<std::int32_t>(*value.U32(0));
    }
}

std::optional<std::string> ReadValue(ByteWindow& file, const Block& block, Tag tag) {
    const Item& item = block.Find(tag);
    if (!item) return std::nullopt;
    return file.Copy(item.offset, item.length, kLongestValue);
}

}  // namespace kalmora::exif
