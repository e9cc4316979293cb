#pragma once

#include <string>
#include <utility>

#include "develop.h"

namespace sample {

// A PNG of the picture with a tEXt chunk for each keyword and (Latin) text.
std::vector<std::uint8_t> PngBytes(const Image& image,
                                   const std::vector<std::pair<std::string, std::string>>& texts);

}  // namespace sample
