// The sizes of the picture formats other than JPEG, from their first bytes and without the toolkit: a
// program that only wants to know how large a picture is never starts it.
#pragma once

#include "base/geometry.h"
#include "platform/qt/byte_source.h"

namespace kalmora::qt {

// Upright, in pixels; 0 by 0 when the head is none of the formats that are read here (those that
// toolkit_decoder.h decodes) or makes no sense. Reads a few hundred bytes, in two places at most. Any thread.
Size MeasureByHead(const ByteSource& source);

}  // namespace kalmora::qt
