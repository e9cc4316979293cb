// Picture files of any content: whole, reduced, as a thumbnail of themselves, in every orientation. What
// comes out never passes the limits.
#include <cstdint>
#include <cstdlib>
#include <span>

#include "base/byte_source.h"
#include "formats/picture_heads.h"
#include "platform/qt/decode_limits.h"
#include "platform/qt/jpeg_decoder.h"
#include "platform/qt/picture_decoder.h"

using namespace kalmora;

namespace {

void Check(const QImage& image) {
    if (image.isNull()) return;
    if (qt::PixelCount(Size{image.width(), image.height()}) > qt::kMostDecodedPixels) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::span<const std::uint8_t> bytes(data, size);
    const MemorySource source(bytes);
    qt::MeasureJpeg(source);
    ReadPictureHead(source);
    images::EmbeddedPreview embedded;
    embedded.orientation = size == 0 ? 1 : data[size - 1] % 10;
    Check(qt::DecodePicture(source, Size{}, images::Preview::Never, embedded));
    Check(qt::DecodePicture(source, Size{24, 40}, images::Preview::Never, embedded));
    embedded.thumbnail.assign(data, data + size);
    Check(qt::DecodePicture(source, Size{200, 16}, images::Preview::Always, embedded));
    return 0;
}
