// Numbers of the Exif format that several readers and writers need: value types and tags (Exif 2.3, 4.6).
#pragma once

#include <cstdint>

namespace kalmora::exif {

inline constexpr std::uint16_t kByteType = 1, kAsciiType = 2, kShortType = 3, kLongType = 4,
                               kRationalType = 5, kUndefinedType = 7, kSignedLongType = 9,
                               kDirectoryType = 13;

inline constexpr std::uint16_t kExifPointer = 0x8769, kGpsPointer = 0x8825, kInteroperabilityPointer = 0xA005;
inline constexpr std::uint16_t kThumbnailOffset = 0x0201,
                               kThumbnailLength = 0x0202;  // in the thumbnail's directory
inline constexpr std::uint16_t kMakerNote = 0x927C;
inline constexpr std::uint16_t kPixelWidth = 0xA002, kPixelHeight = 0xA003;

// Types that hold one whole number an element, as offsets and lengths do.
constexpr bool IsWholeNumber(std::uint16_t type) {
    return type == kShortType || type == kLongType || type == kSignedLongType || type == kDirectoryType;
}

}  // namespace kalmora::exif
