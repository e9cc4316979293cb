// JPEG through the codec library: measured, and decoded at the smallest scale that covers what is wanted.
#pragma once

#include <QImage>

#include "base/byte_source.h"
#include "base/geometry.h"

namespace kalmora::qt {

bool LooksLikeJpeg(const ByteSource& source);

// As stored, from the file's head; 0 by 0 when there is no head that makes sense.
Size MeasureJpeg(const ByteSource& source);

// The picture as stored (no orientation), Format_RGB32, at least `needed` pixels each way where it has them,
// at most its own size. An empty `needed` wants it whole; a picture past kMostDecodedPixels is decoded
// smaller then. A file that ends or breaks early gives what is there, the rest grey. Null when nothing can be
// decoded. Never throws; any thread.
QImage DecodeJpeg(const ByteSource& source, Size needed);
// Its uppermost rows, a thirty-second of it at that scale, read no further where the picture's bytes come row
// by row. Null when a part of them is missing.
QImage DecodeJpegTop(const ByteSource& source, Size needed);

}  // namespace kalmora::qt
