#pragma once

#include <QImage>
#include <cstdint>
#include <string>
#include <vector>

#include "life.h"

namespace sample {

// A drawing as the build rendered it. Throws BadTable when it is missing.
QImage LoadDrawing(const std::string& folder, const std::string& name);

// The photo of a scene: its part of the drawing, in the light of its hour and weather. As the camera sees it,
// so upright also where the file lies on a side.
QImage TakePhoto(const QImage& scene, const Shot& shot);

// `t`, from 0 to 1, through a slow pan and zoom over the scene: a frame of 320x240.
QImage MovieFrame(const QImage& scene, float t);

// The picture reduced to fit into width x height, centred on black.
QImage FitInto(const QImage& image, int width, int height);

// With the content of an Exif segment in front, unless it is empty.
std::vector<std::uint8_t> JpegBytes(const QImage& image, int quality, const std::vector<std::uint8_t>& exif);

}  // namespace sample
