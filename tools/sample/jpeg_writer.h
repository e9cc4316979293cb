#pragma once

#include "develop.h"

namespace sample {

// A baseline JPEG of the picture. `exif` is the content of an APP1 segment and may be empty, then the
// file carries a plain JFIF head. Any thread.
std::vector<std::uint8_t> JpegBytes(const Image& image, int quality, const std::vector<std::uint8_t>& exif);

}  // namespace sample
