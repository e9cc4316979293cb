// Makes files that hold several pictures, byte by byte.
#pragma once

#include <string>
#include <vector>

#include "exif_builder.h"
#include "media/multi_picture_index.h"

namespace kalmora::test {

// The payload of an index with these pictures.
inline std::string MultiPictureIndexOf(const std::vector<IndexedPicture>& pictures,
                                       ByteOrder order = ByteOrder::Big) {
    const auto count = static_cast<std::uint32_t>(pictures.size());
    std::string list;
    for (const auto& [length, offset] : pictures)
        list += Word32(order, offset == 0 ? 0x20030000 : 0) + Word32(order, length) + Word32(order, offset) +
                Word32(order, 0);
    return ExifBuilder(order)
        .Undefined(ExifBuilder::Main, 0xB000, "0100")
        .Long(ExifBuilder::Main, 0xB001, count)
        .Undefined(ExifBuilder::Main, 0xB002, list)
        .Build()
        .insert(0, "MPF\0", 4);
}

// The first picture with an index behind its start marker, then `gap` and the second picture.
inline std::string TwoPictures(const std::string& first, const std::string& second,
                               const std::string& gap = {}) {
    const std::size_t segment = 4 + MultiPictureIndexOf({{1, 0}, {1, 1}}).size();
    const std::size_t end = first.size() + segment;
    constexpr std::size_t kHeaderAt = 2 + 4 + kMultiPictureHead;
    const std::vector<IndexedPicture> pictures{{static_cast<std::uint32_t>(end), 0},
                                               {static_cast<std::uint32_t>(second.size()),
                                                static_cast<std::uint32_t>(end + gap.size() - kHeaderAt)}};
    return first.substr(0, 2) + JpegSegmentBytes(0xE2, MultiPictureIndexOf(pictures)) + first.substr(2) +
           gap + second;
}

}  // namespace kalmora::test
