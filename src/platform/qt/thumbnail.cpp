#include "platform/qt/thumbnail.h"

#include <algorithm>
#include <cmath>

#include "base/byte_source.h"
#include "platform/qt/jpeg_decoder.h"

namespace kalmora::qt {

namespace {

constexpr double kShapeTolerance = 0.02;

bool LiesAcross(Size a, Size b) {
    return (a.width > a.height && b.width < b.height) || (a.width < a.height && b.width > b.height);
}

}  // namespace

QImage DecodeThumbnail(std::span<const std::uint8_t> jpeg, Size storedPicture) {
    const MemorySource source(jpeg);
    const QImage thumbnail = DecodeJpeg(source, Size{});
    if (thumbnail.isNull() || storedPicture.IsEmpty()) return thumbnail;
    const Size size{thumbnail.width(), thumbnail.height()};
    if (LiesAcross(size, storedPicture)) return QImage();

    const double pictureShape = static_cast<double>(storedPicture.width) / storedPicture.height;
    const double shape = static_cast<double>(size.width) / size.height;
    if (std::abs(shape / pictureShape - 1) <= kShapeTolerance) return thumbnail;
    const int width =
        shape > pictureShape ? static_cast<int>(std::lround(size.height * pictureShape)) : size.width;
    const int height =
        shape > pictureShape ? size.height : static_cast<int>(std::lround(size.width / pictureShape));
    return thumbnail.copy((size.width - width) / 2, (size.height - height) / 2, std::max(1, width),
                          std::max(1, height));
}

}  // namespace kalmora::qt
