// The small picture that a camera puts into a photo.
#pragma once

#include <QImage>
#include <cstdint>
#include <span>

#include "base/geometry.h"

namespace kalmora::qt {

// The thumbnail decoded (not yet upright) and freed of the black bars with which cameras fill it up to their
// usual shape: one whose shape differs from the stored picture's by more than 2 % is cut about its middle to
// the picture's shape. Null when it cannot be decoded, and when it is wide and the picture is tall or the
// other way round: such a thumbnail was made by a program that turned one and not the other.
QImage DecodeThumbnail(std::span<const std::uint8_t> jpeg, Size storedPicture);

}  // namespace kalmora::qt
