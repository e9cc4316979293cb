#include "platform/qt/picture_decoder.h"

#include "formats/orientation.h"
#include "platform/file_source.h"
#include "platform/qt/decode_limits.h"
#include "platform/qt/decoding_gate.h"
#include "platform/qt/jpeg_decoder.h"
#include "platform/qt/orientation.h"
#include "platform/qt/pixels.h"
#include "platform/qt/thumbnail.h"
#include "platform/qt/toolkit_decoder.h"

namespace kalmora {

namespace qt {

using images::EmbeddedPreview;
using images::Preview;

Size NeededSize(Size picture, Size wanted) {
    if (picture.IsEmpty() || wanted.IsEmpty()) return picture;
    if (picture.width <= wanted.width && picture.height <= wanted.height) return picture;
    const std::int64_t w = picture.width, h = picture.height, toWidth = wanted.width,
                       toHeight = wanted.height;
    if (toWidth * h <= toHeight * w) return Size{wanted.width, static_cast<int>((h * toWidth + w - 1) / w)};
    return Size{static_cast<int>((w * toHeight + h - 1) / h), wanted.height};
}

namespace {

// A cut thumbnail may miss the picture's shape by the rounding of one pixel.
constexpr int kThumbnailTolerance = 1;

// Past twice what is needed the further pixels only take memory.
QImage WithoutExcess(QImage image, Size needed) {
    if (image.isNull() || needed.IsEmpty()) return image;
    if (image.width() < 2 * std::int64_t{needed.width} || image.height() < 2 * std::int64_t{needed.height})
        return image;
    return Reduced(image, needed);
}

QImage DecodeStored(const ByteSource& source, Size wanted, Preview preview, const EmbeddedPreview& embedded) {
    const Size stored = MeasureJpeg(source);
    if (stored.IsEmpty()) return QImage();
    const bool swapped = SwapsSides(embedded.orientation);
    const Size needed = NeededSize(stored, swapped ? Size{wanted.height, wanted.width} : wanted);
    if (preview != Preview::Never && !embedded.thumbnail.empty()) {
        QImage thumbnail = DecodeThumbnail(embedded.thumbnail, source);
        const Size size{thumbnail.width(), thumbnail.height()};
        if (!thumbnail.isNull() && (preview == Preview::Always || Covers(size, needed, kThumbnailTolerance)))
            return thumbnail;
    }
    return WithoutExcess(DecodeJpeg(source, wanted.IsEmpty() ? Size{} : needed), needed);
}

}  // namespace

QImage DecodePicture(const ByteSource& source, Size wanted, Preview preview,
                     const EmbeddedPreview& embedded) {
    if (LooksLikeJpeg(source))
        return Upright(DecodeStored(source, wanted, preview, embedded), embedded.orientation);
    const QImage image = DecodeOther(source, wanted);
    return WithoutExcess(image, NeededSize(Size{image.width(), image.height()}, wanted));
}

}  // namespace qt

images::DecodedPicture images::Decode(const std::string& path, Size wanted, Preview preview,
                                      const PreviewReader* reader) {
    const qt::DecodingPass pass;
    FileSource source;
    if (!pass || !source.Open(path)) return DecodedPicture{};
    EmbeddedPreview embedded;
    if (reader != nullptr && qt::LooksLikeJpeg(source)) {
        // The whole picture is no question of its thumbnail, unless the thumbnail is what is wanted.
        const bool isThumbnailOfUse =
            preview == Preview::Always || (preview == Preview::IfEnough && !wanted.IsEmpty());
        embedded = reader->Read(path, isThumbnailOfUse ? WithThumbnail::Yes : WithThumbnail::No);
    }
    DecodedPicture result;
    result.image = qt::MakeImage(qt::DecodePicture(source, wanted, preview, embedded));
    result.outcome = result.image.IsEmpty() ? DecodeOutcome::NoPicture : DecodeOutcome::Decoded;
    return result;
}

}  // namespace kalmora
