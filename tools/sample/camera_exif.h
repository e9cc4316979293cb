#pragma once

#include "exif/directory.h"
#include "life.h"

namespace sample {

// What the camera notes in a photo: the content of the APP1 segment, from "Exif" on. Width and height are
// those of the picture as stored, before it is set upright; the thumbnail is a JPEG.
exif::Bytes ExifSegment(const Shot& shot, int width, int height, const exif::Bytes& thumbnail);

}  // namespace sample
