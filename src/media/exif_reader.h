// The tags of a photo's Exif block: found by one pass over its directories, described by place and type.
// Values are read only when asked for. Sources: TIFF 6.0 for the directories, Exif 2.3 for the tags and the
// APP1 header. Nothing here decodes a picture; every byte is reached through a bounded reader, every offset
// is checked against the block and the file, every directory is read once.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "base/byte_reader.h"
#include "media/byte_window.h"

namespace kalmora::exif {

// The tags that the program wants, in the order of their ids. Make, Orientation, DateTime and XPComment are
// at home in the main directory, the others in the Exif directory; a tag that its home does not have is taken
// from the other of the two.
enum class Tag : std::uint8_t {
    Make,
    Orientation,
    DateTime,
    ExposureTime,
    ExposureProgram,
    IsoSpeedRatings,
    DateTimeOriginal,
    ShutterSpeedValue,
    ApertureValue,
    BrightnessValue,
    ExposureBiasValue,
    Flash,
    MakerNote,
    UserComment,
    XpComment,
};
inline constexpr std::size_t kWantedTags = 15;

// The types that the program distinguishes.

struct Item {
    std::uint16_t type = 0;    // 0: the photo has no such tag
    std::uint32_t length = 0;  // of the value in bytes, never 0 for a tag that is there
    std::uint64_t offset = 0;  // of the value in the file
    explicit operator bool() const { return type != 0; }
};

struct Block {
    std::uint64_t start = 0;   // of the TIFF header in the file; every offset in the block counts from here
    std::uint64_t length = 0;  // of the block from its TIFF header on
    ByteOrder order = ByteOrder::Little;
    // The entries of the main, Exif, GPS, interoperability and thumbnail directories whose value lies in the
    // block, and one for the thumbnail itself. The pointers between directories do not count.
    int propertyCount = 0;
    // The embedded JPEG in the file; it may pass the end of a file that was cut.
    std::uint64_t thumbnailOffset = 0;
    std::uint32_t thumbnailLength = 0;  // 0: there is none
    std::array<Item, kWantedTags> items{};

    const Item& Find(Tag tag) const { return items[static_cast<std::size_t>(tag)]; }
};

// The first block of the file that has any entry: in a JPEG's APP1 segments, or the whole of a TIFF file.
// Empty when there is none. A tag that is twice in a directory counts twice and is found the first time.
bool ReadBlock(ByteWindow& file, Block& block);

// The first number of a value: 16 bits taken as signed for SHORT, else the first 32 bits, so that a rational
// gives its numerator. 0 for an absent tag.
std::int32_t FirstNumber(ByteWindow& file, const Block& block, Tag tag);
// The bytes of a value; empty optional when the tag is absent or its value is past 1 MB.
std::optional<std::string> ReadValue(ByteWindow& file, const Block& block, Tag tag);

}  // namespace kalmora::exif
