// How large a picture is, without a decoder: a program that only measures does not need the toolkit's
// libraries.
#pragma once

#include <string>

#include "base/geometry.h"

namespace kalmora {

namespace images {
class PreviewReader;
}

// The upright size in pixels from the file's head, nothing decoded. 0 by 0 when it is no readable picture.
// Without a reader (null) a JPEG is measured as it is stored. Any thread.
Size MeasurePicture(const std::string& path, const images::PreviewReader* reader);

}  // namespace kalmora
