// The main window: its making, its procedure and its timers. GUI thread.
#pragma once

#include <memory>

#include "app/app_parts.h"
#include "platform/window.h"

namespace kalmora {

inline constexpr int kTimerLongPress = 1001;
inline constexpr int kTimerClipboardGuard = 1008;
inline constexpr int kTimerIdleRefresh = 1009;

// The window's one event point.
bool MainWindowProc(const AppParts& parts, Window& window, const Event& event);

// Makes the window by WindowRect. Its creation starts the heartbeat. Null on failure. The procedure hands on
// to MainWindowProc.
std::unique_ptr<Window> CreateMainWindow(WindowProcedure procedure);

}  // namespace kalmora
