// CRC-32 as PNG and many other formats have it: reflected, polynomial 0xEDB88320, all ones at both ends.
#pragma once

#include <cstdint>
#include <string_view>

namespace kalmora {

// Goes on from the checksum of what stands in front: Crc32(b, Crc32(a)) is Crc32(ab). Any thread.
std::uint32_t Crc32(std::string_view bytes, std::uint32_t before = 0);

}  // namespace kalmora
