// The window that the user works in, of whichever program. GUI thread.
#pragma once

#include <optional>
#include <string>

#include "base/geometry.h"

namespace kalmora {

struct ForegroundWindow {
    std::string title;        // UTF-8; may be empty
    std::string windowClass;  // what kind of window its program says that it is; may be empty
    Rect frame;               // outer rectangle on the screen, logical pixels
};

// Empty when no window has the focus, without a display, and where the system does not show other programs'
// windows.
std::optional<ForegroundWindow> FindForegroundWindow();

}  // namespace kalmora
