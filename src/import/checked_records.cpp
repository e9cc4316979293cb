#include "import/checked_records.h"

#include <algorithm>
#include <cstdio>

#include "base/crc32.h"

namespace kalmora {

namespace {
constexpr std::size_t kSumDigits = 8;
}

std::string CheckedRecord(std::string_view body, int lengthDigits) {
    char head[64];
    std::snprintf(head, sizeof head, "%08x %0*zu\n", Crc32(body), lengthDigits, body.size());
    return std::string(head).append(body);
}

std::optional<std::string_view> TakeCheckedBody(std::string_view& rest, int lengthDigits) {
    const auto digits = static_cast<std::size_t>(lengthDigits);
    const std::size_t headLength = kSumDigits + 1 + digits + 1;
    if (rest.size() < headLength || rest[kSumDigits] != ' ' || rest[headLength - 1] != '\n')
        return std::nullopt;
    const auto sum = NumberOf<std::uint32_t>(rest.substr(0, kSumDigits), 16);
    const auto length = NumberOf<std::uint64_t>(rest.substr(kSumDigits + 1, digits));
    if (!sum || !length || *length > rest.size() - headLength) return std::nullopt;
    const std::string_view body = rest.substr(headLength, static_cast<std::size_t>(*length));
    if (Crc32(body) != *sum) return std::nullopt;
    rest.remove_prefix(headLength + body.size());
    return body;
}

std::string_view TakeUpTo(char end, std::string_view& rest) {
    const std::size_t at = rest.find(end);
    const std::string_view text = rest.substr(0, at == std::string_view::npos ? 0 : at);
    rest.remove_prefix(at == std::string_view::npos ? rest.size() : at + 1);
    return text;
}

std::string ReadFromStart(const files::EditFile& file, std::uint64_t most) {
    const auto status = file.Status();
    std::string bytes(static_cast<std::size_t>(std::min(status ? status->size : 0, most)), '\0');
    bytes.resize(file.ReadAt(0, {reinterpret_cast<std::uint8_t*>(bytes.data()), bytes.size()}));
    return bytes;
}

}  // namespace kalmora
