// Texts by printf formats.
#pragma once

#include <string>

namespace kalmora {

// The text, at most 255 bytes of it. Any thread.
[[gnu::format(printf, 1, 2)]] std::string Format(const char* format, ...);

}  // namespace kalmora
