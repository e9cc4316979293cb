#include <cmath>
#include <memory>

#include "platform/qt/encode.h"
#include "platform/qt/painter_canvas.h"
#include "platform/qt/pixels.h"

namespace kalmora {

namespace qt {

namespace {

constexpr int kLargestSide = 32767;
constexpr double kWhole = 1e-6;

class MemorySurface final : public Surface {
public:
    MemorySurface(QImage pixels, Size size) : pixels_(std::move(pixels)), size_(size) {}

    std::unique_ptr<Canvas> Draw() override;
    Size GetSize() const override { return size_; }
    double Scale() const override { return pixels_.devicePixelRatio(); }
    Color PixelAt(int x, int y) const override { return ColorAt(pixels_, x, y); }
    bool SavePng(const std::string& path) const override { return WritePng(pixels_, path); }
    const QImage& Pixels() const { return pixels_; }

private:
    QImage pixels_;
    Size size_;
};

// The painter first, so that it exists before the canvas that draws through it.
struct OwnedPainter {
    explicit OwnedPainter(QImage& pixels) : painter(&pixels) {}
    QPainter painter;
};

class SurfaceCanvas final : private OwnedPainter, public PainterCanvas {
public:
    SurfaceCanvas(QImage& pixels, Size size)
        : OwnedPainter(pixels), PainterCanvas(painter, size, pixels.devicePixelRatio()) {}
};

std::unique_ptr<Canvas> MemorySurface::Draw() { return std::make_unique<SurfaceCanvas>(pixels_, size_); }

}  // namespace

std::unique_ptr<Surface> MakeSurface(QImage pixels) {
    if (pixels.isNull()) return nullptr;
    const double scale = pixels.devicePixelRatio();
    const Size size{static_cast<int>(pixels.width() / scale + kWhole),
                    static_cast<int>(pixels.height() / scale + kWhole)};
    return std::make_unique<MemorySurface>(std::move(pixels), size);
}

const QImage& PixelsOf(const Surface& surface) { return static_cast<const MemorySurface&>(surface).Pixels(); }

QImage MakeBuffer(Size logicalSize, double scale) {
    if (logicalSize.IsEmpty() || !(scale > 0.1) || !(scale < 16)) return QImage();
    // A product that is whole but for the arithmetic's last digit takes no further pixel.
    const double width = std::ceil(logicalSize.width * scale - kWhole);
    const double height = std::ceil(logicalSize.height * scale - kWhole);
    if (width > kLargestSide || height > kLargestSide) return QImage();
    QImage buffer(static_cast<int>(width), static_cast<int>(height), QImage::Format_RGB32);
    if (buffer.isNull()) return buffer;
    buffer.setDevicePixelRatio(scale);
    buffer.fill(Qt::white);
    return buffer;
}

}  // namespace qt

std::unique_ptr<Surface> Surface::Create(Size size, double scale) {
    return qt::MakeSurface(qt::MakeBuffer(size, scale));
}

}  // namespace kalmora
