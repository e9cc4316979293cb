// Makes small photos byte by byte, so that tests say what is in them: Exif blocks of either byte order,
// and JPEGs around them. The files have a frame header and a scan, but no picture that could be decoded.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/byte_reader.h"
#include "exif/directory.h"

namespace kalmora::test {

enum TiffType : std::uint16_t {
    kByteType = 1,
    kAsciiType = 2,
    kShortType = 3,
    kLongType = 4,
    kRationalType = 5,
    kUndefinedType = 7,
    kSignedLongType = 9,
    kSignedRationalType = 10,
};

inline ::exif::ByteOrder OrderOf(ByteOrder order) {
    return order == ByteOrder::Big ? ::exif::ByteOrder::Big : ::exif::ByteOrder::Little;
}

inline std::string Word(ByteOrder order, std::uint32_t value, int length) {
    ::exif::Writer writer(OrderOf(order));
    writer.Put(value, length);
    return {writer.Get().begin(), writer.Get().end()};
}
inline std::string Word16(ByteOrder order, unsigned value) { return Word(order, value, 2); }
inline std::string Word32(ByteOrder order, std::uint32_t value) { return Word(order, value, 4); }

// One Exif block, in one expression: a face of exif::Block that takes and gives strings.
class ExifBuilder {
public:
    using Directory = ::exif::Block::Part;
    static constexpr Directory Main = ::exif::Block::Main, Exif = ::exif::Block::Exif,
                               Gps = ::exif::Block::Gps, Interoperability = ::exif::Block::Interoperability,
                               Thumbnail = ::exif::Block::Preview;

    explicit ExifBuilder(ByteOrder order = ByteOrder::Little) : order_(order), block_(OrderOf(order)) {}

    // `bytes` is the value as it is in the file; `count` and `type` are written as they are given.
    ExifBuilder& Raw(Directory where, unsigned tag, unsigned type, std::uint32_t count,
                     std::string_view bytes) {
        block_.At(where).AddAsGiven(static_cast<std::uint16_t>(tag), static_cast<std::uint16_t>(type), count,
                                    {bytes.begin(), bytes.end()});
        return *this;
    }
    ExifBuilder& Ascii(Directory where, unsigned tag, std::string_view text) {
        block_.At(where).Text(static_cast<std::uint16_t>(tag), text);
        return *this;
    }
    ExifBuilder& Short(Directory where, unsigned tag, unsigned value) {
        block_.At(where).Short(static_cast<std::uint16_t>(tag), value);
        return *this;
    }
    ExifBuilder& Long(Directory where, unsigned tag, std::uint32_t value) {
        block_.At(where).Long(static_cast<std::uint16_t>(tag), value);
        return *this;
    }
    ExifBuilder& Rational(Directory where, unsigned tag, std::uint32_t above, std::uint32_t below,
                          unsigned type = kRationalType) {
        return Raw(where, tag, type, 1, Word32(order_, above) + Word32(order_, below));
    }
    ExifBuilder& Undefined(Directory where, unsigned tag, std::string_view bytes,
                           unsigned type = kUndefinedType) {
        return Raw(where, tag, type, static_cast<std::uint32_t>(bytes.size()), bytes);
    }
    // An entry whose four value bytes are written as they are, with any length.
    ExifBuilder& Pointing(Directory where, unsigned tag, unsigned type, std::uint32_t count,
                          std::uint32_t offset) {
        block_.At(where).AddPointing(static_cast<std::uint16_t>(tag), static_cast<std::uint16_t>(type), count,
                                     offset);
        return *this;
    }
    // The XP tags are little-endian UTF-16 in blocks of either order.
    ExifBuilder& XpComment(std::u16string_view text) {
        std::string bytes;
        for (const char16_t unit : text) bytes += Word16(ByteOrder::Little, unit);
        return Undefined(Main, 0x9C9C, bytes + std::string(2, '\0'), kByteType);
    }
    ExifBuilder& EmbeddedJpeg(std::string_view bytes) {
        block_.SetPreview({bytes.begin(), bytes.end()});
        return *this;
    }
    // Leaves the offset of the next directory out of the main one.
    ExifBuilder& WithoutNextOffset() {
        block_.WithoutNextOffset();
        return *this;
    }
    ExifBuilder& NextOffset(std::uint32_t offset) {
        block_.SetNextOffset(offset);
        return *this;
    }

    ByteOrder Order() const { return order_; }

    std::string Build() const {
        const ::exif::Bytes bytes = block_.Build();
        return {bytes.begin(), bytes.end()};
    }

private:
    ByteOrder order_;
    ::exif::Block block_;
};

inline std::string JpegSegmentBytes(unsigned marker, std::string_view payload) {
    return std::string{'\xFF', static_cast<char>(marker)} +
           Word16(ByteOrder::Big, static_cast<unsigned>(payload.size() + 2)) + std::string(payload);
}

inline std::string ExifSegment(std::string_view tiff) {
    return JpegSegmentBytes(0xE1, std::string("Exif\0\0", 6) + std::string(tiff));
}

// The start marker, the segments as given, a frame header of that size, a scan and the end marker.
inline std::string JpegOf(std::string_view segments, unsigned width = 640, unsigned height = 480) {
    const std::string frame = '\x08' + Word16(ByteOrder::Big, height) + Word16(ByteOrder::Big, width) +
                              std::string("\x01\x01\x11\x00", 4);
    return "\xFF\xD8" + std::string(segments) + JpegSegmentBytes(0xC0, frame) +
           JpegSegmentBytes(0xDA, std::string("\x01\x01\x00\x00\x3F\x00", 6)) + "scan" + "\xFF\xD9";
}

inline std::string JpegWith(const ExifBuilder& exif, unsigned width = 640, unsigned height = 480) {
    return JpegOf(ExifSegment(exif.Build()), width, height);
}

}  // namespace kalmora::test
