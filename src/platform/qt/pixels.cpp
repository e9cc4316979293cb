#include "platform/qt/pixels.h"

#include <algorithm>
#include <cmath>

namespace kalmora {

namespace qt {

Image MakeImage(QImage image) {
    if (image.isNull()) return Image();
    const bool hasTransparency = image.hasAlphaChannel();
    const QImage::Format format =
        hasTransparency ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32;
    if (image.format() != format) image = std::move(image).convertToFormat(format);
    if (image.isNull()) return Image();  // no memory for the converted pixels
    image.setDevicePixelRatio(1);
    return Image(std::make_shared<const Image::Pixels>(std::move(image)));
}

Color ColorAt(const QImage& image, int x, int y) {
    if (!image.valid(x, y)) return Color{};
    const QRgb pixel = image.pixel(x, y);
    return Color{static_cast<std::uint8_t>(qRed(pixel)), static_cast<std::uint8_t>(qGreen(pixel)),
                 static_cast<std::uint8_t>(qBlue(pixel)), static_cast<std::uint8_t>(qAlpha(pixel))};
}

QImage Reduced(const QImage& image, Size size) {
    return image.scaled(std::max(1, size.width), std::max(1, size.height), Qt::IgnoreAspectRatio,
                        Qt::SmoothTransformation);
}

}  // namespace qt

Size Image::GetSize() const {
    return pixels_ ? Size{pixels_->Get().width(), pixels_->Get().height()} : Size{};
}

std::size_t Image::ByteCount() const {
    return pixels_ ? static_cast<std::size_t>(pixels_->Get().sizeInBytes()) : 0;
}

Color Image::PixelAt(int x, int y) const { return pixels_ ? qt::ColorAt(pixels_->Get(), x, y) : Color{}; }

}  // namespace kalmora
