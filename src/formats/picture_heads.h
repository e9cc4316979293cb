// The sizes of pictures from their first bytes, without a decoder.
#pragma once

#include "base/byte_source.h"
#include "base/geometry.h"

namespace kalmora {

struct PictureHead {
    enum class Format { None, Jpeg, Other };
    Format format = Format::None;
    Size size;  // pixels; of a JPEG as stored, of all others upright. 0 by 0 when the head makes no sense.
};

// The formats are JPEG and those that a toolkit usually decodes. Reads a few hundred bytes in
// two places at most, of a JPEG some seventy bytes for each of its segments. Any thread.
PictureHead ReadPictureHead(const ByteSource& source);

}  // namespace kalmora
