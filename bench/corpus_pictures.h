// Pictures that compress like photographs: noise in octaves, a few hard edges, the grain of a sensor.
#pragma once

#include <cstdint>
#include <vector>

namespace bench {

struct Picture {
    int width = 0, height = 0;
    std::vector<std::uint8_t> rgb;
};

enum class Chroma { HalfWidth, HalfBoth };

// The same seed gives the same pixels. `grain` is the strength of the finest noise, 0 to 64.
Picture MakePicture(std::uint32_t seed, int width, int height, int grain);
// Each pixel the mean of those that fall into it.
Picture Reduce(const Picture& picture, int width, int height);
// A JPEG from its first quantization table on, without the marker that begins a file and without segments
// about the format: what follows the Exif segment of a camera's photo.
std::vector<std::uint8_t> JpegBody(const Picture& picture, int quality, Chroma chroma);

}  // namespace bench
