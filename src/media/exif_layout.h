// The measures of an Exif block: how long its parts are, and places in it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "base/byte_reader.h"

namespace kalmora::exif {

inline constexpr std::size_t kHeaderLength = 8, kEntryLength = 12, kFieldLength = 4;

// Bytes of one element of a TIFF type; 0 for a type that does not exist.
constexpr std::size_t ElementLength(std::uint16_t type) {
    constexpr std::array<std::uint8_t, 14> lengths{0, 1, 1, 2, 4, 8, 1, 1, 2, 4, 8, 4, 8, 4};
    return type < lengths.size() ? lengths[type] : 0;
}

inline ByteReader ReaderOf(std::string_view bytes, ByteOrder order) {
    return {{reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()}, order};
}

// Places in the block; `end` may pass its end.
struct Range {
    std::uint64_t begin = 0, end = 0;
    bool Overlaps(const Range& other) const { return begin < other.end && other.begin < end; }
};

}  // namespace kalmora::exif
