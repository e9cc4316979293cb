#include "text/code_page.h"

#include <array>
#include <memory>

#include "text/text.h"

namespace kalmora::text {

namespace {

constexpr unsigned kTrails = 188;  // 40..7E, 80..FC

struct Row {
    unsigned lead;
    const char16_t* characters;  // kTrails of them; a blank where there is none
};

constexpr Row kRows[] = {
#include "text/cp932_table.inc"
};

// The rows that users fill themselves: the private use area from its start, in order.
constexpr unsigned kFirstUserLead = 0xF0, kLastUserLead = 0xF9;

// Other tables have the same characters under other numbers; text from there means these.
struct Alias {
    char32_t character;
    std::uint16_t code;
};
constexpr Alias kAliases[] = {{0x301C, 0x8160}, {0x2212, 0x817C}, {0x2016, 0x8161}};

unsigned TrailIndex(unsigned trail) {
    if (trail < 0x40 || trail == 0x7F || trail > 0xFC) return kTrails;
    return trail < 0x7F ? trail - 0x40 : trail - 0x41;
}

unsigned TrailByte(unsigned index) { return index < 0x3F ? index + 0x40 : index + 0x41; }

struct CodePage {
    std::array<std::array<char16_t, kTrails>, 256> characters{};  // by lead byte
    std::array<std::uint16_t, 0x10000> codes{};                   // by character

    CodePage() {
        for (unsigned byte = 1; byte < 0x100; ++byte)
            if (const char32_t single = SingleByteCharacter(byte))
                codes[single] = static_cast<std::uint16_t>(byte);
        for (const Row& row : kRows)
            for (unsigned i = 0; i < kTrails; ++i)
                if (row.characters[i] != u' ') characters[row.lead][i] = row.characters[i];
        for (unsigned lead = kFirstUserLead; lead <= kLastUserLead; ++lead)
            for (unsigned i = 0; i < kTrails; ++i)
                characters[lead][i] = static_cast<char16_t>(0xE000 + (lead - kFirstUserLead) * kTrails + i);
        // Of several codes for a character the lowest is written, but the rows ED and EE come last: they
        // repeat the rows FA to FC.
        for (unsigned lead = 0x81; lead <= 0xFC; ++lead)
            if (lead != 0xED && lead != 0xEE) AddCodes(lead);
        AddCodes(0xED);
        AddCodes(0xEE);
        for (const Alias& alias : kAliases) codes[alias.character] = alias.code;
    }

    void AddCodes(unsigned lead) {
        for (unsigned i = 0; i < kTrails; ++i) {
            const char16_t character = characters[lead][i];
            if (character != 0 && codes[character] == 0)
                codes[character] = static_cast<std::uint16_t>(lead << 8 | TrailByte(i));
        }
    }
};

const CodePage& Table() {
    static const auto table = std::make_unique<const CodePage>();
    return *table;
}

bool IsAlias(char32_t character) {
    for (const Alias& alias : kAliases)
        if (alias.character == character) return true;
    return false;
}

std::size_t AsciiRun(std::string_view bytes, std::size_t from) {
    std::size_t at = from;
    while (at < bytes.size() && static_cast<unsigned char>(bytes[at]) < 0x80) ++at;
    return at;
}

int HexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
}

constexpr std::string_view kEscapeHead = "&#x";

// The character that an escape at the start of the bytes names, and the escape's length; length 0 when what
// is there is no escape, or names what no text can hold.
CodePoint ReadEscape(std::string_view bytes) {
    if (!bytes.starts_with(kEscapeHead)) return {};
    char32_t value = 0;
    std::size_t at = kEscapeHead.size();
    constexpr std::size_t kMaxDigits = 6;
    for (; at < bytes.size() && at < kEscapeHead.size() + kMaxDigits; ++at) {
        const int digit = HexDigit(bytes[at]);
        if (digit < 0) break;
        value = value << 4 | static_cast<char32_t>(digit);
    }
    if (at == kEscapeHead.size() || at >= bytes.size() || bytes[at] != ';') return {};
    const bool isRawByte = value >= 0xDC80 && value <= 0xDCFF;
    if (value == 0 || value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF && !isRawByte)) return {};
    return {value, static_cast<int>(at + 1)};
}

void AppendEscape(std::string& out, char32_t value) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    out += kEscapeHead;
    int shift = 20;
    while (shift > 0 && (value >> shift & 0xF) == 0) shift -= 4;
    for (; shift >= 0; shift -= 4) out.push_back(kDigits[value >> shift & 0xF]);
    out.push_back(';');
}

void AppendAsciiResolved(std::string& out, std::string_view ascii) {
    for (std::size_t at = 0; at < ascii.size();) {
        const std::size_t ampersand = ascii.find('&', at);
        if (ampersand == std::string_view::npos) {
            out.append(ascii, at);
            return;
        }
        out.append(ascii, at, ampersand - at);
        const CodePoint escape = ReadEscape(ascii.substr(ampersand));
        if (escape.length > 0)
            AppendUtf8(out, escape.value);
        else
            out.push_back('&');
        at = ampersand + static_cast<std::size_t>(escape.length > 0 ? escape.length : 1);
    }
}

