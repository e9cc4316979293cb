// Where an object paints itself: a memory surface's canvas or a window. A window's canvas holds the window's
// lock, so an object does its slow work first and asks for the canvas when only painting is left.
#pragma once

#include <functional>

#include "platform/canvas.h"
#include "platform/window.h"

namespace kalmora {

// Lives shortly, on the stack of the one who paints; what it wraps outlives it. One thread.
class DrawContext {
public:
    explicit DrawContext(Canvas& canvas) : canvas_(&canvas) {}
    explicit DrawContext(Window& window) : window_(&window) {}

    double Scale() const { return canvas_ ? canvas_->Scale() : window_->Scale(); }

    // Hands the canvas to `paint` and, for a window, presents what was painted. Nothing is called once the
    // window is closed. `paint` reads no file and decodes no picture.
    void With(const std::function<void(Canvas&)>& paint) const {
        if (canvas_) return paint(*canvas_);
        if (const auto canvas = window_->Draw()) paint(*canvas);
    }

private:
    Canvas* canvas_ = nullptr;
    Window* window_ = nullptr;
};

}  // namespace kalmora
