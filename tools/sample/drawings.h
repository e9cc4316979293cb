#pragma once

#include "stage.h"

namespace sample {

// A drawing as somebody keeps it beside the photos: 0 a map, 1 a child's crayons, 2 a garden plan,
// 3 a chart.
Image MakeDrawing(int subject, std::uint32_t seed);

// A picture to lie behind a month or year with black text on it: very light, hardly any contrast.
Image MakeBackground(int month, std::uint32_t seed);

// Frame `t`, from 0 to 1, of a movie of 320x240: 0 a boat in the evening, 1 balloons rising.
Image MakeMovieFrame(int subject, float t, std::uint32_t seed);

}  // namespace sample
