// Brings a window and the widget behind it together; neither source knows the other.
#include <QGuiApplication>

#include "platform/qt/window_qt.h"
#include "platform/qt/window_widget.h"

namespace kalmora {

std::unique_ptr<Window> Window::Create(const WindowOptions& options, WindowProcedure procedure) {
    if (qGuiApp == nullptr) return nullptr;
    const auto link = std::make_shared<qt::QtWindow::Link>();
    auto window =
        std::make_unique<qt::QtWindow>(link, new qt::WindowWidget(link), options, std::move(procedure));
    window->Deliver(Event{EventType::Create});
    return window;
}

}  // namespace kalmora
