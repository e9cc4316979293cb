#include "support/pointer.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QWindow>

namespace kalmora::test {

void MovePointer(Point screen, LeftButton button) {
    QWindow elsewhere;
    const QPointF at(screen.x, screen.y);
    QMouseEvent move(QEvent::MouseMove, at, at, Qt::NoButton,
                     button == LeftButton::Down ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&elsewhere, &move);
}

}  // namespace kalmora::test
