// Small letters of every alphabet, in every locale of the user.
#pragma once

namespace kalmora::text {

// The small form of a letter; the character itself when it has none. Any thread.
char32_t LowerCase(char32_t character);

}  // namespace kalmora::text
