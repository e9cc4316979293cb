// Pictures turned as cameras say.
#pragma once

#include <QImage>

namespace kalmora::qt {

// The stored picture turned and mirrored so that it is upright (Exif orientation 1 to 8); as it is for a
// value that is none of the 8.
QImage Upright(QImage stored, int orientation);

}  // namespace kalmora::qt
