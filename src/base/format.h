// Texts by printf formats.
#pragma once

#include <string>

#include "base/printf_format.h"

namespace kalmora {

// The text, at most 255 bytes of it. Any thread.
KALMORA_PRINTF(1, 2)
std::string Format(const char* format, ...);

}  // namespace kalmora
