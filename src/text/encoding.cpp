#include "text/encoding.h"

#include <algorithm>
#include <cstdint>
#include <span>

#include "text/text.h"

namespace kalmora {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kUtf16LeMark = "\xFF\xFE";
constexpr std::string_view kUtf16BeMark = "\xFE\xFF";

unsigned At(std::string_view bytes, std::size_t i) {
    return i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0u;
}
bool Between(unsigned value, unsigned low, unsigned high) { return value >= low && value <= high; }

// A score is the number of bytes above 7F that belong to valid characters. Counting characters instead would
// let the two-byte encodings win every text whose true characters take three bytes.

std::size_t ScoreShiftJis(std::string_view bytes) {
    std::size_t score = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const unsigned lead = At(bytes, i), trail = At(bytes, i + 1);
        if ((Between(lead, 0x81, 0x9F) || Between(lead, 0xE0, 0xFC)) &&
            (Between(trail, 0x40, 0x7E) || Between(trail, 0x80, 0xFC))) {
            score += trail >= 0x80 ? 2 : 1;
            ++i;
        } else if (Between(lead, 0xA1, 0xDF)) {
            ++score;
        }
    }
    return score;
}

std::size_t ScoreEucJp(std::string_view bytes) {
    std::size_t score = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const unsigned first = At(bytes, i), second = At(bytes, i + 1), third = At(bytes, i + 2);
        if ((Between(first, 0xA1, 0xFE) && Between(second, 0xA1, 0xFE)) ||
            (first == 0x8E && Between(second, 0xA1, 0xDF))) {
            score += 2;
            i += 1;
        } else if (first == 0x8F && Between(second, 0xA1, 0xFE) && Between(third, 0xA1, 0xFE)) {
            score += 3;
            i += 2;
        }
    }
    return score;
}

std::size_t ScoreUtf8(std::string_view bytes) {
    std::size_t score = 0;
    for (std::size_t i = 0; i < bytes.size();) {
        const auto length = static_cast<std::size_t>(std::max(text::DecodeUtf8(bytes, i).length, 1));
        if (length > 1) score += length;
        i += length;
    }
    return score;
}

// Seven-bit: what lies between an escape that opens a Japanese set and the one that closes it counts.
std::size_t ScoreIso2022Jp(std::string_view bytes) {
    enum class Set { Ascii, TwoBytes, Katakana } set = Set::Ascii;
    std::size_t score = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const std::string_view rest = bytes.substr(i);
        if (rest.starts_with("\x1B$@") || rest.starts_with("\x1B$B")) {
            set = Set::TwoBytes;
            i += 2;
        } else if (rest.starts_with("\x1B(B") || rest.starts_with("\x1B(J")) {
            set = Set::Ascii;
            i += 2;
        } else if (rest.starts_with("\x1B(I")) {
            set = Set::Katakana;
            i += 2;
        } else if (set == Set::TwoBytes && Between(At(bytes, i), 0x21, 0x7E) &&
                   Between(At(bytes, i + 1), 0x21, 0x7E)) {
            score += 2;
            ++i;
        } else if (set == Set::Katakana && Between(At(bytes, i), 0x21, 0x5F)) {
            ++score;
        }
    }
    return score;
}

// A caller that reads only the beginning of a file may have cut it in the middle of a character, and that odd
// byte could decide. A text of this length may be such a beginning.
constexpr std::size_t kLong = 4096;

// Of a long text the last line does not count.
std::string_view WithoutCutEnd(std::string_view bytes) {
    const std::size_t end = bytes.rfind('\n');
    return bytes.size() < kLong || end == std::string_view::npos ? bytes : bytes.substr(0, end);
}

