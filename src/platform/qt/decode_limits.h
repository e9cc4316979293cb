// What a picture may cost, and how large it is wanted. The limits keep a hostile file from taking the memory
// or the processor; no camera's picture comes near them.
#pragma once

#include <cstdint>

#include "base/geometry.h"

namespace kalmora::qt {

inline constexpr std::int64_t kMostDecodedPixels = 64'000'000;  // 256 MB
// Of formats that have to be read whole before they are reduced.
inline constexpr std::int64_t kMostStoredPixels = 200'000'000;
// What a progressive JPEG keeps in memory until its last scan has been read.
inline constexpr std::int64_t kMostCoefficientBytes = std::int64_t{512} << 20;
inline constexpr int kMostScans = 100;

inline std::int64_t PixelCount(Size size) { return std::int64_t{size.width} * size.height; }

// The size that a picture needs to be drawn inside `wanted` with its shape kept, rounded up; its own size
// when it is smaller than that or when `wanted` is empty.
Size NeededSize(Size picture, Size wanted);

inline bool Covers(Size size, Size needed, int tolerance = 0) {
    return size.width + tolerance >= needed.width && size.height + tolerance >= needed.height;
}

}  // namespace kalmora::qt
