// A text as the bytes of a file that lies in memory.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace kalmora::test {

// Valid as long as the text.
inline std::span<const std::uint8_t> BytesOf(const std::string& text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

}  // namespace kalmora::test
