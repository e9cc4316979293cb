#pragma once

#include <string_view>
#include <vector>

#include "exif/directory.h"

namespace sample {

using exif::Bytes;

// A silent Motion-JPEG movie; each frame is a JPEG file of the given size.
Bytes AviBytes(const std::vector<Bytes>& frames, std::uint32_t width, std::uint32_t height,
               std::uint32_t framesPerSecond);

// A tune as lines of notes, each "name+octave:beats" ("C4:1 E4:0.5"), one after the other.
struct Tune {
    float beatsPerMinute;
    std::string_view melody;
    std::string_view bass;
};

// The tune on a soft plucked voice: 22.05 kHz, mono, 16 bit.
Bytes WavBytes(const Tune& tune);

}  // namespace sample
