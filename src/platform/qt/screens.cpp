#include "platform/screens.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPixmap>
#include <QScreen>
#include <algorithm>

#include "platform/qt/pixels.h"

namespace kalmora {

namespace {

Rect FromQtRect(const QRect& area) { return {area.x(), area.y(), area.width(), area.height()}; }

// What one screen shows of the area goes where it belongs in the picture, which has the area's logical
// pixels.
void GrabFrom(QScreen& screen, const QRect& area, QPainter& painter) {
    const QRect seen = area.intersected(screen.geometry());
    if (seen.isEmpty()) return;
    const QRect onScreen = seen.translated(-screen.geometry().topLeft());
    const QPixmap grabbed =
        screen.grabWindow(0, onScreen.x(), onScreen.y(), onScreen.width(), onScreen.height());
    painter.drawPixmap(seen.translated(-area.topLeft()), grabbed, grabbed.rect());
}

}  // namespace

std::vector<Rect> ScreenAreas() {
    std::vector<Rect> areas;
    if (!qGuiApp) return areas;
    const QScreen* const main = QGuiApplication::primaryScreen();
    if (main) areas.push_back(FromQtRect(main->availableGeometry()));
    for (const QScreen* screen : QGuiApplication::screens())
        if (screen != main) areas.push_back(FromQtRect(screen->availableGeometry()));
    return areas;
}

Rect DesktopArea() {
    QRect around;
    if (qGuiApp)
        for (const QScreen* screen : QGuiApplication::screens()) around = around.united(screen->geometry());
    return FromQtRect(around);
}

Image GrabScreen(const Rect& wanted) {
    const QRect area(wanted.x, wanted.y, wanted.width, wanted.height);
    if (!qGuiApp || wanted.IsEmpty()) return {};
    double scale = 0;
    for (const QScreen* screen : QGuiApplication::screens())
        if (screen->geometry().intersects(area)) scale = std::max(scale, screen->devicePixelRatio());
    if (scale == 0) return {};
    QImage picture = qt::MakeBuffer(Size{wanted.width, wanted.height}, scale);
    if (picture.isNull()) return {};
    picture.fill(Qt::black);
    QPainter painter(&picture);
    for (QScreen* screen : QGuiApplication::screens()) GrabFrom(*screen, area, painter);
    painter.end();
    return qt::MakeImage(std::move(picture));
}

}  // namespace kalmora
