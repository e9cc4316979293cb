// Numbers at the front of a text, taken as a scan by a format takes them. Any thread; none fails.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace kalmora {

// Blank, tab and the line ends.
bool IsBlank(char c);

// Takes a decimal number off the front of `rest`, with the blanks and the sign before it. `width`: the most
// characters of sign and digits that are taken; 0 is any number of them. A number too large is the largest
// there is. Empty when no number stands there; only blanks are gone from `rest` then.
std::optional<int> TakeNumber(std::string_view& rest, std::size_t width = 0);

}  // namespace kalmora
