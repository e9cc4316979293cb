#pragma once

#include <cstdint>
#include <vector>

#include "canvas.h"

namespace sample {

// A finished picture: 8-bit RGB, rows from the top.
struct Image {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> rgb;
};

// How the light on the canvas becomes a photograph.
struct Develop {
    float exposure = 1;
    float warmth = 0;  // white balance: -1 cold to 1 warm
    float contrast = 1.06f;
    float saturation = 1.08f;
    float vignette = 0.25f;  // light lost in the corners
    float bloom = 0.08f;     // how much strong light spills over
    float grain = 0.012f;
    bool paper = false;  // a drawing: white stays white, nothing is brighter
};

Image DevelopPicture(const Canvas& canvas, const Develop& settings, std::uint32_t seed);

// The picture reduced or enlarged to fit into width x height, centred on black.
Image FitInto(const Image& image, int width, int height);
// Left and right exchanged.
void Mirror(Image& image);
// Quarter turns clockwise, 1 to 3.
Image Turned(const Image& image, int quarters);

}  // namespace sample
