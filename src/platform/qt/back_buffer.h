// What a window shows, as pixels in memory: drawn by any thread, brought to the screen by the GUI thread.
#pragma once

#include <QImage>
#include <QPainter>
#include <QRect>
#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

#include "platform/canvas.h"

namespace kalmora::qt {

class BackBuffer : public std::enable_shared_from_this<BackBuffer> {
public:
    // present: called on the drawing thread when something new is to be shown; once until TakeDirty.
    explicit BackBuffer(std::function<void()> present) : present_(std::move(present)) {}

    // Under the buffer's lock until the canvas goes. A thread that has a canvas already gets another one on
    // the same pixels. Null when there is no buffer. Any thread.
    std::unique_ptr<Canvas> Draw();
    // Any thread; without the lock.
    Size GetSize() const;
    double Scale() const { return scale_.load(); }
    // A copy of the pixels; null without a buffer. Any thread.
    QImage Copy() const;

    // The rest is for the GUI thread.
    enum class ResizeResult { Same, New, Busy };
    // Another buffer, with the old content at its upper left and white around it. Busy when this very thread
    // has a canvas: to be tried again once it is gone.
    ResizeResult Resize(Size size, double scale);
    // Frees the buffer: Draw gives null from now on.
    void Drop();
    // What was drawn since the last call, in logical pixels.
    QRect TakeDirty();
    // Brings a part (logical pixels) to the screen.
    void Paint(QPainter& screen, const QRect& part);

private:
    class BufferCanvas;
    void Leave(const QRectF& touched);

    const std::function<void()> present_;
    // Recursive, so that a function that draws may call another one that takes its own canvas.
    mutable std::recursive_mutex mutex_;
    QImage pixels_;                    // guarded by mutex_; null without a buffer
    Size size_;                        // guarded by mutex_
    std::optional<QPainter> painter_;  // guarded by mutex_; while canvases live
    int canvases_ = 0;                 // guarded by mutex_
    bool isDropped_ = false;           // guarded by mutex_
    QRectF dirty_;                     // guarded by mutex_
    bool isPresenting_ = false;        // guarded by mutex_; present_ was called and TakeDirty not yet
    std::atomic<std::uint64_t> publishedSize_ = 0;  // width in the high half
    std::atomic<double> scale_ = 1.0;
};

}  // namespace kalmora::qt
