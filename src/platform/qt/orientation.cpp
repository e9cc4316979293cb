#include "platform/qt/orientation.h"

#include <QTransform>
#include <utility>

#include "formats/orientation.h"

namespace kalmora::qt {

QImage Upright(QImage stored, int orientation) {
    if (stored.isNull()) return stored;
    const Turn turn = TurnUpright(orientation);
    if (turn.isMirrored) stored = std::move(stored).mirrored(true, false);
    if (turn.degrees != 0) stored = stored.transformed(QTransform().rotate(turn.degrees));
    return stored;
}

}  // namespace kalmora::qt
