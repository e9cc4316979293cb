#include "media/preview_reader.h"

#include "media/byte_window.h"
#include "media/exif_reader.h"
#include "media/jpeg_segments.h"

namespace kalmora {

namespace {

constexpr std::uint32_t kLargestThumbnail = 1u << 20;

}  // namespace

images::EmbeddedPreview ExifPreviewReader::Read(const std::string& path,
                                                images::WithThumbnail withThumbnail) const {
    images::EmbeddedPreview preview;
    ByteWindow file;
    if (!file.Open(path)) return preview;
    preview.storedSize = ReadJpegFrameSize(file).value_or(Size{});
    exif::Block block;
    if (!exif::ReadBlock(file, block)) return preview;
    const std::int32_t orientation = exif::FirstNumber(file, block, exif::Tag::Orientation);
    if (orientation >= 1 && orientation <= 8) preview.orientation = orientation;
    if (withThumbnail == images::WithThumbnail::No || block.thumbnailLength > kLargestThumbnail)
        return preview;
    const auto start = file.At(block.thumbnailOffset, 2);
    if (start.size() < 2 || start[0] != 0xFF || start[1] != 0xD8) return preview;
    if (!file.Has(block.thumbnailOffset, block.thumbnailLength)) return preview;
    preview.thumbnail.resize(block.thumbnailLength);
    if (!file.Fill(block.thumbnailOffset, preview.thumbnail)) preview.thumbnail.clear();
    return preview;
}

const ExifPreviewReader& ExifPreviews() {
    static const auto* const reader = new ExifPreviewReader;  // workers may outlive main
    return *reader;
}

}  // namespace kalmora
