#include "app/app_hooks.h"
#include "app/dispatch.h"
#include "app/heartbeat.h"
#include "app/main_window.h"
#include "app/main_window_events.h"
#include "app/main_window_keys.h"
#include "app/tray_menu.h"
#include "state/app_state.h"
#include "views/control/navigation.h"
#include "views/hooks.h"
#include "views/model/calendar_store.h"
#include "views/model/stop_load.h"
#include "views/paint/paint_view.h"

namespace kalmora {

namespace {
constexpr int kIdleRefreshMs = 10000;
}

bool OnCreate(Window& window) {
    StartHeartbeat();
    Shell().WatchClipboard([&window] { OnClipboardChange(window); });
    window.StartTimer(kTimerIdleRefresh, kIdleRefreshMs);
    window.SetTips(ButtonTip);
    return true;
}

bool OnDestroy(Window& window) {
    // The rectangle that the window has when it is neither minimised nor maximised is what the next start
    // uses. Then the window goes before anything is waited for.
    const Rect frame = window.NormalFrame();
    State().settings.WindowRect = {frame.Left(), frame.Top(), frame.Right(), frame.Bottom()};
    State().run.MainWindowVisible = 0;
    window.Hide();
    StopCurrentLoad();
    // Also a beat that is filling a scatter at this moment leaves at its next file.
    State().run.ObjectGate.RequestStop();
    StopHeartbeat();
    SetMainWindow(nullptr);
    Shell().CloseWindows();
    if (Application* application = TheApplication()) application->Quit(0);
    return true;
}

bool OnMinimize(Window& window) {
    if (Hooks().IsSlideShowOpen()) Shell().FitSlideShow();
    Shell().HideFilterWindow();
    State().run.MainWindowVisible = 0;
    if (!HasTray()) return false;  // it stays in the desktop's bar, where it can be called back from
    window.Hide();
    return true;
}

bool OnRestore() {
    State().run.MainWindowVisible = 1;
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

bool OnClipboardChange(Window& window) {
    window.StopTimer(kTimerClipboardGuard);
    if (State().settings.MonitorClipboard) Shell().KeepClipboard();
    return true;
}

bool OnCommand(Window& window, int command) { return RouteCommand(window, command); }

bool OnTimer(Window& window, int timer) {
    switch (timer) {
        case kTimerLongPress:
            // A press that has lasted for two seconds on a cell opens its day.
            window.StopTimer(kTimerLongPress);
            if (State().press.PressActive) ChangeToDaily(0);
            return true;
        case kTimerClipboardGuard:
            State().settings.MonitorClipboard = 0;
            window.StopTimer(kTimerClipboardGuard);
            return true;
        default:
            IdleRefresh();
            return true;
    }
}

}  // namespace kalmora
