// What an Image and a Surface are made of here.
#pragma once

#include <QImage>

#include "platform/canvas.h"
#include "platform/image.h"

namespace kalmora {

// Never changed once it is inside an Image, so that any thread may read it without a lock.
class Image::Pixels {
public:
    explicit Pixels(QImage image) : image_(std::move(image)) {}
    const QImage& Get() const { return image_; }

private:
    QImage image_;  // Format_RGB32, or Format_ARGB32_Premultiplied where the picture has transparent pixels
};

namespace qt {

// An empty QImage gives an empty Image; anything else is brought into one of the two formats.
Image MakeImage(QImage image);

// A colour of a pixel, not premultiplied; black where (x, y) lies outside.
Color ColorAt(const QImage& image, int x, int y);

// As large as `size` says, by averaging all the pixels that fall into one: right for any reduction.
QImage Reduced(const QImage& image, Size size);

// A surface over these pixels (Format_RGB32, its device pixel ratio the scale). Empty for an empty image.
std::unique_ptr<Surface> MakeSurface(QImage pixels);

// The pixels of a surface that this platform made.
const QImage& PixelsOf(const Surface& surface);

// The device pixels that cover a logical size; empty when the size is empty, past 32767 either way, or the
// memory is refused. White.
QImage MakeBuffer(Size logicalSize, double scale);

}  // namespace qt
}  // namespace kalmora
