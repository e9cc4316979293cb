#include <atomic>

#include "app/heartbeat.h"
#include "app/main_window.h"
#include "app/main_window_events.h"
#include "app/main_window_keys.h"
#include "app/run_beside.h"
#include "app/tray_menu.h"
#include "platform/dialog.h"
#include "state/app_state.h"
#include "views/control/navigation.h"
#include "views/model/calendar_store.h"
#include "views/model/stop_load.h"
#include "views/paint/paint_view.h"

namespace kalmora {

namespace {

constexpr int kIdleRefreshMs = 10000;
constexpr int kPaintMs = 100;  // longer than a paint takes, unless a disk is slow or hangs

std::atomic<int> paintsAsked = 0;

// Once more when a paint was asked for meanwhile.
void PaintAllAsked(CalendarStore& calendar) {
    int painted;
    do {
        painted = paintsAsked;
        PaintView(calendar);
    } while (!paintsAsked.compare_exchange_strong(painted, 0));
}

}  // namespace

bool OnCreate(const AppParts& parts, Window& window) {
    parts.heartbeat.Start();
    parts.scraps.WatchClipboard([&parts, &window] { OnClipboardChange(parts, window); });
    window.StartTimer(kTimerIdleRefresh, kIdleRefreshMs);
    window.SetTips([&parts](Point client) { return ButtonTip(parts.keys, client); });
    return true;
}

bool OnDestroy(const AppParts& parts, Window& window) {
    // The rectangle that the window has when it is neither minimised nor maximised is what the next start
    // uses. Then the window goes before anything is waited for.
    const Rect frame = window.NormalFrame();
    State().settings.WindowRect = {frame.Left(), frame.Top(), frame.Right(), frame.Bottom()};
    State().run.MainWindowVisible = 0;
    window.Hide();
    StopCurrentLoad(parts.calendar);
    // Also a beat that is filling a scatter at this moment leaves at its next file.
    State().run.ObjectGate.RequestStop();
    parts.heartbeat.Stop();
    SetMainWindow(nullptr);
    parts.slideShow.Hide();
    parts.neighbor.Hide();
    parts.petals.Hide();
    parts.filter.Hide();
    if (Application* application = TheApplication()) application->Quit(0);
    return true;
}

bool OnMinimize(const AppParts& parts, Window& window) {
    if (parts.slideShow.IsShown()) parts.slideShow.FitToWindow();
    parts.filter.Hide();
    State().run.MainWindowVisible = 0;
    // It stays in the desktop's bar, where it can be called back from; so does one with a dialog, which would
    // be left behind alone.
    if (!parts.tray.IsShown() || IsDialogOpen()) return false;
    window.Hide();
    return true;
}

bool OnRestore() {
    State().run.MainWindowVisible = 1;
    return true;
}

bool OnPaint(const AppParts& parts) {
    // Looks at the files that are shown, so it is not done on the thread that has to see a click on close.
    if (paintsAsked++ == 0)
        RunAtMost("Paint", kPaintMs, [&calendar = parts.calendar] { PaintAllAsked(calendar); });
    return true;
}

bool OnResize(const AppParts& parts) {
    if (parts.slideShow.IsShown()) parts.slideShow.FitToWindow();
    return true;
}

bool OnClipboardChange(const AppParts& parts, Window& window) {
    window.StopTimer(kTimerClipboardGuard);
    if (State().settings.MonitorClipboard) parts.scraps.KeepClipboard();
    return true;
}

bool OnTimer(const AppParts& parts, Window& window, int timer) {
    switch (timer) {
        case kTimerLongPress:
            // A press that has lasted for two seconds on a cell opens its day.
            window.StopTimer(kTimerLongPress);
            if (State().press.PressActive) ChangeToDaily(parts.calendar, 0);
            return true;
        case kTimerClipboardGuard:
            State().settings.MonitorClipboard = 0;
            window.StopTimer(kTimerClipboardGuard);
            return true;
        default:
            IdleRefresh(parts.indexUpdates);
            return true;
    }
}

}  // namespace kalmora
