// Single values that several threads read while one writes.
#pragma once

#include <atomic>
#include <cstdint>

namespace kalmora {

using SharedInt = std::atomic<std::int32_t>;
using SharedFlag = std::atomic<std::uint8_t>;

}  // namespace kalmora
