// The picture formats other than JPEG, through the toolkit's readers.
#pragma once

#include <QImage>

#include "base/byte_source.h"
#include "base/geometry.h"

namespace kalmora::qt {

// The upright picture, at least as large as it is needed inside `wanted` (whole when that is empty). Null
// when it cannot be decoded or is past the limits. Any thread.
QImage DecodeOther(const ByteSource& source, Size wanted);

}  // namespace kalmora::qt
