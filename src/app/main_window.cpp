#include "app/main_window.h"

#include <utility>

#include "app/dispatch.h"
#include "app/main_window_events.h"
#include "app/window_place.h"
#include "platform/screens.h"
#include "state/app_state.h"
#include "store/resources.h"
#include "views/bar/button_bar.h"

namespace kalmora {

std::unique_ptr<Window> CreateMainWindow(WindowProcedure procedure) {
    WindowOptions options;
    options.title = "Kalmora";
    options.frame = UsableFrame(State().settings.WindowRect, ScreenAreas());
    options.leastClient = LeastClientSize();
    options.acceptDrops = true;
    options.iconPath = FindResource("Res/kalmora.png");
    return Window::Create(options, std::move(procedure));
}

bool MainWindowProc(const AppParts& parts, Window& window, const Event& event) {
    switch (event.type) {
        // ---- life
        case EventType::Create:
            return OnCreate(parts, window);
        case EventType::Destroy:
            return OnDestroy(parts, window);
        case EventType::Close:
            return false;
        case EventType::Minimize:
            return OnMinimize(parts, window);
        case EventType::Restore:
            return OnRestore();
        // ---- picture
        case EventType::Paint:
            return OnPaint(parts);
        case EventType::Resize:
            return OnResize(parts);
        // ---- commands and timers
        case EventType::Command:
            return RouteCommand(parts, window, event.command);
        case EventType::Timer:
            return OnTimer(parts, window, event.timer);
        // ---- mouse
        case EventType::MouseMove:
            return OnMouseMove(parts, window, event);
        case EventType::LeftDown:
            return OnLeftDown(parts, window, event);
        case EventType::LeftUp:
            return OnLeftUp(window, event);
        case EventType::LeftDoubleClick:
            return OnLeftDoubleClick(parts, window, event);
        case EventType::RightDown:
            return false;
        case EventType::RightUp:
            return OnRightUp();
        case EventType::RightDoubleClick:
            return OnRightDoubleClick(parts, event);
        case EventType::Wheel:
            return OnWheel(window, event);
        case EventType::Drop:
            return OnDrop(parts, window, event);
        // ---- keys that no accelerator took
        case EventType::Key:
            return OnKey(parts, event);
        case EventType::Character:
            return false;
    }
    return false;
}

}  // namespace kalmora
