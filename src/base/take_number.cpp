#include "base/take_number.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace kalmora {

bool IsBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

std::optional<int> TakeNumber(std::string_view& rest, std::size_t width) {
    constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max();
    while (!rest.empty() && IsBlank(rest.front())) rest.remove_prefix(1);
    const std::size_t end = width == 0 ? rest.size() : std::min(rest.size(), width);
    const bool isNegative = end > 0 && rest[0] == '-';
    const std::size_t first = end > 0 && (rest[0] == '-' || rest[0] == '+') ? 1 : 0;
    std::size_t at = first;
    std::int64_t value = 0;
    for (; at < end && rest[at] >= '0' && rest[at] <= '9'; ++at)
        value = std::min(value * 10 + (rest[at] - '0'), kMost);
    if (at == first) return std::nullopt;
    rest.remove_prefix(at);
    return static_cast<int>(isNegative ? -value : value);
}

}  // namespace kalmora
