// What a file is, according to its name.
#pragma once

#include <string_view>

namespace kalmora {

// True when the base name begins with "IMG_" or "DSCF", or is P, seven digits and a dot: names that cameras
// give. Upper case only; the file is not touched.
bool IsCameraFileName(std::string_view path);

}  // namespace kalmora
