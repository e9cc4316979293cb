// The main window: its making, its procedure and its timers. GUI thread.
#pragma once

#include <memory>

#include "platform/window.h"

namespace kalmora {

inline constexpr int kTimerLongPress = 1001;
inline constexpr int kTimerClipboardGuard = 1008;
inline constexpr int kTimerIdleRefresh = 1009;

// Makes the window by WindowRect. Its creation starts the heartbeat. Null when there is none to be had.
std::unique_ptr<Window> CreateMainWindow();

// The window's one event point.
bool MainWindowProc(Window& window, const Event& event);

}  // namespace kalmora
