#include "platform/qt/back_buffer.h"

#include <algorithm>

#include "platform/qt/painter_canvas.h"
#include "platform/qt/pixels.h"

namespace kalmora::qt {

class BackBuffer::BufferCanvas final : public PainterCanvas {
public:
    BufferCanvas(std::shared_ptr<BackBuffer> buffer, std::unique_lock<std::recursive_mutex> lock)
        : PainterCanvas(*buffer->painter_, buffer->size_, buffer->pixels_.devicePixelRatio()),
          buffer_(std::move(buffer)),
          lock_(std::move(lock)) {}
    ~BufferCanvas() override { buffer_->Leave(Touched()); }

private:
    const std::shared_ptr<BackBuffer> buffer_;
    const std::unique_lock<std::recursive_mutex> lock_;  // released before the buffer
};

std::unique_ptr<Canvas> BackBuffer::Draw() {
    std::unique_lock lock(mutex_);
    if (isDropped_ || pixels_.isNull()) return nullptr;
    if (canvases_ == 0) painter_.emplace(&pixels_);
    ++canvases_;
    return std::make_unique<BufferCanvas>(shared_from_this(), std::move(lock));
}

void BackBuffer::Leave(const QRectF& touched) {
    dirty_ = dirty_.united(touched);
    if (--canvases_ > 0) return;
    painter_.reset();
    if (isDropped_) pixels_ = QImage();
    if (dirty_.isEmpty() || isPresenting_) return;
    isPresenting_ = true;
    present_();
}

Size BackBuffer::GetSize() const {
    const std::uint64_t size = publishedSize_.load();
    return Size{static_cast<int>(size >> 32), static_cast<int>(size & 0xFFFFFFFF)};
}

QImage BackBuffer::Copy() const {
    std::lock_guard lock(mutex_);
    return pixels_.copy();
}

BackBuffer::ResizeResult BackBuffer::Resize(Size size, double scale) {
    size = Size{std::max(1, size.width), std::max(1, size.height)};
    std::lock_guard lock(mutex_);
    if (isDropped_) return ResizeResult::Same;
    if (!pixels_.isNull() && size == size_ && scale == pixels_.devicePixelRatio()) return ResizeResult::Same;
    if (canvases_ > 0) return ResizeResult::Busy;
    QImage fresh = MakeBuffer(size, scale);
    if (fresh.isNull()) return ResizeResult::Same;  // no memory: the old one stays in use
    if (!pixels_.isNull()) QPainter(&fresh).drawImage(QPointF(0, 0), pixels_);
    pixels_ = std::move(fresh);
    size_ = size;
    publishedSize_ = static_cast<std::uint64_t>(size.width) << 32 | static_cast<std::uint32_t>(size.height);
    scale_ = scale;
    return ResizeResult::New;
}

void BackBuffer::Drop() {
    std::lock_guard lock(mutex_);
    isDropped_ = true;
    if (canvases_ == 0) pixels_ = QImage();
}

QRect BackBuffer::TakeDirty() {
    std::lock_guard lock(mutex_);
    isPresenting_ = false;
    const QRect dirty = dirty_.toAlignedRect();
    dirty_ = QRectF();
    return dirty;
}

void BackBuffer::Paint(QPainter& screen, const QRect& part) {
    std::lock_guard lock(mutex_);
    if (pixels_.isNull()) return;
    const QRect seen = part.intersected(QRect(0, 0, size_.width, size_.height));
    if (seen.isEmpty()) return;
    // Whole device pixels, so that none is blended at the edges of the part where the scale is a fraction.
    const double scale = pixels_.devicePixelRatio();
    const QRect source =
        QRectF(seen.x() * scale, seen.y() * scale, seen.width() * scale, seen.height() * scale)
            .toAlignedRect();
    const QRect inside = source.intersected(pixels_.rect());
    screen.setCompositionMode(QPainter::CompositionMode_Source);
    screen.drawImage(QRectF(QPointF(inside.topLeft()) / scale, QSizeF(inside.size()) / scale), pixels_,
                     QRectF(inside));
}

}  // namespace kalmora::qt
