// What in a photo names places behind its picture, for a picture that becomes longer or shorter.
#pragma once

#include <string>

#include "media/exif_reader.h"
#include "media/jpeg_picture.h"

namespace kalmora {

// True when nothing but an index of further pictures can name a place behind the picture: all segments are
// of kinds that are known to name none or to count from the end of the file, no trailer is
// there that counts from the start of the file, and no number in the maker note of the Exif block (null:
// there is none) is where something begins behind the picture, or where a length beside it begins that ends
// with something, however it is counted.
bool MayMoveBehind(ByteWindow& file, const JpegPicture& picture, const exif::Block* block);

// True for a file that ends with a trailer of the kind that ends with its name and its place (AFCP), counted
// from the start of the file.
bool HasCountingTrailer(ByteWindow& file);

// Corrects the indexes of further pictures in `turned`, which begins as the original does, for everything
// from the picture's end on being moved to its own end. False when one of them cannot be corrected.
bool MovePlacesBehind(ByteWindow& file, const JpegPicture& picture, std::string& turned);

}  // namespace kalmora
