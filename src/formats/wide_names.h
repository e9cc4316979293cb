// File names in 16-bit units, little-endian, so that every name comes back: a byte that is not valid UTF-8 is
// written as the lone unit 0xDC00 + byte. (text::ToUtf16 is for texts, where such a byte is replaced.)
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace kalmora {

std::string ToWideName(std::string_view name);
// A lone unit that means no byte becomes U+FFFD.
std::string FromWideName(std::span<const std::uint8_t> bytes);

}  // namespace kalmora
