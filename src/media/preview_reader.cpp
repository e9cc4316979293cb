#include "media/preview_reader.h"

#include "media/byte_window.h"
#include "media/exif_reader.h"
#include "media/jpeg_segments.h"

namespace kalmora {

namespace {

constexpr std::uint64_t kLargestThumbnail = 1u << 20;

}  // namespace

images::EmbeddedPreview ReadEmbeddedPreview(const std::string& path, bool withThumbnail) {
    images::EmbeddedPreview preview;
    ByteWindow file;
    if (!file.Open(path)) return preview;
    preview.storedSize = ReadJpegFrameSize(file).value_or(Size{});
    exif::Block block;
    if (!exif::ReadBlock(file, block)) return preview;
    const std::int32_t orientation = exif::FirstNumber(file, block, exif::Tag::Orientation);
    if (orientation >= 1 && orientation <= 8) preview.orientation = orientation;
    if (!withThumbnail || block.thumbnailLength < 4) return preview;
    const auto bytes = file.Copy(block.thumbnailOffset, block.thumbnailLength, kLargestThumbnail);
    if (bytes && bytes->compare(0, 2, "\xFF\xD8") == 0)
        preview.thumbnail.assign(bytes->begin(), bytes->end());
    return preview;
}

}  // namespace kalmora
