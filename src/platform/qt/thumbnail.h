// The small picture that a camera puts into a photo.
#pragma once

#include <QImage>
#include <cstdint>
#include <span>

#include "base/byte_source.h"

namespace kalmora::qt {

// The thumbnail of a JPEG, decoded (not yet upright) and freed of the black bars with which cameras fill it
// up to their usual shape: one whose shape differs from the stored picture's by more than 2 % is cut to the
// picture's shape, about its middle where both edges have bars or none has; then bars that are left at its
// edges go where the picture itself is light. Null when it cannot be decoded, when its edges are black and
// the picture's may be so too, and when it is wide and the picture is tall or the other way round: such a
// thumbnail was made by a program that turned one and not the other.
QImage DecodeThumbnail(std::span<const std::uint8_t> jpeg, const ByteSource& picture);

}  // namespace kalmora::qt
