#include "media/multi_picture_index.h"

#include <limits>

#include "base/byte_reader.h"
#include "media/exif_layout.h"
#include "media/exif_tags.h"

namespace kalmora {

namespace {

using namespace std::string_view_literals;
constexpr std::string_view kHead = "MPF\0"sv;
static_assert(kHead.size() == kMultiPictureHead);

constexpr std::size_t kPictureLength = 16, kLengthAt = 4, kOffsetAt = 8;
constexpr std::uint16_t kPictureList = 0xB002;

struct Index {
    ByteReader reader;             // from the header on
    std::size_t pictures = 0;      // where their list begins
    std::size_t pictureCount = 0;  // how many it has
};

std::optional<Index> Follow(std::string_view payload) {
    if (!IsMultiPictureIndex(payload)) return std::nullopt;
    const std::string_view block = payload.substr(kHead.size());
    const ByteOrder order = block.starts_with("MM") ? ByteOrder::Big : ByteOrder::Little;
    if (order == ByteOrder::Little && !block.starts_with("II")) return std::nullopt;
    const ByteReader reader({reinterpret_cast<const std::uint8_t*>(block.data()), block.size()}, order);
    constexpr unsigned kTiff = 42;
    if (reader.U16(2) != kTiff) return std::nullopt;
    const std::size_t directory = reader.U32(4).value_or(0);
    const std::size_t count = reader.U16(directory).value_or(0);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t at = directory + 2 + i * exif::kEntryLength;
        if (!reader.Has(at, exif::kEntryLength)) return std::nullopt;
        if (reader.U16(at) != kPictureList) continue;
        const std::size_t length = *reader.U32(at + 4), begin = *reader.U32(at + 8);
        if (reader.U16(at + 2) != exif::kUndefinedType || length == 0 || length % kPictureLength != 0 ||
            !reader.Has(begin, length))
            return std::nullopt;
        return Index{reader, begin, length / kPictureLength};
    }
    return std::nullopt;
}

// Empty optional for a place in front of `from` or too far behind it.
std::optional<std::uint32_t> Distance(std::int64_t to, std::int64_t from) {
    if (to < from || to - from > std::numeric_limits<std::uint32_t>::max()) return std::nullopt;
    return static_cast<std::uint32_t>(to - from);
}

void Put(std::string& bytes, std::size_t at, std::uint32_t number, ByteOrder order) {
    for (std::size_t i = 0; i < 4; ++i)
        bytes[at + i] = static_cast<char>(number >> 8 * (order == ByteOrder::Big ? 3 - i : i) & 0xFF);
}

}  // namespace

bool IsMultiPictureIndex(std::string_view payload) { return payload.starts_with(kHead); }

std::optional<std::vector<IndexedPicture>> ReadMultiPictureIndex(std::string_view payload) {
    const auto index = Follow(payload);
    if (!index) return std::nullopt;
    std::vector<IndexedPicture> pictures;
    for (std::size_t i = 0; i < index->pictureCount; ++i) {
        const std::size_t at = index->pictures + i * kPictureLength;
        pictures.push_back({*index->reader.U32(at + kLengthAt), *index->reader.U32(at + kOffsetAt)});
    }
    return pictures;
}

bool ShiftMultiPictureIndex(std::string& payload, std::uint64_t headerAt, const FileShift& shift) {
    const auto index = Follow(payload);
    const auto pictures = ReadMultiPictureIndex(payload);
    if (!index || !pictures) return false;
    const auto place = static_cast<std::int64_t>(shift.place);
    const auto moved = [&](std::int64_t at) { return at >= place ? at + shift.by : at; };
    const auto header = static_cast<std::int64_t>(headerAt);
    std::string shifted = payload;
    for (std::size_t i = 0; i < pictures->size(); ++i) {
        const auto& [length, offset] = (*pictures)[i];
        const std::size_t at = kHead.size() + index->pictures + i * kPictureLength;
        const std::int64_t begin = offset == 0 ? 0 : header + offset, end = begin + length;
        // A picture that has no length is named and not there.
        if (length == 0) continue;
        const bool grows = offset == 0 && place <= end;
        if (offset != 0 && begin < place && place < end) return false;
        const auto newLength = Distance(grows ? end + shift.by : end, begin);
        const auto newOffset = offset == 0 ? std::optional(0u) : Distance(moved(begin), moved(header));
        if (!newLength || !newOffset) return false;
        Put(shifted, at + kLengthAt, *newLength, index->reader.Order());
        Put(shifted, at + kOffsetAt, *newOffset, index->reader.Order());
    }
    payload = std::move(shifted);
    return true;
}

}  // namespace kalmora
