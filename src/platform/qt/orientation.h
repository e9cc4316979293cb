// The eight ways in which a camera stores a picture (Exif orientation 1 to 8), undone.
#pragma once

#include <QImage>

namespace kalmora::qt {

// True when the upright picture is as wide as the stored one is high. False for a value that is none of
// the 8.
bool SwapsSides(int orientation);
// The stored picture turned and mirrored so that it stands upright; as it is for a value that is none of
// the 8.
QImage Upright(QImage stored, int orientation);

}  // namespace kalmora::qt
