#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace sample {

// A tune as lines of notes, each "name+octave:beats" ("C4:1 E4:0.5 -:1"); '-' is a rest.
struct Tune {
    float beatsPerMinute;
    std::string_view melody;
    std::string_view bass;
};

// The tune on a soft plucked voice: 22.05 kHz, mono, 16 bit.
std::vector<std::uint8_t> WavBytes(const Tune& tune);

}  // namespace sample
