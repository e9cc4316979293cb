// EUC-JP and ISO-2022-JP: both write a character by its place in a table of 94 by 94, which code page 932
// holds too, two of its rows in one. So the same table serves all three, and agrees with itself.
#include "text/code_page.h"
#include "text/text.h"

namespace kalmora::text {

namespace {

// row and cell count from 0x21 to 0x7E. 0 where there is no character.
char32_t TableCharacter(unsigned row, unsigned cell) {
    if (row < 0x21 || row > 0x7E || cell < 0x21 || cell > 0x7E) return 0;
    const unsigned pair = (row - 0x21) / 2;
    const unsigned lead = pair + (pair < 0x1F ? 0x81 : 0xC1);
    unsigned trail = 0;
    if (row % 2 == 0)
        trail = cell + 0x7E;
    else
        trail = cell < 0x60 ? cell + 0x1F : cell + 0x20;
    return DoubleByteCharacter(lead, trail);
}

}  // namespace

std::string FromEucJp(std::string_view bytes) {
    std::string out;
    out.reserve(bytes.size() + bytes.size() / 2);
    const auto byteAt = [&](std::size_t at) -> unsigned {
        return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0u;
    };
    const auto isHigh = [&](std::size_t at) { return byteAt(at) >= 0xA1 && byteAt(at) <= 0xFE; };
    for (std::size_t at = 0; at < bytes.size();) {
        const unsigned byte = byteAt(at);
        if (byte < 0x80) {
            out.push_back(static_cast<char>(byte));
            ++at;
        } else if (byte == 0x8E && byteAt(at + 1) >= 0xA1 && byteAt(at + 1) <= 0xDF) {
            AppendUtf8(out, SingleByteCharacter(byteAt(at + 1)));
            at += 2;
        } else if (byte == 0x8F && isHigh(at + 1) && isHigh(at + 2)) {
            AppendUtf8(out, kReplacement);  // the supplementary table: nothing of it is in code page 932
            at += 3;
        } else if (isHigh(at) && isHigh(at + 1)) {
            const char32_t character = TableCharacter(byte & 0x7F, byteAt(at + 1) & 0x7F);
            AppendUtf8(out, character ? character : kReplacement);
            at += 2;
        } else {
            AppendUtf8(out, kReplacement);
            ++at;
        }
    }
    return out;
}

std::string FromIso2022Jp(std::string_view bytes) {
    enum class Set { Ascii, Katakana, Table, Supplement };
    struct Designation {
        std::string_view sequence;
        Set set;
    };
    // The Roman set differs from ASCII in two glyphs only; in file and path texts they are ASCII's
    // characters.
    static constexpr Designation kDesignations[] = {
        {"\x1B(B", Set::Ascii},       {"\x1B(J", Set::Ascii}, {"\x1B(H", Set::Ascii},
        {"\x1B(I", Set::Katakana},    {"\x1B$@", Set::Table}, {"\x1B$B", Set::Table},
        {"\x1B$(D", Set::Supplement},
    };
    std::string out;
    out.reserve(bytes.size() * 2);
    Set set = Set::Ascii;
    const auto designate = [&](std::size_t at) -> std::size_t {
        for (const Designation& designation : kDesignations) {
            if (!bytes.substr(at).starts_with(designation.sequence)) continue;
            set = designation.set;
            return designation.sequence.size();
        }
        return 0;
    };
    for (std::size_t at = 0; at < bytes.size();) {
        const unsigned byte = static_cast<unsigned char>(bytes[at]);
        if (byte == 0x1B) {
            const std::size_t length = designate(at);
            if (length > 0) {
                at += length;
                continue;
            }
        }
        if (byte == '\n')
            set = Set::Ascii;  // each line begins in ASCII, also when the escape before is missing
        if (byte >= 0xA1 && byte <= 0xDF) {
            AppendUtf8(out, SingleByteCharacter(byte));  // 8-bit katakana, which some mailers wrote
            ++at;
        } else if (byte >= 0x80) {
            AppendUtf8(out, kReplacement);
            ++at;
        } else if (set == Set::Ascii || byte <= 0x20 || byte == 0x7F) {
            out.push_back(static_cast<char>(byte));
            ++at;
        } else if (set == Set::Katakana) {
            const char32_t character = SingleByteCharacter(byte | 0x80);
            AppendUtf8(out, character ? character : kReplacement);
            ++at;
        } else {
            const unsigned cell = at + 1 < bytes.size() ? static_cast<unsigned char>(bytes[at + 1]) : 0u;
            if (cell < 0x21 || cell > 0x7E) {
                AppendUtf8(out, kReplacement);  // half a character
                ++at;
                continue;
            }
            const char32_t character = set == Set::Table ? TableCharacter(byte, cell) : 0;
            AppendUtf8(out, character ? character : kReplacement);
            at += 2;
        }
    }
    return out;
}

}  // namespace kalmora::text
