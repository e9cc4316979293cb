#include "media/turned_exif.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "base/log.h"
#include "media/exif_layout.h"
#include "media/exif_tags.h"
#include "media/jpeg_picture.h"
#include "media/turned_jpeg.h"

namespace kalmora {

namespace {

constexpr std::size_t kFirstDirectoryAt = 4;
constexpr std::uint16_t kWidth = 0x0100, kHeight = 0x0101;

// A number in a directory.
struct Number {
    std::size_t at = 0;  // in the block
    std::uint16_t type = 0;
    std::uint32_t value = 0;
};

class TurnedBlock {
public:
    TurnedBlock(std::string& head, const exif::Block& block, std::uint64_t blockEnd)
        : head_(head),
          start_(static_cast<std::size_t>(block.start)),
          length_(static_cast<std::size_t>(blockEnd - block.start)),
          order_(block.order) {}

    std::size_t MainDirectory() const { return Reader().U32(kFirstDirectoryAt).value_or(0); }
    std::size_t ExifDirectory() const {
        const auto pointer = Find(MainDirectory(), exif::kExifPointer);
        return pointer ? pointer->value : 0;
    }
    std::size_t ThumbnailDirectory() const { return Reader().U32(NextAt(MainDirectory())).value_or(0); }

    void SwapSides(std::size_t directory, std::uint16_t widthTag, std::uint16_t heightTag) {
        const auto width = Find(directory, widthTag), height = Find(directory, heightTag);
        if (!width || !height) return;
        constexpr std::uint32_t kMostShort = 0xFFFF;
        if ((width->type == exif::kShortType && height->value > kMostShort) ||
            (height->type == exif::kShortType && width->value > kMostShort))
            return;
        Put(*width, height->value);
        Put(*height, width->value);
    }
    bool NamesSides(std::size_t directory, Size size) const {
        const auto width = Find(directory, kWidth), height = Find(directory, kHeight);
        return width && height && width->value == static_cast<std::uint32_t>(size.width) &&
               height->value == static_cast<std::uint32_t>(size.height);
    }
    // The main directory is then the last one.
    void CutBehindMain() {
        const std::size_t at = NextAt(MainDirectory());
        if (Reader().Has(at, 4))
            std::fill_n(head_.begin() + static_cast<std::ptrdiff_t>(start_ + at), 4, '\0');
    }

private:
    ByteReader Reader() const {
        return {std::span(reinterpret_cast<const std::uint8_t*>(head_.data()), head_.size())
                    .subspan(start_, length_),
                order_};
    }
    std::size_t NextAt(std::size_t directory) const {
        return directory + 2 + Reader().U16(directory).value_or(0) * exif::kEntryLength;
    }
    std::optional<Number> Find(std::size_t directory, std::uint16_t tag) const {
        const ByteReader reader = Reader();
        const std::size_t count = reader.U16(directory).value_or(0);
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t at = directory + 2 + i * exif::kEntryLength;
            if (!reader.Has(at, exif::kEntryLength)) return std::nullopt;
            if (reader.U16(at) != tag) continue;
            const std::uint16_t type = *reader.U16(at + 2);
            if ((type != exif::kShortType && type != exif::kLongType) || reader.U32(at + 4) != 1u)
                return std::nullopt;
            return Number{at + 8, type, type == exif::kShortType ? *reader.U16(at + 8) : *reader.U32(at + 8)};
        }
        return std::nullopt;
    }
    void Put(const Number& place, std::uint32_t value) {
        const std::size_t bytes = place.type == exif::kShortType ? 2 : 4;
        for (std::size_t i = 0; i < bytes; ++i)
            head_[start_ + place.at + i] =
                static_cast<char>(value >> 8 * (order_ == ByteOrder::Big ? bytes - 1 - i : i) & 0xFF);
    }

    std::string& head_;
    std::size_t start_, length_;
    ByteOrder order_;
};

enum class Thumbnail { None, Turned, CannotBe };

Thumbnail TurnThumbnail(std::string& head, const exif::Block& block, std::uint64_t blockEnd,
                        const JpegTurner& turner) {
    if (block.thumbnailLength == 0) return Thumbnail::None;
    if (block.thumbnailOffset + 2 > blockEnd) return Thumbnail::CannotBe;
    const auto begin = static_cast<std::size_t>(block.thumbnailOffset);
    const auto room = static_cast<std::size_t>(
        std::min<std::uint64_t>(block.thumbnailLength, blockEnd - block.thumbnailOffset));
    std::string jpeg = head.substr(begin, room);
    if (!jpeg.starts_with("\xFF\xD8")) return Thumbnail::None;
    ByteWindow window(std::span(reinterpret_cast<const std::uint8_t*>(jpeg.data()), jpeg.size()));
    if (const auto picture = FindJpegPicture(window)) jpeg.resize(static_cast<std::size_t>(picture->end));
    std::string turned = turner.TurnSmall(jpeg, jpeg.size());
    if (turned.empty()) return Thumbnail::CannotBe;
    FillUp(turned, jpeg.size());
    head.replace(begin, turned.size(), turned);
    return Thumbnail::Turned;
}

}  // namespace

void TurnExif(std::string& head, const exif::Block& block, std::uint64_t blockEnd, Size stored,
              const JpegTurner& turner) {
    if (block.start > blockEnd || blockEnd > head.size()) return;
    TurnedBlock turned(head, block, blockEnd);
    const Thumbnail thumbnail = TurnThumbnail(head, block, blockEnd, turner);
    if (turner.SwapsSides()) {
        if (thumbnail == Thumbnail::Turned) turned.SwapSides(turned.ThumbnailDirectory(), kWidth, kHeight);
        turned.SwapSides(turned.ExifDirectory(), exif::kPixelWidth, exif::kPixelHeight);
        if (turned.NamesSides(turned.MainDirectory(), stored))
            turned.SwapSides(turned.MainDirectory(), kWidth, kHeight);
    }
    if (thumbnail == Thumbnail::CannotBe) {
        Log("a thumbnail that cannot be turned is not used any more");
        turned.CutBehindMain();
    }
}

}  // namespace kalmora
