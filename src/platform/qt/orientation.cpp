#include "platform/qt/orientation.h"

#include <QTransform>
#include <utility>

namespace kalmora::qt {

namespace {

struct Turn {
    bool isMirrored;  // left to right, before it is turned
    int degrees;      // clockwise
};

// By orientation, 1 first.
constexpr Turn kTurns[8] = {{false, 0},  {true, 0},   {false, 180}, {true, 180},
                            {true, 270}, {false, 90}, {true, 90},   {false, 270}};

}  // namespace

bool SwapsSides(int orientation) { return orientation >= 5 && orientation <= 8; }

QImage Upright(QImage stored, int orientation) {
    if (orientation < 2 || orientation > 8 || stored.isNull()) return stored;
    const Turn turn = kTurns[orientation - 1];
    if (turn.isMirrored) stored = std::move(stored).mirrored(true, false);
    if (turn.degrees != 0) stored = stored.transformed(QTransform().rotate(turn.degrees));
    return stored;
}

}  // namespace kalmora::qt
