// Numbers of the JPEG format that several readers and writers need (ITU-T T.81, annex B).
#pragma once

#include <cstddef>
#include <cstdint>

namespace kalmora::jpeg {

inline constexpr std::uint8_t kTemporary = 0x01, kFirstFrame = 0xC0, kFirstRestart = 0xD0,
                              kLastRestart = 0xD7, kStartOfImage = 0xD8, kEndOfImage = 0xD9,
                              kStartOfScan = 0xDA, kApp0 = 0xE0, kApp1 = 0xE1, kApp2 = 0xE2, kComment = 0xFE;

inline constexpr std::size_t kSegmentHead = 4;  // marker and length

// Bytes between segments that belong to none and are passed over, as decoders do; a file with more is
// unclear.
inline constexpr int kMostStrayBytes = 64 << 10;

}  // namespace kalmora::jpeg
