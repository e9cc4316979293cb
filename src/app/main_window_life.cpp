#include "app/app_hooks.h"
#include "app/app_state.h"
#include "app/dispatch.h"
#include "app/heartbeat.h"
#include "app/main_window.h"
#include "app/main_window_events.h"
#include "views/calendar_store.h"
#include "views/hooks.h"
#include "views/navigation.h"
#include "views/paint_view.h"

namespace kalmora {

namespace {
constexpr int kIdleRefreshMs = 10000;
}

bool OnCreate(Window& window) {
    StartHeartbeat();
    window.StartTimer(kTimerIdleRefresh, kIdleRefreshMs);
    return true;
}

bool OnDestroy(Window& window) {
    StopCurrentLoad();
    StopHeartbeat();
    // The rectangle that the window has when it is neither minimised nor maximised is what the next start
    // uses.
    const Rect frame = window.NormalFrame();
    State().WindowRect = {frame.Left(), frame.Top(), frame.Right(), frame.Bottom()};
    SetMainWindow(nullptr);
    if (Application* application = TheApplication()) application->Quit(0);
    return true;
}

bool OnMinimize(Window& window) {
    if (Hooks().IsSlideShowOpen()) Shell().FitSlideShow();
    window.Hide();
    State().MainWindowVisible = 0;
    return true;
}

bool OnRestore() {
    State().MainWindowVisible = 1;
    return true;
}

bool OnPaint() {
    PaintView();
    return true;
}

bool OnResize() {
    if (Hooks().IsSlideShowOpen()) Shell().FitSlideShow();
    return true;
}

bool OnCommand(Window& window, int command) { return RouteCommand(window, command); }

bool OnTimer(Window& window, int timer) {
    switch (timer) {
        case kTimerLongPress:
            // A press that has lasted for two seconds on a cell opens its day.
            window.StopTimer(kTimerLongPress);
            if (State().PressActive) ChangeToDaily(0);
            return true;
        case kTimerClipboardGuard:
            State().MonitorClipboard = 0;
            window.StopTimer(kTimerClipboardGuard);
            return true;
        default:
            IdleRefresh();
            return true;
    }
}

}  // namespace kalmora