// Half-width katakana of code page 932, two at a time, are kanji of EUC-JP as well. True EUC-JP text has
// hiragana or full-width katakana between its kanji.
bool IsHalfWidthKatakana(std::string_view bytes) {
    constexpr unsigned kHiraganaRow = 0xA4, kKatakanaRow = 0xA5;
    constexpr std::size_t kLeastKanaShare = 4;  // one pair in so many
    std::size_t pairs = 0, kanaPairs = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const unsigned first = At(bytes, i);
        if (first < 0x80) continue;
        if (!Between(first, 0xA1, 0xDF)) return false;
        const unsigned second = At(bytes, i + 1);
        if (second < 0x80) continue;
        if (!Between(second, 0xA1, 0xDF)) return false;
        ++pairs;
        kanaPairs += first == kHiraganaRow || first == kKatakanaRow ? 1 : 0;
        ++i;
    }
    return kanaPairs * kLeastKanaShare < pairs;
}

std::span<const std::uint8_t> AsBytes(std::string_view bytes) {
    return {reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()};
}

}  // namespace

bool IsUtf8Text(std::string_view bytes) {
    constexpr std::size_t kLongestCharacter = 4;
    bool hasMore = false;
    for (std::size_t i = 0; i < bytes.size();) {
        if (At(bytes, i) < 0x80) {
            ++i;
            continue;
        }
        const int length = text::DecodeUtf8(bytes, i).length;
        if (length < 2) {
            const bool isCut = bytes.size() >= kLong && bytes.size() - i < kLongestCharacter;
            return hasMore && isCut;
        }
        hasMore = true;
        i += static_cast<std::size_t>(length);
    }
    return hasMore;
}

int DetectEncoding(std::string_view bytes) {
    if (bytes.starts_with(kUtf16LeMark)) return kEncodingUtf16Le;
    if (bytes.starts_with(kUtf16BeMark)) return kEncodingUtf16Be;
    if (bytes.starts_with(kUtf8Mark)) return kEncodingUtf8;

    if (IsUtf8Text(bytes)) return kEncodingUtf8;
    bytes = WithoutCutEnd(bytes);
    if (IsHalfWidthKatakana(bytes)) return kEncodingShiftJis;
    // In the order in which ties are decided.
    const struct {
        TextEncoding encoding;
        std::size_t score;
    } scores[] = {{kEncodingEucJp, ScoreEucJp(bytes)},
                  {kEncodingUtf8, ScoreUtf8(bytes)},
                  {kEncodingIso2022Jp, ScoreIso2022Jp(bytes)},
                  {kEncodingShiftJis, ScoreShiftJis(bytes)}};
    const auto* best = std::max_element(std::begin(scores), std::end(scores),
                                        [](const auto& a, const auto& b) { return a.score < b.score; });
    return best->score > 0 ? best->encoding : kEncodingShiftJis;
}

std::string DecodeText(std::string_view bytes) { return DecodeText(bytes, DetectEncoding(bytes)); }

std::string DecodeText(std::string_view bytes, int encoding) {
    for (const std::string_view mark : {kUtf16LeMark, kUtf16BeMark, kUtf8Mark}) {
        const bool fits = mark == kUtf8Mark
                              ? encoding == kEncodingUtf8
                              : encoding == (mark == kUtf16LeMark ? kEncodingUtf16Le : kEncodingUtf16Be);
        if (fits && bytes.starts_with(mark)) bytes.remove_prefix(mark.size());
    }
    switch (encoding) {
        case kEncodingIso2022Jp:
            return text::FromIso2022Jp(bytes);
        case kEncodingEucJp:
            return text::FromEucJp(bytes);
        case kEncodingUtf16Le:
            return text::FromUtf16(AsBytes(bytes), false);
        case kEncodingUtf16Be:
            return text::FromUtf16(AsBytes(bytes), true);
        case kEncodingUtf8:
            return std::string(bytes);
        default:
            return text::FromCp932(bytes);
    }
}

std::string EncodeText(std::string_view utf8) {
    if (text::FitsCp932(utf8)) {
        std::string bytes = text::ToCp932(utf8);
        // Half-width katakana alone can look like EUC-JP; such a text must not come back as another one.
        if (DecodeText(bytes) == utf8) return bytes;
    }
    std::string marked(kUtf8Mark);
    marked += utf8;
    return marked;
}

}  // namespace kalmora
