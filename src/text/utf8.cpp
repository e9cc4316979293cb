// Code points in UTF-8 and UTF-16, and comparing without regard to ASCII case.
#include <cstring>

#include "text/text.h"

namespace kalmora::text {

namespace {

constexpr char32_t kRawByte = 0xDC00;

bool IsRawByte(char32_t value) { return value >= kRawByte + 0x80 && value <= kRawByte + 0xFF; }

bool IsAsciiOnly(std::string_view bytes) {
    // Eight at a time: most texts of an index are ASCII from end to end.
    const char* at = bytes.data();
    std::size_t left = bytes.size();
    for (; left >= 8; at += 8, left -= 8) {
        std::uint64_t block = 0;
        std::memcpy(&block, at, 8);
        if (block & 0x8080808080808080ull) return false;
    }
    for (; left > 0; ++at, --left)
        if (static_cast<unsigned char>(*at) >= 0x80) return false;
    return true;
}

void AppendUtf16Unit(std::string& out, unsigned unit, bool bigEndian) {
    const char high = static_cast<char>(unit >> 8), low = static_cast<char>(unit & 0xFF);
    out.push_back(bigEndian ? high : low);
    out.push_back(bigEndian ? low : high);
}

char LowerAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 0x20) : c; }

}  // namespace

CodePoint DecodeUtf8(std::string_view text, std::size_t offset) {
    if (offset >= text.size()) return {0, 0};
    const auto byteAt = [&](std::size_t i) -> unsigned {
        return offset + i < text.size() ? static_cast<unsigned char>(text[offset + i]) : 0u;
    };
    const unsigned lead = byteAt(0);
    if (lead < 0x80) return {lead, 1};
    const CodePoint raw{kRawByte + lead, 1};
    const auto isTail = [&](std::size_t i) { return (byteAt(i) & 0xC0) == 0x80; };
    if (lead >= 0xC2 && lead <= 0xDF) {
        if (!isTail(1)) return raw;
        return {(lead & 0x1F) << 6 | (byteAt(1) & 0x3F), 2};
    }
    if (lead >= 0xE0 && lead <= 0xEF) {
        if (!isTail(1) || !isTail(2)) return raw;
        const char32_t value = (lead & 0x0F) << 12 | (byteAt(1) & 0x3F) << 6 | (byteAt(2) & 0x3F);
        if (value < 0x800 || (value >= 0xD800 && value <= 0xDFFF)) return raw;
        return {value, 3};
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        if (!isTail(1) || !isTail(2) || !isTail(3)) return raw;
        const char32_t value =
            (lead & 0x07) << 18 | (byteAt(1) & 0x3F) << 12 | (byteAt(2) & 0x3F) << 6 | (byteAt(3) & 0x3F);
        if (value < 0x10000 || value > 0x10FFFF) return raw;
        return {value, 4};
    }
    return raw;
}

bool IsValidUtf8(std::string_view bytes) {
    if (IsAsciiOnly(bytes)) return true;
    for (std::size_t at = 0; at < bytes.size();) {
        const CodePoint point = DecodeUtf8(bytes, at);
        if (IsRawByte(point.value)) return false;
        at += static_cast<std::size_t>(point.length);
    }
    return true;
}

void AppendUtf8(std::string& out, char32_t value) {
    const auto add = [&out](char32_t byte) { out.push_back(static_cast<char>(byte)); };
    if (value < 0x80) {
        add(value);
    } else if (value < 0x800) {
        add(0xC0 | value >> 6);
        add(0x80 | (value & 0x3F));
    } else if (IsRawByte(value)) {
        add(value - kRawByte);
    } else if ((value >= 0xD800 && value <= 0xDFFF) || value > 0x10FFFF) {
        AppendUtf8(out, kReplacement);
    } else if (value < 0x10000) {
        add(0xE0 | value >> 12);
        add(0x80 | (value >> 6 & 0x3F));
        add(0x80 | (value & 0x3F));
    } else {
        add(0xF0 | value >> 18);
        add(0x80 | (value >> 12 & 0x3F));
        add(0x80 | (value >> 6 & 0x3F));
        add(0x80 | (value & 0x3F));
    }
}

std::string ToDisplay(std::string_view text) {
    if (IsAsciiOnly(text)) return std::string(text);
    std::string out;
    out.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const CodePoint point = DecodeUtf8(text, at);
        const auto length = static_cast<std::size_t>(point.length);
        if (IsRawByte(point.value))
            AppendUtf8(out, kReplacement);
        else
            out.append(text, at, length);
        at += length;
    }
    return out;
}

std::string CutAtCharacter(std::string_view text, std::size_t maxBytes) {
    if (text.size() <= maxBytes) return std::string(text);
    // The cut lies inside at most one character, and that begins at most three bytes before it.
    for (std::size_t back = 1; back <= 3 && back <= maxBytes; ++back) {
        const std::size_t start = maxBytes - back;
        const CodePoint point = DecodeUtf8(text, start);
        if (static_cast<std::size_t>(point.length) > back) return std::string(text.substr(0, start));
    }
    return std::string(text.substr(0, maxBytes));
}

std::string FromUtf16(std::span<const std::uint8_t> bytes, bool bigEndian) {
    std::string out;
    out.reserve(bytes.size());
    const auto unitAt = [&](std::size_t at) -> char32_t {
        const unsigned first = bytes[at], second = bytes[at + 1];
        return bigEndian ? first << 8 | second : second << 8 | first;
    };
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        char32_t value = unitAt(at);
        if (value >= 0xD800 && value <= 0xDFFF) {
            const char32_t low = at + 3 < bytes.size() ? unitAt(at + 2) : 0;
            if (value < 0xDC00 && low >= 0xDC00 && low <= 0xDFFF) {
                value = 0x10000 + ((value - 0xD800) << 10) + (low - 0xDC00);
                at += 2;
            } else {
                value = kReplacement;
            }
        }
        AppendUtf8(out, value);
    }
    return out;
}

std::string ToUtf16(std::string_view utf8, bool bigEndian) {
    std::string out;
    out.reserve(utf8.size() * 2);
    for (std::size_t at = 0; at < utf8.size();) {
        const CodePoint point = DecodeUtf8(utf8, at);
        at += static_cast<std::size_t>(point.length);
        const unsigned value = IsRawByte(point.value) ? kReplacement : point.value;
        if (value < 0x10000) {
            AppendUtf16Unit(out, value, bigEndian);
        } else {
            AppendUtf16Unit(out, 0xD800 + ((value - 0x10000) >> 10), bigEndian);
            AppendUtf16Unit(out, 0xDC00 + ((value - 0x10000) & 0x3FF), bigEndian);
        }
    }
    return out;
}

bool EqualsNoCase(std::string_view a, std::string_view b) {
    return a.size() == b.size() && StartsWithNoCase(a, b);
}

bool StartsWithNoCase(std::string_view text, std::string_view head) {
    if (text.size() < head.size()) return false;
    for (std::size_t i = 0; i < head.size(); ++i)
        if (LowerAscii(text[i]) != LowerAscii(head[i])) return false;
    return true;
}

std::size_t FindNoCase(std::string_view text, std::string_view word) {
    if (word.empty()) return 0;
    if (word.size() > text.size()) return std::string_view::npos;
    const char first = LowerAscii(word.front());
    const std::size_t last = text.size() - word.size();
    for (std::size_t at = 0; at <= last; ++at)
        if (LowerAscii(text[at]) == first && StartsWithNoCase(text.substr(at), word)) return at;
    return std::string_view::npos;
}

}  // namespace kalmora::text
