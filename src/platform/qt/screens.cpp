#include "platform/screens.h"

#include <QGuiApplication>
#include <QScreen>

namespace kalmora {

std::vector<Rect> ScreenAreas() {
    std::vector<Rect> areas;
    if (!qGuiApp) return areas;
    const auto add = [&](const QScreen* screen) {
        const QRect area = screen->availableGeometry();
        areas.push_back({area.x(), area.y(), area.width(), area.height()});
    };
    const QScreen* const main = QGuiApplication::primaryScreen();
    if (main) add(main);
    for (const QScreen* screen : QGuiApplication::screens())
        if (screen != main) add(screen);
    return areas;
}

}  // namespace kalmora
