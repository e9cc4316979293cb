// What a turn of a photo changes in its Exif block: the embedded thumbnail, and the numbers that name sides.
// The block keeps its length and everything in it its place.
#pragma once

#include <string>

#include "base/geometry.h"
#include "media/exif_reader.h"
#include "media/jpeg_turner.h"

namespace kalmora {

// `head` holds the file up to the end of the block at least; `blockEnd` is the end of its segment there.
// `stored` is the size of the photo before the turn.
//
// - The thumbnail is turned where it is, with fill bytes in front of its end marker where it became
//   shorter. One that cannot be turned is not used any more: the main directory no longer names the directory
//   that describes it. One that is no JPEG stays; this program never paints it.
// - By a quarter turn the thumbnail's width and height, those of the Exif directory, and those of the main
//   directory where they are the photo's, change places.
void TurnExif(std::string& head, const exif::Block& block, std::uint64_t blockEnd, Size stored,
              const JpegTurner& turner);

}  // namespace kalmora
