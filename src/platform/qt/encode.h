// Pictures written to files. Any thread; false when the picture is empty or the file cannot be written.
#pragma once

#include <QImage>
#include <string>

namespace kalmora::qt {

// With all its pixels and their transparency.
bool WritePng(const QImage& image, const std::string& path);
// Quality 0 to 100. What is transparent becomes white, since the format knows no transparency.
bool WriteJpeg(const QImage& image, const std::string& path, int quality);

}  // namespace kalmora::qt
