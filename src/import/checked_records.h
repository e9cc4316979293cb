// What the journals of an import share: a body behind a head that proves it whole, and the numbers and texts
// in it. Any thread.
//
//     CRC-32 of the body as 8 hexadecimal digits, blank, its length as so many digits, line feed; the body
#pragma once

#include <charconv>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/edit_file.h"

namespace kalmora {

std::string CheckedRecord(std::string_view body, int lengthDigits);
// The body of the first record, which is taken from `rest`; nothing, and `rest` as it was, when it does not
// add up.
std::optional<std::string_view> TakeCheckedBody(std::string_view& rest, int lengthDigits);

// What comes before the end mark, which is taken too; empty, and the rest gone, when there is none.
std::string_view TakeUpTo(char end, std::string_view& rest);

// The number that the whole text is.
template <typename Number>
std::optional<Number> NumberOf(std::string_view text, int base = 10) {
    Number number{};
    const auto end = std::from_chars(text.data(), text.data() + text.size(), number, base);
    if (end.ec != std::errc() || end.ptr != text.data() + text.size()) return std::nullopt;
    return number;
}

// At most so many bytes from the beginning of a file.
std::string ReadFromStart(const files::EditFile& file, std::uint64_t most);

}  // namespace kalmora
