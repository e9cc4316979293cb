// What the last full paint drew, for everything that is redrawn in parts.
#pragma once

#include <memory>

#include "platform/canvas.h"

namespace kalmora {

using SurfacePtr = std::shared_ptr<const Surface>;

// The whole window as the last full paint drew it, but for the buttons. Shared, never written once set; null
// before the first. Any thread.
SurfacePtr PaintedBase();
void SetPaintedBase(SurfacePtr surface);

}  // namespace kalmora
