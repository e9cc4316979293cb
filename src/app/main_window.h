// The main window: its making, its procedure and its timers. GUI thread.
#pragma once

#include <memory>

#include "platform/window.h"

namespace kalmora {

inline constexpr int kTimerLongPress = 1001;
inline constexpr int kTimerClipboardGuard = 1008;
inline constexpr int kTimerIdleRefresh = 1009;

// The window's one event point.
bool MainWindowProc(Window& window, const Event& event);

// Makes the window by WindowRect. Its creation starts the heartbeat. Null when there is none to be had. The
// procedure is MainWindowProc or one that hands on to it.
std::unique_ptr<Window> CreateMainWindow(WindowProcedure procedure = MainWindowProc);

}  // namespace kalmora
