// The sizes of pictures from their first bytes and without the toolkit: a program that only wants to know how
// large a picture is never starts it.
#pragma once

#include "base/geometry.h"
#include "platform/qt/byte_source.h"

namespace kalmora::qt {

struct PictureHead {
    enum class Format { None, Jpeg, Other };
    Format format = Format::None;
    Size size;  // pixels; of a JPEG as stored, of all others upright. 0 by 0 when the head makes no sense.
};

// The formats are those that are decoded (jpeg_decoder.h, toolkit_decoder.h). Reads a few hundred bytes in
// two places at most, of a JPEG some seventy bytes for each of its segments. Any thread.
PictureHead ReadPictureHead(const ByteSource& source);

}  // namespace kalmora::qt
