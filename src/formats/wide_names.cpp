#include "formats/wide_names.h"

#include "base/byte_reader.h"
#include "text/text.h"

namespace kalmora {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool IsHigh(char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool IsLow(char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }
bool IsRawByte(char32_t unit) { return unit >= 0xDC80 && unit <= 0xDCFF; }

}  // namespace

std::string ToWideName(std::string_view name) {
    std::string out;
    out.reserve(name.size() * 2);
    const auto add = [&out](char32_t unit) {
        out.push_back(static_cast<char>(unit & 0xFF));
        out.push_back(static_cast<char>(unit >> 8));
    };
    for (std::size_t at = 0; at < name.size();) {
        const text::CodePoint point = text::DecodeUtf8(name, at);
        at += static_cast<std::size_t>(point.length);
        if (point.value < 0x10000) {
            add(point.value);
        } else {
            add(0xD800 + ((point.value - 0x10000) >> 10));
            add(0xDC00 + ((point.value - 0x10000) & 0x3FF));
        }
    }
    return out;
}

std::string FromWideName(std::span<const std::uint8_t> bytes) {
    const ByteReader reader(bytes, ByteOrder::Little);
    std::string out;
    out.reserve(bytes.size());
    for (std::size_t at = 0; reader.Has(at, 2); at += 2) {
        const char32_t unit = reader.U16(at).value_or(0);
        const char32_t next = reader.U16(at + 2).value_or(0);
        if (IsHigh(unit) && IsLow(next)) {
            text::AppendUtf8(out, 0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00));
            at += 2;
        } else if (IsHigh(unit) || (IsLow(unit) && !IsRawByte(unit))) {
            text::AppendUtf8(out, kReplacement);
        } else {
            text::AppendUtf8(out, unit);
        }
    }
    return out;
}

}  // namespace kalmora
