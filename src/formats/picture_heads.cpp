#include "formats/picture_heads.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "base/byte_reader.h"
#include "base/crc32.h"

namespace kalmora {

namespace {

constexpr std::size_t kHeadLength = 512;

// Sides as the formats store them. Unset when there is no such side.
Size SizeOf(std::optional<std::uint64_t> width, std::optional<std::uint64_t> height) {
    constexpr std::uint64_t kLongestSide = std::numeric_limits<std::int32_t>::max();
    if (!width || !height || *width == 0 || *height == 0) return Size{};
    if (*width > kLongestSide || *height > kLongestSide) return Size{};
    return Size{static_cast<int>(*width), static_cast<int>(*height)};
}

ByteReader LittleEndian(std::span<const std::uint8_t> head) { return {head, ByteOrder::Little}; }

Size MeasurePng(std::span<const std::uint8_t> head) {
    constexpr std::string_view kBegin("\x89PNG\r\n\x1A\n\0\0\0\x0DIHDR", 16);
    constexpr std::size_t kType = 12,
                          kChecked = 4 + 13;  // the chunk's type and content, which its sum covers
    const ByteReader bytes(head, ByteOrder::Big);
    if (!bytes.StartsWith(0, kBegin)) return Size{};
    const auto checked = bytes.Bytes(kType, kChecked);
    if (checked.empty()) return Size{};
    const std::uint32_t sum = Crc32({reinterpret_cast<const char*>(checked.data()), checked.size()});
    if (bytes.U32(kType + kChecked) != sum) return Size{};
    return SizeOf(bytes.U32(16), bytes.U32(20));
}

Size MeasureGif(std::span<const std::uint8_t> head) {
    const ByteReader bytes = LittleEndian(head);
    if (!bytes.StartsWith(0, "GIF87a") && !bytes.StartsWith(0, "GIF89a")) return Size{};
    return SizeOf(bytes.U16(6), bytes.U16(8));
}

Size MeasureBmp(std::span<const std::uint8_t> head) {
    constexpr std::uint32_t kOldHeader = 12, kHeader = 40, kLongestHeader = 124;
    const ByteReader bytes = LittleEndian(head);
    const auto header = bytes.U32(14);
    if (!bytes.StartsWith(0, "BM") || !header) return Size{};
    if (*header == kOldHeader) return SizeOf(bytes.U16(18), bytes.U16(20));
    if (*header < kHeader || *header > kLongestHeader) return Size{};
    const auto height = bytes.U32(22);
    if (!height) return Size{};
    // A negative height is that of a picture which is stored from its top.
    return SizeOf(bytes.U32(18), std::abs(std::int64_t{static_cast<std::int32_t>(*height)}));
}

std::optional<std::uint64_t> U24(const ByteReader& bytes, std::size_t offset) {
    const auto low = bytes.U16(offset);
    const auto high = bytes.U8(offset + 2);
    if (!low || !high) return std::nullopt;
    return std::uint64_t{*high} << 16 | *low;
}

Size MeasureWebp(std::span<const std::uint8_t> head) {
    constexpr std::uint32_t kFourteenBits = 0x3FFF;
    const ByteReader bytes = LittleEndian(head);
    if (!bytes.StartsWith(0, "RIFF") || !bytes.StartsWith(8, "WEBP")) return Size{};
    if (bytes.StartsWith(12, "VP8X")) {
        const auto width = U24(bytes, 24), height = U24(bytes, 27);
        return width && height ? SizeOf(*width + 1, *height + 1) : Size{};
    }
    if (bytes.StartsWith(12, "VP8L")) {
        const auto sides = bytes.U32(21);
        if (bytes.U8(20) != 0x2F || !sides) return Size{};
        return SizeOf((*sides & kFourteenBits) + 1, (*sides >> 14 & kFourteenBits) + 1);
    }
    if (!bytes.StartsWith(12, "VP8 ") || !bytes.StartsWith(23, "\x9D\x01\x2A")) return Size{};
    const auto width = bytes.U16(26), height = bytes.U16(28);
    return width && height ? SizeOf(*width & kFourteenBits, *height & kFourteenBits) : Size{};
}

// The first of the icons.
Size MeasureIcon(std::span<const std::uint8_t> head, std::uint64_t fileSize) {
    const ByteReader bytes = LittleEndian(head);
    if (!bytes.StartsWith(0, std::string_view("\0\0\1\0", 4)) || bytes.U16(4).value_or(0) == 0) return Size{};
    const auto width = bytes.U8(6), height = bytes.U8(7);
    const auto length = bytes.U32(14), offset = bytes.U32(18);
    if (!width || !height || !length || !offset) return Size{};
    if (*length == 0 || std::uint64_t{*offset} + *length > fileSize) return Size{};
    constexpr std::uint64_t kZeroStandsFor = 256;
    return SizeOf(*width == 0 ? kZeroStandsFor : *width, *height == 0 ? kZeroStandsFor : *height);
}

// "P6", then numbers between blanks and comments.
Size MeasurePortableMap(std::span<const std::uint8_t> head) {
    const ByteReader bytes = LittleEndian(head);
    const std::uint8_t kind = bytes.U8(1).value_or(0);
    if (bytes.U8(0) != 'P' || kind < '1' || kind > '6') return Size{};
    std::size_t at = 2;
    const auto next = [&bytes, &at] { return bytes.U8(at).value_or(0); };
    const auto isBlank = [](std::uint8_t c) { return c == ' ' || (c >= '\t' && c <= '\r'); };
    const auto number = [&]() -> std::optional<std::uint64_t> {
        const std::size_t start = at;
        while (isBlank(next()) || next() == '#')
            if (bytes.U8(at++) == '#')
                while (at < bytes.Length() && next() != '\n') ++at;
        if (at == start || next() < '0' || next() > '9') return std::nullopt;
        constexpr std::uint64_t kEnough = 1u << 31;
        std::uint64_t value = 0;
        for (; next() >= '0' && next() <= '9'; ++at)
            if (value < kEnough) value = value * 10 + (next() - '0');
        return isBlank(next()) ? std::optional(value) : std::nullopt;
    };
    const auto width = number();
    return width ? SizeOf(width, number()) : Size{};
}

// ---- TIFF: its first directory may lie anywhere

constexpr std::uint16_t kWidthTag = 256, kHeightTag = 257, kOrientationTag = 274;
constexpr std::uint16_t kShort = 3, kLong = 4, kLong8 = 16;
constexpr std::uint64_t kMostTags = 256;

// How the usual and the large kind of the format store their directory.
struct TiffLayout {
    std::size_t countLength, entryLength, valueOffset;
};
constexpr TiffLayout kUsualTiff{2, 12, 8}, kLargeTiff{8, 20, 12};

std::optional<std::uint64_t> U64(const ByteReader& bytes, std::size_t offset) {
    const auto first = bytes.U32(offset), second = bytes.U32(offset + 4);
    if (!first || !second) return std::nullopt;
    return bytes.Order() == ByteOrder::Big ? std::uint64_t{*first} << 32 | *second
                                           : std::uint64_t{*second} << 32 | *first;
}

std::optional<std::uint64_t> TiffNumber(const ByteReader& bytes, std::size_t entry,
                                        const TiffLayout& layout) {
    const std::size_t value = entry + layout.valueOffset;
    switch (bytes.U16(entry + 2).value_or(0)) {
        case kShort:
            return bytes.U16(value);
        case kLong:
            return bytes.U32(value);
        case kLong8:
            return layout.valueOffset == kLargeTiff.valueOffset ? U64(bytes, value) : std::nullopt;
        default:
            return std::nullopt;
    }
}

Size ReadTiffDirectory(const ByteReader& bytes, std::uint64_t count, const TiffLayout& layout) {
    std::optional<std::uint64_t> width, height, orientation;
    for (std::uint64_t i = 0; i < count && i < kMostTags; ++i) {
        const std::size_t entry = static_cast<std::size_t>(i) * layout.entryLength;
        const std::uint16_t tag = bytes.U16(entry).value_or(0);
        if (tag == kWidthTag) width = TiffNumber(bytes, entry, layout);
        if (tag == kHeightTag) height = TiffNumber(bytes, entry, layout);
        if (tag == kOrientationTag) orientation = TiffNumber(bytes, entry, layout);
    }
    const bool liesOnItsSide = orientation && *orientation >= 5 && *orientation <= 8;
    return liesOnItsSide ? SizeOf(height, width) : SizeOf(width, height);
}

Size MeasureTiff(std::span<const std::uint8_t> head, const ByteSource& source) {
    constexpr std::uint16_t kUsual = 42, kLarge = 43;
    const ByteOrder order = !head.empty() && head[0] == 'M' ? ByteOrder::Big : ByteOrder::Little;
    const ByteReader bytes(head, order);
    if (!bytes.StartsWith(0, "II") && !bytes.StartsWith(0, "MM")) return Size{};
    const std::uint16_t version = bytes.U16(2).value_or(0);
    if (version != kUsual && version != kLarge) return Size{};
    const TiffLayout& layout = version == kUsual ? kUsualTiff : kLargeTiff;
    const std::optional<std::uint64_t> place =
        version == kUsual ? std::optional<std::uint64_t>(bytes.U32(4)) : U64(bytes, 8);
    if (!place) return Size{};
    std::vector<std::uint8_t> block(layout.countLength + kMostTags * layout.entryLength);
    block.resize(source.ReadAt(*place, block));
    const ByteReader directory(block, order);
    const std::optional<std::uint64_t> count =
        version == kUsual ? std::optional<std::uint64_t>(directory.U16(0)) : U64(directory, 0);
    return ReadTiffDirectory(directory.Sub(layout.countLength), count.value_or(0), layout);
}

// ---- JPEG: its frame lies behind segments of any length

// Those that the codec decodes: baseline, extended and progressive, with either coding.
bool IsFrame(std::uint8_t marker) {
    return marker == 0xC0 || marker == 0xC1 || marker == 0xC2 || marker == 0xC9 || marker == 0xCA;
}

// A frame of another kind, a second beginning, or the end: no picture comes behind.
bool EndsHead(std::uint8_t marker) {
    constexpr std::array<std::uint8_t, 10> kMarkers{0xC3, 0xC5, 0xC6, 0xC7, 0xCB,
                                                    0xCD, 0xCE, 0xCF, 0xD8, 0xD9};
    return std::find(kMarkers.begin(), kMarkers.end(), marker) != kMarkers.end();
}

bool StandsAlone(std::uint8_t marker) { return marker == 0x01 || (marker >= 0xD0 && marker <= 0xD7); }

// The first marker from `at` on, and `at` set behind it. Bytes that belong to nothing may lie in front of
// it: the codec skips them too.
std::optional<std::uint8_t> NextMarker(const ByteSource& source, std::uint64_t& at) {
    constexpr std::uint64_t kMostStray = 1 << 20;
    const std::uint64_t last = at + kMostStray;
    bool isFilled = false;
    while (at < last) {
        std::array<std::uint8_t, 64> buffer;
        const std::size_t count = source.ReadAt(at, buffer);
        if (count == 0) break;
        for (std::size_t i = 0; i < count; ++i) {
            const std::uint8_t byte = buffer[i];
            if (isFilled && byte != 0 && byte != 0xFF) {
                at += i + 1;
                return byte;
            }
            isFilled = byte == 0xFF;
        }
        at += count;
    }
    return std::nullopt;
}

// From behind a frame's marker. Unset when the codec would refuse it.
Size ReadFrame(const ByteReader& frame) {
    constexpr int kPrecision = 8, kLongestSide = 65500;
    const Size size = SizeOf(frame.U16(5), frame.U16(3));
    const bool isRead =
        frame.U8(2) == kPrecision && size.width <= kLongestSide && size.height <= kLongestSide;
    return isRead ? size : Size{};
}

// The frame's size, once the first scan shows that a picture follows.
Size MeasureJpegFrame(const ByteSource& source) {
    constexpr int kMostSegments = 4096;
    constexpr std::uint8_t kFirstScan = 0xDA;
    Size size;
    std::uint64_t at = 2;
    for (int i = 0; i < kMostSegments; ++i) {
        const auto marker = NextMarker(source, at);
        if (!marker || EndsHead(*marker)) break;
        if (*marker == kFirstScan) return size;
        if (StandsAlone(*marker)) continue;
        std::array<std::uint8_t, 7> buffer;
        const ByteReader bytes({buffer.data(), source.ReadAt(at, buffer)}, ByteOrder::Big);
        const auto length = bytes.U16(0);
        if (!length || *length < 2) break;
        if (IsFrame(*marker)) size = ReadFrame(bytes);
        at += *length;
    }
    return Size{};
}

Size MeasureOther(std::span<const std::uint8_t> head, const ByteSource& source) {
    for (const auto measure : {&MeasurePng, &MeasureGif, &MeasureBmp, &MeasureWebp, &MeasurePortableMap})
        if (const Size size = measure(head); !size.IsEmpty()) return size;
    if (const Size size = MeasureTiff(head, source); !size.IsEmpty()) return size;
    return MeasureIcon(head, source.Size());
}

}  // namespace

PictureHead ReadPictureHead(const ByteSource& source) {
    using Format = PictureHead::Format;
    std::array<std::uint8_t, kHeadLength> buffer;
    const std::span<const std::uint8_t> head(buffer.data(), source.ReadAt(0, buffer));
    if (LittleEndian(head).StartsWith(0, "\xFF\xD8")) return {Format::Jpeg, MeasureJpegFrame(source)};
    const Size size = MeasureOther(head, source);
    return {size.IsEmpty() ? Format::None : Format::Other, size};
}

}  // namespace kalmora
