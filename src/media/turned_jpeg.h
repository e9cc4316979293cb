// A picture that a tool has turned, put together again with everything of the original that a tool does not
// turn.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/geometry.h"
#include "media/jpeg_picture.h"

namespace kalmora {

// The original's start up to its last segment of an application or a comment in front of the picture's data,
// byte for byte and so at their places; the decoder's own segments between them become fill bytes. Behind
// them, without what was between, such segments as the original has between its scans. Empty when it cannot
// be read.
std::string HeadOf(ByteWindow& original, const JpegPicture& picture);

// The decoder's own segments and the scans of a turned picture. Empty when it is no whole JPEG of that size.
std::string DataOf(std::string_view turned, Size size);

// Head, data, the bytes that were in front of the original's end marker though they belonged to nothing, and
// the end marker.
std::string WholeJpeg(std::string_view head, std::string_view data, std::string_view strays);

// With fill bytes in front of its end marker, which every decoder passes over, as many as make it that long;
// as it is when it is longer.
void FillUp(std::string& jpeg, std::size_t length);

}  // namespace kalmora
