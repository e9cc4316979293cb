// Makes small photos byte by byte, so that tests say what stands in them: Exif blocks of either byte order,
// and JPEGs around them. The files have a frame header and a scan, but no picture that could be decoded.
#pragma once

#include <array>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "base/byte_reader.h"

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

inline std::string Word16(ByteOrder order, unsigned value) {
    const char low = static_cast<char>(value & 0xFF), high = static_cast<char>(value >> 8 & 0xFF);
    return order == ByteOrder::Big ? std::string{high, low} : std::string{low, high};
}

inline std::string Word32(ByteOrder order, std::uint32_t value) {
    const std::string low = Word16(order, value & 0xFFFF), high = Word16(order, value >> 16);
    return order == ByteOrder::Big ? high + low : low + high;
}

// One Exif block. Directories stand in the order of the enum, each followed by its values.
class ExifBuilder {
public:
    enum Directory { Main, Exif, Gps, Interoperability, Thumbnail };

    explicit ExifBuilder(ByteOrder order = ByteOrder::Little) : order_(order) {}

    // `bytes` is the value as it stands in the file; `count` and `type` are written as they are given.
    ExifBuilder& Raw(Directory where, unsigned tag, unsigned type, std::uint32_t count, std::string bytes) {
        entries_[where].push_back({tag, type, count, std::move(bytes), false});
        return *this;
    }
    ExifBuilder& Ascii(Directory where, unsigned tag, std::string_view text) {
        return Raw(where, tag, kAsciiType, static_cast<std::uint32_t>(text.size() + 1),
                   std::string(text) + '\0');
    }
    ExifBuilder& Short(Directory where, unsigned tag, unsigned value) {
        return Raw(where, tag, kShortType, 1, Word16(order_, value));
    }
    ExifBuilder& Long(Directory where, unsigned tag, std::uint32_t value) {
        return Raw(where, tag, kLongType, 1, Word32(order_, value));
    }
    ExifBuilder& Rational(Directory where, unsigned tag, std::uint32_t above, std::uint32_t below,
                          unsigned type = kRationalType) {
        return Raw(where, tag, type, 1, Word32(order_, above) + Word32(order_, below));
    }
    ExifBuilder& Undefined(Directory where, unsigned tag, std::string bytes, unsigned type = kUndefinedType) {
        const auto count = static_cast<std::uint32_t>(bytes.size());
        return Raw(where, tag, type, count, std::move(bytes));
    }
    // An entry whose four value bytes are written as they are, whatever its length says.
    ExifBuilder& Pointing(Directory where, unsigned tag, unsigned type, std::uint32_t count,
                          std::uint32_t offset) {
        entries_[where].push_back({tag, type, count, Word32(order_, offset), true});
        return *this;
    }
    // The XP tags are little-endian UTF-16 in blocks of either order.
    ExifBuilder& XpComment(std::u16string_view text) {
        std::string bytes;
        for (const char16_t unit : text) bytes += Word16(ByteOrder::Little, unit);
        return Undefined(Main, 0x9C9C, bytes + std::string(2, '\0'), kByteType);
    }
    ExifBuilder& EmbeddedJpeg(std::string bytes) {
        thumbnail_ = std::move(bytes);
        return *this;
    }
    // Leaves the offset of the next directory out of the main one.
    ExifBuilder& WithoutNextOffset() {
        nextOffset_ = false;
        return *this;
    }
    ExifBuilder& NextOffset(std::uint32_t offset) {
        forcedNext_ = offset;
        return *this;
    }

    ByteOrder Order() const { return order_; }

    std::string Build() const {
        const bool hasThumbnail = !entries_[Thumbnail].empty() || !thumbnail_.empty();
        std::array<std::vector<Entry>, 5> all = entries_;
        if (hasThumbnail && !thumbnail_.empty()) {
            all[Thumbnail].push_back({0x0201, kLongType, 1, Word32(order_, 0), false});
            all[Thumbnail].push_back(
                {0x0202, kLongType, 1, Word32(order_, static_cast<std::uint32_t>(thumbnail_.size())), false});
        }
        if (!all[Interoperability].empty())
            all[Exif].push_back({0xA005, kLongType, 1, Word32(order_, 0), false});
        if (!all[Exif].empty()) all[Main].push_back({0x8769, kLongType, 1, Word32(order_, 0), false});
        if (!all[Gps].empty()) all[Main].push_back({0x8825, kLongType, 1, Word32(order_, 0), false});

        std::array<std::uint32_t, 5> offsets{};
        std::uint32_t at = 8;
        for (std::size_t d = 0; d < all.size(); ++d) {
            if (all[d].empty() && d != Main) continue;
            offsets[d] = at;
            at += DirectoryLength(all[d]);
        }
        const std::uint32_t thumbnailAt = at;
        for (auto& directory : all)
            for (Entry& entry : directory) {
                if (entry.tag == 0x0201 && !thumbnail_.empty()) entry.bytes = Word32(order_, thumbnailAt);
                if (entry.isRaw) continue;
                if (entry.tag == 0x8769) entry.bytes = Word32(order_, offsets[Exif]);
                if (entry.tag == 0x8825) entry.bytes = Word32(order_, offsets[Gps]);
                if (entry.tag == 0xA005) entry.bytes = Word32(order_, offsets[Interoperability]);
            }
        std::string tiff = (order_ == ByteOrder::Big ? "MM" : "II") + Word16(order_, 42) + Word32(order_, 8);
        for (std::size_t d = 0; d < all.size(); ++d) {
            if (offsets[d] == 0) continue;
            const std::uint32_t next = d == Main && hasThumbnail ? offsets[Thumbnail] : 0;
            tiff += Directory2Bytes(all[d], offsets[d], d == Main && forcedNext_ ? forcedNext_ : next,
                                    d != Main || nextOffset_);
        }
        return tiff + thumbnail_;
    }

private:
    struct Entry {
        unsigned tag, type;
        std::uint32_t count;
        std::string bytes;
        bool isRaw;
    };

    static std::uint32_t DirectoryLength(const std::vector<Entry>& entries) {
        std::size_t length = 2 + 12 * entries.size() + 4;
        for (const Entry& entry : entries)
            if (entry.bytes.size() > 4) length += (entry.bytes.size() + 1) / 2 * 2;
        return static_cast<std::uint32_t>(length);
    }

    std::string Directory2Bytes(const std::vector<Entry>& entries, std::uint32_t offset, std::uint32_t next,
                                bool withNext) const {
        std::string head = Word16(order_, static_cast<unsigned>(entries.size())), values;
        const auto valuesAt = static_cast<std::uint32_t>(offset + 2 + 12 * entries.size() + 4);
        for (const Entry& entry : entries) {
            head += Word16(order_, entry.tag) + Word16(order_, entry.type) + Word32(order_, entry.count);
            if (entry.bytes.size() <= 4) {
                head += entry.bytes + std::string(4 - entry.bytes.size(), '\0');
            } else {
                head += Word32(order_, valuesAt + static_cast<std::uint32_t>(values.size()));
                values += entry.bytes + std::string(entry.bytes.size() % 2, '\0');
            }
        }
        if (withNext) head += Word32(order_, next);
        return head + values;
    }

    ByteOrder order_;
    std::array<std::vector<Entry>, 5> entries_;
    std::string thumbnail_;
    bool nextOffset_ = true;
    std::uint32_t forcedNext_ = 0;
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
