// Whole-number scaling, as the views' placement counts on it.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

namespace kalmora {

// value * by / divisor without overflow; divisor is not 0.
inline std::int32_t MulDiv(std::int64_t value, std::int64_t by, std::int64_t divisor) {
    constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::clamp(value * by / divisor, -kMost, kMost));
}

}  // namespace kalmora
