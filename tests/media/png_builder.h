// Makes small PNGs chunk by chunk. Checksums are right unless a test wants them wrong.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/crc32.h"
#include "exif_builder.h"

namespace kalmora::test {

inline constexpr std::string_view kPngSignature("\x89PNG\r\n\x1A\n", 8);

inline std::string PngChunk(std::string_view type, std::string_view data) {
    const std::string checked = std::string(type) + std::string(data);
    return Word32(ByteOrder::Big, static_cast<std::uint32_t>(data.size())) + checked +
           Word32(ByteOrder::Big, Crc32(checked));
}

inline std::string PngText(std::string_view keyword, std::string_view text) {
    return PngChunk("tEXt", std::string(keyword) + '\0' + std::string(text));
}

inline std::string PngHeader(std::uint32_t width = 1, std::uint32_t height = 1) {
    return PngChunk("IHDR", Word32(ByteOrder::Big, width) + Word32(ByteOrder::Big, height) +
                                std::string("\x08\0\0\0\0", 5));
}

// One grey pixel.
inline std::string PngPixels() {
    return PngChunk("IDAT", std::string("\x78\x9C\x63\x60\x00\x00\x00\x02\x00\x01", 10));
}

// A whole file with the chunks between its header and its pixels.
inline std::string PngOf(std::string_view chunks) {
    return std::string(kPngSignature) + PngHeader() + std::string(chunks) + PngPixels() +
           PngChunk("IEND", "");
}

}  // namespace kalmora::test
