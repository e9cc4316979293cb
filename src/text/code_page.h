// The table of code page 932, one character at a time. Made on first use, never changed; any thread.
#pragma once

#include <cstdint>

namespace kalmora::text {

inline bool IsLeadByte(unsigned byte) {
    return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
}

// The character of a lead and a trail byte; 0 where the table has none.
char32_t DoubleByteCharacter(unsigned lead, unsigned trail);
// The character of a byte alone; 0 for a lead byte and for A0, FD, FE and FF (and for the byte
// 0).
char32_t SingleByteCharacter(unsigned byte);
// The code that is written for a character: one byte below 0x100, else two. 0 where it has none (and for
// U+0000).
std::uint16_t CodeOf(char32_t character);

}  // namespace kalmora::text
