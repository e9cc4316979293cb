#pragma once

#include <cstdint>
#include <vector>

namespace sample {

// A silent Motion-JPEG movie; each frame is a JPEG file of the given size.
std::vector<std::uint8_t> AviBytes(const std::vector<std::vector<std::uint8_t>>& frames, int width,
                                   int height, int framesPerSecond);

}  // namespace sample
