#include "platform/image.h"

#include "platform/qt/encode.h"
#include "platform/qt/pixels.h"

namespace kalmora::images {

bool SavePng(const Image& image, const std::string& path) {
    return !image.IsEmpty() && qt::WritePng(image.Get()->Get(), path);
}

bool SaveJpeg(const Image& image, const std::string& path, int quality) {
    return !image.IsEmpty() && qt::WriteJpeg(image.Get()->Get(), path, quality);
}

}  // namespace kalmora::images
