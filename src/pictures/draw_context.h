// Where an object paints itself: a memory surface's canvas or a window. A window's canvas holds the window's
// lock, so an object does its slow work first and asks for the canvas when only painting is left.
#pragma once

#include <functional>
#include <utility>

#include "platform/canvas.h"
#include "platform/window.h"

namespace kalmora {

// Short-lived, on the stack of the painting function; what it wraps outlives it. One thread.
class DrawContext {
public:
    explicit DrawContext(Canvas& canvas) : canvas_(&canvas) {}
    explicit DrawContext(Window& window) : window_(&window) {}
    // `isWanted` is asked when the window is held: false leaves it as it is, because it shows something else
    // now.
    // `paintOnTop` paints what lies over the object in the same window, before it is presented.
    DrawContext(Window& window, std::function<bool()> isWanted,
                std::function<void(Canvas&)> paintOnTop = nullptr)
        : window_(&window), isWanted_(std::move(isWanted)), paintOnTop_(std::move(paintOnTop)) {}

    double Scale() const { return canvas_ ? canvas_->Scale() : window_->Scale(); }

    // Hands the canvas to `paint` and, for a window, presents what was painted. Nothing is called once the
    // window is closed. `paint` reads no file and decodes no picture.
    void With(const std::function<void(Canvas&)>& paint) const {
        if (canvas_) return paint(*canvas_);
        const auto canvas = window_->Draw();
        if (!canvas || (isWanted_ && !isWanted_())) return;
        paint(*canvas);
        if (paintOnTop_) paintOnTop_(*canvas);
    }

private:
    Canvas* canvas_ = nullptr;
    Window* window_ = nullptr;
    std::function<bool()> isWanted_;
    std::function<void(Canvas&)> paintOnTop_;
};

}  // namespace kalmora
