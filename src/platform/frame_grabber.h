// Single pictures out of movies. Any thread; each call is independent and takes some milliseconds.
#pragma once

#include <cstdint>
#include <string>

#include "platform/image.h"

namespace kalmora {

enum class GrabResult {
    Grabbed,
    NotFound,   // no file there, or it cannot be read
    NoPicture,  // the file is no movie, or has sound alone
    Broken,     // it is a movie, and no frame of it can be decoded
};

struct GrabbedFrame {
    GrabResult result = GrabResult::NotFound;
    Image image;  // upright, in the movie's own pixels made square; empty unless grabbed
};

// The frame that is shown `positionMs` milliseconds after the beginning: of a position below 0 the first one,
// of one past the end the last. No sound is made and no window shown. Refuses movies past the limits of
// pictures (image.h).
GrabbedFrame GrabFrame(const std::string& path, std::int64_t positionMs);

}  // namespace kalmora