void AppendAsciiEscaped(std::string& out, std::string_view ascii) {
    for (std::size_t at = 0; at < ascii.size();) {
        const std::size_t head = ascii.find(kEscapeHead, at);
        if (head == std::string_view::npos) {
            out.append(ascii, at);
            return;
        }
        out.append(ascii, at, head - at);
        AppendEscape(out, '&');
        at = head + 1;
    }
}

}  // namespace

char32_t SingleByteCharacter(unsigned byte) {
    if (byte <= 0x80) return byte;
    if (byte >= 0xA1 && byte <= 0xDF) return 0xFF61 + (byte - 0xA1);
    return 0;
}

char32_t DoubleByteCharacter(unsigned lead, unsigned trail) {
    const unsigned index = TrailIndex(trail);
    return lead > 0xFF || index >= kTrails ? 0 : char32_t{Table().characters[lead][index]};
}

std::uint16_t CodeOf(char32_t character) {
    return character < 0x10000 ? Table().codes[character] : std::uint16_t{0};
}

std::string FromCp932(std::string_view bytes, Escapes escapes) {
    std::string out;
    out.reserve(bytes.size() + bytes.size() / 2);
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t end = AsciiRun(bytes, at);
        if (end > at) {
            if (escapes == Escapes::Resolve)
                AppendAsciiResolved(out, bytes.substr(at, end - at));
            else
                out.append(bytes, at, end - at);
            at = end;
            continue;
        }
        const unsigned byte = static_cast<unsigned char>(bytes[at]);
        if (!IsLeadByte(byte)) {
            const char32_t single = SingleByteCharacter(byte);
            AppendUtf8(out, single ? single : 0xDC00 + byte);
            ++at;
            continue;
        }
        const unsigned trail = at + 1 < bytes.size() ? static_cast<unsigned char>(bytes[at + 1]) : 0u;
        const char32_t character = DoubleByteCharacter(byte, trail);
        if (character != 0) {
            AppendUtf8(out, character);
            at += 2;
            continue;
        }
        // No character. Both bytes of a pair that the table merely lacks are kept raw, so that the bytes
        // behind it are not taken for the wrong halves; otherwise the lead byte alone.
        AppendUtf8(out, 0xDC00 + byte);
        ++at;
        if (trail >= 0x80 && TrailIndex(trail) < kTrails) {
            AppendUtf8(out, 0xDC00 + trail);
            ++at;
        }
    }
    return out;
}

std::string ToCp932(std::string_view utf8, Escapes escapes) {
    std::string out;
    out.reserve(utf8.size());
    for (std::size_t at = 0; at < utf8.size();) {
        const std::size_t end = AsciiRun(utf8, at);
        if (end > at) {
            if (escapes == Escapes::Resolve)
                AppendAsciiEscaped(out, utf8.substr(at, end - at));
            else
                out.append(utf8, at, end - at);
            at = end;
            continue;
        }
        const CodePoint point = DecodeUtf8(utf8, at);
        at += static_cast<std::size_t>(point.length);
        const bool isRawByte = point.length == 1;
        const std::uint16_t code = isRawByte ? std::uint16_t{0} : CodeOf(point.value);
        // An alias comes back as another character: good enough for a note, not for the name of a file.
        const bool comesBack = code != 0 && !(escapes == Escapes::Resolve && IsAlias(point.value));
        if (comesBack) {
            if (code > 0xFF) out.push_back(static_cast<char>(code >> 8));
            out.push_back(static_cast<char>(code & 0xFF));
        } else if (escapes == Escapes::Resolve) {
            AppendEscape(out, point.value);
        } else {
            out.push_back(isRawByte ? utf8[at - 1] : '?');
        }
    }
    return out;
}

bool FitsCp932(std::string_view utf8) {
    for (std::size_t at = AsciiRun(utf8, 0); at < utf8.size(); at = AsciiRun(utf8, at)) {
        const CodePoint point = DecodeUtf8(utf8, at);
        if (point.length == 1 || CodeOf(point.value) == 0) return false;
        at += static_cast<std::size_t>(point.length);
    }
    return true;
}

std::size_t Cp932Length(std::string_view utf8) {
    std::size_t length = 0;
    for (std::size_t at = 0; at < utf8.size();) {
        const std::size_t end = AsciiRun(utf8, at);
        length += end - at;
        at = end;
        if (at >= utf8.size()) break;
        const CodePoint point = DecodeUtf8(utf8, at);
        const std::uint16_t code = point.length == 1 ? std::uint16_t{1} : CodeOf(point.value);
        length += code != 0 && code <= 0xFF ? 1 : 2;
        at += static_cast<std::size_t>(point.length);
    }
    return length;
}

}  // namespace kalmora::text
